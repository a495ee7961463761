#include "tests/cli/run_command.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/scratch.h"
#include "tests/support/tested_build.h"

namespace qxcms::tests {

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// What comes first wins, so the additions stand in front.
std::vector<std::string> environmentWith(const std::vector<std::string>& additions) {
    std::vector<std::string> all = additions;
    for (char** entry = environ; *entry != nullptr; ++entry)
        all.emplace_back(*entry);
    return all;
}

} // namespace

Outcome runCommand(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    std::vector<std::string> all = {testedProgram("qxcms")};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProgram(all, surroundings);
}

Outcome runProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    const ScratchFolder scratch;
    const std::string outFile = scratch.write("out", "");
    const std::string errFile = scratch.write("err", "");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errFile.c_str(), O_WRONLY, 0);
    if (surroundings.closedOutput)
        posix_spawn_file_actions_addclose(&actions, STDOUT_FILENO);
    else
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outFile.c_str(), O_WRONLY, 0);

    std::vector<std::string> texts = arguments;
    std::vector<std::string> environment = environmentWith(surroundings.environment);
    pid_t child = 0;
    const int failure = posix_spawn(&child, texts.front().c_str(), &actions, nullptr,
                                    pointersTo(texts).data(), pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::runtime_error("cannot run " + texts.front());
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ScratchFolder::read(outFile),
            ScratchFolder::read(errFile)};
}

} // namespace qxcms::tests
