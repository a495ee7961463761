// Documents as Little CMS reads them, next to how they are read here.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <lcms2.h>

#include "base/number_text.h"
#include "cgats/tcgats.h"

namespace qxcms::tests {

/// A document as Little CMS reads it.
class LittleCms {
public:
    explicit LittleCms(const std::string& text) {
        said().clear();
        cmsSetLogErrorHandler([](cmsContext, cmsUInt32Number, const char* message) { said() = message; });
        handle = cmsIT8LoadFromMem(nullptr, text.data(), static_cast<cmsUInt32Number>(text.size()));
    }
    ~LittleCms() {
        if (handle != nullptr)
            cmsIT8Free(handle);
    }
    LittleCms(const LittleCms&) = delete;
    LittleCms& operator=(const LittleCms&) = delete;

    bool accepts() const { return handle != nullptr; }
    /// What it says of a text that it refuses.
    const std::string& objection() const { return said(); }
    int tables() const { return static_cast<int>(cmsIT8TableCount(handle)); }
    void choose(int table) const { cmsIT8SetTable(handle, static_cast<cmsUInt32Number>(table)); }
    std::vector<std::string> fields() const {
        char** names = nullptr;
        const int count = cmsIT8EnumDataFormat(handle, &names);
        return count < 1 ? std::vector<std::string>() : std::vector<std::string>(names, names + count);
    }
    int sets() const { return static_cast<int>(cmsIT8GetPropertyDbl(handle, "NUMBER_OF_SETS")); }
    double number(int row, int column) const { return cmsIT8GetDataRowColDbl(handle, row, column); }
    std::string text(int row, int column) const {
        const char* const found = cmsIT8GetDataRowCol(handle, row, column);
        return found == nullptr ? "" : found;
    }

private:
    static std::string& said() {
        static std::string message;
        return message;
    }

    cmsHANDLE handle = nullptr;
};

inline std::vector<std::string> fieldsOf(const TCgatsTableHeader& header) {
    std::vector<std::string> names;
    for (int i = 0; i < header.GetNrFields(); ++i)
        names.emplace_back(header.GetField(i)->GetName());
    return names;
}

/// It writes bare numbers anew ("7.0710" becomes "7.071"), and before a bare word that begins with a digit
/// ("2A1") it leaves what stood in its buffer.
inline bool sameText(const std::string& ours, const std::string& theirs) {
    const char* const end = ours.data() + ours.size();
    const char* stop = nullptr;
    const double number = detail::parseDouble(ours.data(), end, &stop);
    if (stop == end && !ours.empty())
        return number == detail::textToDouble(theirs.c_str());
    return stop == ours.data() ? ours == theirs : theirs.ends_with(ours);
}

inline void expectSameValues(const TCgatsTable& ours, const LittleCms& theirs) {
    const TCgatsTableHeader& header = *ours.GetHeader();
    for (int row = 0; row < ours.GetNrRowsStored(); ++row)
        for (int column = 0; column < header.GetNrFields(); ++column) {
            const TCgatsValueList& values = *ours.GetValues(column);
            if (header.GetField(column)->GetDataType() == TCgatsField::kString) {
                const std::string text = values.GetString(row);
                ASSERT_TRUE(sameText(text, theirs.text(row, column)))
                    << row << ' ' << column << ": " << text << ", " << theirs.text(row, column);
                continue;
            }
            // Its conversion multiplies by powers of ten that are no exact numbers.
            const double number = values.GetDouble(row);
            ASSERT_NEAR(number, theirs.number(row, column), 1e-9 * std::fabs(number)) << row << ' ' << column;
        }
}

inline void expectSameTables(const TCgats& ours, const LittleCms& theirs) {
    ASSERT_EQ(ours.GetNrTables(), theirs.tables());
    for (int table = 0; table < ours.GetNrTables(); ++table) {
        SCOPED_TRACE(table);
        theirs.choose(table);
        const TCgatsTable& read = *ours.GetTable(table);
        ASSERT_EQ(fieldsOf(*read.GetHeader()), theirs.fields());
        ASSERT_EQ(read.GetNrRowsStored(), theirs.sets());
        ASSERT_NO_FATAL_FAILURE(expectSameValues(read, theirs));
    }
}

} // namespace qxcms::tests
