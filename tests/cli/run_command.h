// Runs the built command as a user does.
#pragma once

#include <string>
#include <vector>

namespace qxcms::tests {

struct Outcome {
    int exitCode; // -1 when a signal ended it
    std::string out;
    std::string err;
};

struct Surroundings {
    std::vector<std::string> environment; // "NAME=value", beyond the test's own
    bool closedOutput = false;            // no standard output at all
};

/// Runs the command with these arguments and waits for it.
Outcome runCommand(const std::vector<std::string>& arguments, const Surroundings& surroundings = {});

/// Runs a program found by its path; the first argument is the path.
Outcome runProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings = {});

} // namespace qxcms::tests
