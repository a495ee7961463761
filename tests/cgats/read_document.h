// Documents read from texts, for the tests of the queries.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"

namespace qxcms::tests {

/// A document read from a text that must be accepted.
class ReadDocument : public TCgats {
public:
    explicit ReadDocument(const std::string& text) : TCgats(text.c_str(), 0) {
        EXPECT_EQ(GetErrorCode(), 0) << text;
    }
};

/// The text of a table with its data format and as many sets as there are rows.
inline std::string tableOf(const std::string& fields, const std::vector<std::string>& rows) {
    std::string text = "BEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " +
                       std::to_string(rows.size()) + "\nBEGIN_DATA\n";
    for (const std::string& row : rows)
        text += row + "\n";
    return text + "END_DATA\n";
}

} // namespace qxcms::tests
