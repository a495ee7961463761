// Reports of the resource database's errors.
#include <climits>
#include <string>

#include <gtest/gtest.h>

#include "platform/resource_database.h"
#include "support/qxcms_rdb_err.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

// What is reported for a code; checks all that is the same for every code.
std::string reportOf(int code, const char* context) {
    const ReportCollector reports;
    rdb_err = code;
    EXPECT_EQ(qxcms_rdb_err(context), 0);
    EXPECT_EQ(rdb_err, 0);
    EXPECT_TRUE(reports.warnings.empty());
    if (reports.errors.size() != 1) {
        ADD_FAILURE() << reports.errors.size() << " reports";
        return {};
    }
    EXPECT_EQ(reports.errors[0].module, "qxcms_rdb_err");
    EXPECT_EQ(reports.errors[0].line, 47);
    return reports.errors[0].message;
}

TEST(resourceErrors, withoutAnError_theContextAloneIsReportedAllTheSame) {
    EXPECT_EQ(reportOf(0, "saving the cache"), "saving the cache");
    EXPECT_EQ(reportOf(0, ""), "");
}

TEST(resourceErrors, everyCode_hasItsTextBehindTheContext) {
    EXPECT_EQ(reportOf(1, "context"), "context : No resource file specified");
    EXPECT_EQ(reportOf(2, "context"), "context : Failed to open resource file");
    EXPECT_EQ(reportOf(3, "context"), "context : No entries in table");
    EXPECT_EQ(reportOf(4, "context"), "context : A null pointer as rdb pointer");
    EXPECT_EQ(reportOf(5, "context"), "context : There are no files in rdb");
    EXPECT_EQ(reportOf(6, "context"), "context : No resource file handle");
    EXPECT_EQ(reportOf(7, "context"), "context : Failed to add a topic");
    EXPECT_EQ(reportOf(8, "context"), "context : Failed to add an item");
    EXPECT_EQ(reportOf(9, "context"), "context : Failed to create a topic");
    EXPECT_EQ(reportOf(10, "context"), "context : Failed to create an item");
    EXPECT_EQ(reportOf(11, "context"), "context : Failed to append item to topic");
    EXPECT_EQ(reportOf(13, "context"), "context : End of topic list reached");
    EXPECT_EQ(reportOf(14, "context"), "context : End of item list reached");
    EXPECT_EQ(reportOf(15, "context"), "context : Topic not found in database");
    EXPECT_EQ(reportOf(16, "context"), "context : Too many indirection");
    EXPECT_EQ(reportOf(17, "context"), "context : Item not found in database");
    EXPECT_EQ(reportOf(18, "context"), "context : The destination string is too short");
    EXPECT_EQ(reportOf(20, "context"), "context : Failed to remove an item");
}

TEST(resourceErrors, textOfAFailedFlush_keepsItsMisspelling) {
    EXPECT_EQ(reportOf(12, "saving"), "saving : Failed to flush data tp disk");
}

TEST(resourceErrors, code19_hasTheTextOfCode15) {
    EXPECT_EQ(reportOf(19, "context"), "context : Topic not found in database");
}

TEST(resourceErrors, codesAboveTheTable_areReportedAsNumbers) {
    EXPECT_EQ(reportOf(21, "context"), "context : rdb-error no : 21");
    EXPECT_EQ(reportOf(INT_MAX, "context"), "context : rdb-error no : 2147483647");
}

TEST(resourceErrors, negativeCodes_areReportedAsNumbers) {
    EXPECT_EQ(reportOf(-1, "context"), "context : rdb-error no : -1");
    EXPECT_EQ(reportOf(INT_MIN, "context"), "context : rdb-error no : -2147483648");
}

TEST(resourceErrors, percentSignsOfTheContext_arePlainCharacters) {
    EXPECT_EQ(reportOf(17, "Ink 50%s %n"), "Ink 50%s %n : Item not found in database");
}

TEST(resourceErrors, missingContext_countsAsEmpty) {
    EXPECT_EQ(reportOf(0, nullptr), "");
    EXPECT_EQ(reportOf(15, nullptr), " : Topic not found in database");
}

TEST(resourceErrors, code_isClearedBeforeTheReport) {
    int codeAtTheReport = -1;
    const qxcms_report_handler handler = {
        [](void* context, const char*, const char*, int) { *static_cast<int*>(context) = rdb_err; },
        [](void*, int, const char*) {}, &codeAtTheReport};
    qxcms_set_report_handler(&handler);
    rdb_err = 12;
    qxcms_rdb_err("saving");
    qxcms_set_report_handler(nullptr);
    EXPECT_EQ(codeAtTheReport, 0);
}

TEST(resourceErrors, reports_areCutAt255Characters) {
    EXPECT_EQ(reportOf(0, std::string(255, 'x').c_str()), std::string(255, 'x'));
    EXPECT_EQ(reportOf(0, std::string(256, 'x').c_str()), std::string(255, 'x'));
    EXPECT_EQ(reportOf(0, std::string(100000, 'x').c_str()), std::string(255, 'x'));
    EXPECT_EQ(reportOf(5, std::string(250, 'x').c_str()), std::string(250, 'x') + " : Th");
    EXPECT_EQ(reportOf(5, std::string(254, 'x').c_str()), std::string(254, 'x') + " ");
    EXPECT_EQ(reportOf(30, std::string(240, 'x').c_str()), std::string(240, 'x') + " : rdb-error no");
    // 28 characters of text and separator: the last that fits, and the first that does not.
    EXPECT_EQ(reportOf(5, std::string(227, 'x').c_str()),
              std::string(227, 'x') + " : There are no files in rdb");
    EXPECT_EQ(reportOf(5, std::string(228, 'x').c_str()),
              std::string(228, 'x') + " : There are no files in rd");
}

} // namespace
} // namespace qxcms::tests
