#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/default/host.h"
#include "platform/utility.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::Report;
using qxcms::tests::ReportCollector;

template <class Function>
std::string printedBy(Function&& f) {
    testing::internal::CaptureStderr();
    f();
    return testing::internal::GetCapturedStderr();
}

template <class Function>
std::string printedOnStdoutBy(Function&& f) {
    testing::internal::CaptureStdout();
    f();
    return testing::internal::GetCapturedStdout();
}

TEST(reports, error_reachesTheHandlerWithAllItsParts) {
    ReportCollector reports;
    error_mess_fl("Specify illuminant name", "tilluminantfactoryholder", 193);
    EXPECT_THAT(reports.errors,
                testing::ElementsAre(Report{"Specify illuminant name", "tilluminantfactoryholder", 193}));
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(reports, warning_reachesTheHandlerWithItsLevel) {
    ReportCollector reports;
    report_warning(6, "replaced");
    ASSERT_EQ(reports.warnings.size(), 1u);
    EXPECT_EQ(reports.warnings[0].level, 6);
    EXPECT_EQ(reports.warnings[0].message, "replaced");
    EXPECT_TRUE(reports.errors.empty());
}

TEST(reports, nullText_isReportedAsAnEmptyOne) {
    ReportCollector reports;
    error_mess_fl(nullptr, nullptr, 7);
    report_warning(0, nullptr);
    EXPECT_THAT(reports.errors, testing::ElementsAre(Report{"", "", 7}));
    ASSERT_EQ(reports.warnings.size(), 1u);
    EXPECT_EQ(reports.warnings[0].message, "");
}

TEST(reports, handler_keepsThePrintingAway) {
    ReportCollector reports;
    EXPECT_EQ(printedBy([] {
                  error_mess_fl("text", "module", 1);
                  report_warning(1, "text");
              }),
              "");
}

TEST(reports, withoutHandler_anErrorIsPrintedWithModuleAndLine) {
    EXPECT_EQ(printedBy([] { error_mess_fl("Bad white 100%s", "tlabspace", 42); }),
              "tlabspace:42: Bad white 100%s\n");
}

TEST(reports, withoutHandler_aWarningIsPrinted) {
    EXPECT_EQ(printedBy([] { report_warning(6, "replaced 100%s"); }), "warning: replaced 100%s\n");
}

TEST(reports, withoutHandler_nothingGoesToStandardOutput) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(printedOnStdoutBy([] {
                  error_mess_fl("text", "module", 1);
                  report_warning(1, "text");
              }),
              "");
    testing::internal::GetCapturedStderr();
}

TEST(reports, nullHandler_bringsThePrintingBack) {
    { ReportCollector reports; }
    EXPECT_EQ(printedBy([] { error_mess_fl("text", "module", 1); }), "module:1: text\n");
}

TEST(reports, handlerWithoutFunctions_dropsEverything) {
    const qxcms_report_handler deaf = {nullptr, nullptr, nullptr};
    qxcms_set_report_handler(&deaf);
    EXPECT_EQ(printedBy([] {
                  error_mess_fl("text", "module", 1);
                  report_warning(1, "text");
              }),
              "");
    qxcms_set_report_handler(nullptr);
}

TEST(reports, handler_isCopiedWhenInstalled) {
    int count = 0;
    {
        qxcms_report_handler handler = {
            [](void* context, const char*, const char*, int) { ++*static_cast<int*>(context); }, nullptr,
            &count};
        qxcms_set_report_handler(&handler);
        handler = {nullptr, nullptr, nullptr};
    }
    error_mess_fl("text", "module", 1);
    qxcms_set_report_handler(nullptr);
    EXPECT_EQ(count, 1);
}

TEST(reports, handlerThatThrows_isContained) {
    const qxcms_report_handler throwing = {
        [](void*, const char*, const char*, int) { throw std::runtime_error("error"); },
        [](void*, int, const char*) { throw std::runtime_error("warning"); }, nullptr};
    qxcms_set_report_handler(&throwing);
    EXPECT_NO_THROW(error_mess_fl("text", "module", 1));
    EXPECT_NO_THROW(report_warning(1, "text"));
    qxcms_set_report_handler(nullptr);
}

} // namespace
