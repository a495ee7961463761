// Asks the command for the difference of two files, as text and as JSON, and judges what it says of them.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/support/scratch.h"

namespace qxcms::tests {

class Asking : public testing::Test {
protected:
    using Arguments = std::vector<std::string>; // of diff

    ScratchFolder folder;

    /// Writes a chart and returns its path.
    std::string chart(const std::string& name, const std::string& fields,
                      const std::vector<std::string>& rows, const std::string& header = "") const;

    /// Refused with this code and nothing on the standard output, for a reason that matches (any case).
    static void expectRefusal(const Arguments& arguments, int code, const std::string& pattern);

    /// Answered, and the matter is told in both forms with the same words.
    /// @return the answer in JSON.
    static nlohmann::json expectWarning(const Arguments& arguments, const std::string& pattern);
    static nlohmann::json expectNoteOrWarning(const Arguments& arguments, const std::string& pattern);

    /// Refused as not comparable, or warned about.
    static void expectRefusalOrWarning(const Arguments& arguments, const std::string& pattern);

    /// Answered without a warning.
    static nlohmann::json expectNoWarning(const Arguments& arguments);

    /// Answered, whatever is said.
    static nlohmann::json answer(Arguments arguments);

    /// The text report with every run of blanks and line ends as one blank.
    static std::string flatReport(Arguments arguments);
};

} // namespace qxcms::tests
