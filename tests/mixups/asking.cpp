#include "tests/mixups/asking.h"

#include <regex>

#include <gmock/gmock.h>

#include "tests/cli/run_command.h"
#include "tests/support/chart_text.h"

namespace qxcms::tests {

namespace {

Outcome run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "diff");
    return runCommand(arguments);
}

bool matches(const std::string& text, const std::string& pattern) {
    return std::regex_search(text, std::regex(pattern, std::regex::icase));
}

std::string flat(const std::string& text) {
    return std::regex_replace(text, std::regex("\\s+"), " ");
}

std::vector<std::string> asJson(std::vector<std::string> arguments) {
    arguments.push_back("--json");
    return arguments;
}

nlohmann::json expectTold(const std::vector<std::string>& arguments, const std::string& pattern,
                          const std::vector<std::string>& severities) {
    const Outcome inJson = run(asJson(arguments));
    EXPECT_EQ(inJson.exitCode, 0) << inJson.err;
    if (inJson.exitCode != 0)
        return {};
    nlohmann::json report = nlohmann::json::parse(inJson.out);
    std::string told;
    for (const nlohmann::json& finding : report.at("findings")) {
        const std::string severity = finding.at("severity");
        if (testing::Value(severities, testing::Contains(severity)) && matches(finding.at("text"), pattern))
            told = finding.at("text");
    }
    EXPECT_FALSE(told.empty()) << "nothing that matches \"" << pattern << "\" among "
                               << report["findings"].dump(2);
    const Outcome inText = run(arguments);
    EXPECT_EQ(inText.exitCode, 0) << inText.err;
    EXPECT_THAT(flat(inText.out), testing::HasSubstr(flat(told)));
    return report;
}

} // namespace

std::string Asking::chart(const std::string& name, const std::string& fields,
                          const std::vector<std::string>& rows, const std::string& header) const {
    return folder.write(name, chartText(fields, rows, header));
}

void Asking::expectRefusal(const Arguments& arguments, int code, const std::string& pattern) {
    for (const Arguments& form : {arguments, asJson(arguments)}) {
        const Outcome outcome = run(form);
        EXPECT_EQ(outcome.exitCode, code) << outcome.err << outcome.out;
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(matches(outcome.err, pattern)) << "\"" << pattern << "\" is not in: " << outcome.err;
    }
}

nlohmann::json Asking::expectWarning(const Arguments& arguments, const std::string& pattern) {
    return expectTold(arguments, pattern, {"warning"});
}

nlohmann::json Asking::expectNoteOrWarning(const Arguments& arguments, const std::string& pattern) {
    return expectTold(arguments, pattern, {"note", "warning"});
}

void Asking::expectRefusalOrWarning(const Arguments& arguments, const std::string& pattern) {
    if (run(arguments).exitCode == 0)
        expectWarning(arguments, pattern);
    else
        expectRefusal(arguments, 4, pattern);
}

nlohmann::json Asking::expectNoWarning(const Arguments& arguments) {
    nlohmann::json report = answer(arguments);
    for (const nlohmann::json& finding : report.value("findings", nlohmann::json::array()))
        EXPECT_NE(finding.at("severity"), "warning") << finding.at("text");
    EXPECT_FALSE(matches(flatReport(arguments), " warning "));
    return report;
}

nlohmann::json Asking::answer(Arguments arguments) {
    const Outcome outcome = run(asJson(std::move(arguments)));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    return outcome.exitCode == 0 ? nlohmann::json::parse(outcome.out) : nlohmann::json::object();
}

std::string Asking::flatReport(Arguments arguments) {
    const Outcome outcome = run(std::move(arguments));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    return flat(outcome.out);
}

} // namespace qxcms::tests
