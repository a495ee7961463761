/// @file
/// Measurement geometries.
#pragma once

#include <cstdint>
#include <type_traits>

#include "base/export.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// The illuminating and viewing geometry (and filter) of a measurement: a number into a table of 13 names.
///
/// Status codes: 0 good, 2 unknown geometry.
class QXCMS_API TMeasGeom {
public:
    /// The number of geometries.
    static const int sNrGeom;
    /// The names by number, and a null entry behind them.
    static const char* const sGeomList[14];

    /// The geometry of that number (0 to 12); another number gives status 2 and number 0.
    explicit TMeasGeom(int number);
    /// The geometry of exactly that name; another name, or null, gives status 2 and number 0.
    explicit TMeasGeom(const char* name);
    /// A number with a fraction is none.
    template <class Float, std::enable_if_t<std::is_floating_point<Float>::value, int> = 0>
    explicit TMeasGeom(Float) = delete;
    /// Copies the number; status 0.
    TMeasGeom(const TMeasGeom& other);
    /// As the copy constructor.
    TMeasGeom& operator=(const TMeasGeom& other);
    virtual ~TMeasGeom();

    /// @param names receives the table (to be read only). @param count receives 13. @return 0, or 2 for null.
    static int GetKnownGeometries(const char*** names, int* count);

    /// The name for a number; null for 13 and, with the report "Unkown Geometry", for any number beyond.
    static const char* GetGeometryName(int number);

    /// The number of a name, ignoring case; -1 with the report "Unkown Geometry" when there is none.
    static int GetGeometryNumber(const char* name);

    std::int32_t GetStatus() const { return status; }
    std::uint32_t GetNumber() const { return number; }
    /// The name of this geometry.
    const char* GetName() const;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::uint32_t number;
    std::int32_t status;
};
