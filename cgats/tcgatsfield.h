/// @file
/// The description of one column of a CGATS table.
#pragma once

#include <cstdint>
#include <memory>

#include "base/export.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// Name and classification of one column, as TCgats::MatchField gives them.
class QXCMS_API TCgatsField {
public:
    /// The types of values.
    enum DataType : int { kString = 0, kInteger = 1, kFloat = 2 };

    /// The classes of fields.
    enum Kind : int {
        kStandard = 0,     ///< a name of the field-name table
        kCustom = 1,       ///< declared by "KEYWORD", or an alias of the sample name
        kSpectral = 2,     ///< a spectral value
        kProcessColor = 3, ///< "PC2_1": a custom process colour
        kNColor = 4,       ///< "6CLR_1": a channel of an n-colour space
        kSpotColor = 5     ///< "SPOT_1"
    };

    /// @param dataType a DataType. @param name the canonical name, copied; null or "" marks the field bad.
    /// @param number the wavelength in nm, or the colour number counted from 0. @param kind a Kind.
    /// @param fieldId the result of MatchField.
    TCgatsField(int dataType, const char* name, int number, int kind, int fieldId);
    TCgatsField(const TCgatsField&) = delete;
    TCgatsField& operator=(const TCgatsField&) = delete;
    ~TCgatsField();

    /// The same description; null when there is no memory.
    std::unique_ptr<TCgatsField> Copy() const;

    std::int32_t GetDataType() const { return dataType; }
    /// Owned by the field; null when absent.
    const char* GetName() const { return name.get(); }
    std::int32_t GetNumber() const { return number; }
    std::int32_t GetKind() const { return kind; }
    std::int32_t GetFieldId() const { return fieldId; }
    /// 1 when the name is absent or empty.
    std::int32_t GetBad() const { return bad; }

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t dataType;
    std::unique_ptr<char[]> name;
    std::int32_t number;
    std::int32_t kind;
    std::int32_t fieldId;
    std::int32_t bad;
};
