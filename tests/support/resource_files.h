// What tests of resource files have in common: files as others see them, and other processes.
#pragma once

#include <signal.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/open_database.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {

using Lines = std::vector<std::string>;

inline double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A file as another program of SQLite has it open.
class ForeignConnection {
public:
    explicit ForeignConnection(const std::string& path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &connection), 0);
    }
    ~ForeignConnection() { sqlite3_close(connection); }
    ForeignConnection(const ForeignConnection&) = delete;
    ForeignConnection& operator=(const ForeignConnection&) = delete;

    void run(const std::string& sql) {
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, &message), 0)
            << sql << ": " << (message != nullptr ? message : "");
        sqlite3_free(message);
    }
    // The first column of the rows, a line each.
    std::string ask(const std::string& sql) {
        std::string lines;
        const auto collect = [](void* all, int, char** values, char**) {
            *static_cast<std::string*>(all) +=
                (values[0] != nullptr ? values[0] : "NULL") + std::string("\n");
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), collect, &lines, nullptr), 0) << sql;
        return lines;
    }

private:
    sqlite3* connection = nullptr;
};

/// A resource file of one topic with items "0", "1" ... of a value each.
inline std::string writtenFile(const ScratchFolder& folder, const std::string& name, int items,
                               const std::string& value) {
    OpenDatabase database;
    EXPECT_NE(database.create(folder.path(name)), nullptr);
    database.addTopic("topic");
    for (int i = 0; i < items; ++i)
        database.add("topic", std::to_string(i), value);
    EXPECT_EQ(database.flush(), 1);
    return folder.path(name);
}

inline Lines contentOfOneTopic(int items, const std::string& value) {
    Lines lines = {"topic"};
    for (int i = 0; i < items; ++i)
        lines.push_back("topic / " + std::to_string(i) + " = " + value);
    return lines;
}

/// Leaves a file with a journal that whoever opens it with SQLite has to roll back: pages of an unfinished
/// transaction stand in the file already.
inline void interruptWriting(const std::string& source, const std::string& target, const std::string& sql) {
    ForeignConnection writer(source);
    writer.run("PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN IMMEDIATE");
    writer.run(sql);
    std::filesystem::copy_file(source, target);
    std::filesystem::copy_file(source + "-journal", target + "-journal");
    writer.run("ROLLBACK");
}

/// What processes of a test have in common.
struct Shared {
    std::atomic<int> ready = 0;
    std::atomic<int> go = 0;
    std::atomic<int> completed = 0;
    std::atomic<int> isWriting = 0;
    std::atomic<int> answers[2] = {};
};

class SharedMemory {
public:
    SharedMemory()
        : shared(new (mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1,
                           0)) Shared) {}
    ~SharedMemory() { munmap(shared, sizeof(Shared)); }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    Shared* operator->() const { return shared; }

private:
    Shared* shared;
};

/// Another process, which runs a function and ends without a trace.
class Child {
public:
    template <class Function>
    explicit Child(const Function& f) : number(fork()) {
        if (number == 0) {
            f();
            _exit(0);
        }
    }
    ~Child() { end(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void kill() const { ::kill(number, SIGKILL); }
    void end() {
        if (number > 0)
            waitpid(number, nullptr, 0);
        number = -1;
    }

private:
    pid_t number;
};

template <class Condition>
void waitFor(const Condition& condition) {
    const auto start = std::chrono::steady_clock::now();
    while (!condition() && secondsSince(start) < 30.0)
        usleep(50);
}

} // namespace qxcms::tests
