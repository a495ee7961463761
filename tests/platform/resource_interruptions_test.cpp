// Resource files when writing is interrupted, fails or meets others, at every single call.
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "platform/resource_database.h"
#include "tests/support/open_database.h"
#include "tests/support/resource_files.h"
#include "tests/support/scratch.h"
#include "tests/support/system_calls.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

// Ends this process as kill -9 does.
[[noreturn]] void die() {
    raise(SIGKILL);
    _exit(1);
}

// A file of fifty items, and what a flush makes of it that lets it grow to several times its size.
class resourceInterruptions : public testing::Test {
protected:
    static constexpr int kItems = 50;
    static constexpr int kAdded = 200;

    resourceInterruptions() : path(writtenFile(folder, "file", kItems, kValue)), saved(aside.path("saved")) {
        fs::copy_file(path, saved);
        after.push_back("added");
        for (int i = 0; i < kAdded; ++i)
            after.push_back("added / " + std::to_string(i) + " = " + kValue);
    }

    // Puts a copy in the place of a file. One that is cut off and written anew would have to wait for the
    // disk.
    static void replace(const std::string& from, const std::string& to) {
        fs::remove(to);
        fs::copy_file(from, to);
    }
    // The file as it was at first, without a journal.
    void restore() {
        fs::remove(path + "-journal");
        replace(saved, path);
    }

    static void grow(OpenDatabase& database) {
        database.addTopic("added");
        for (int i = 0; i < kAdded; ++i)
            database.add("added", std::to_string(i), kValue);
    }

    // Leaves the file as a flush does that was killed just before its end, with its journal.
    void interrupt() {
        Child child([&] {
            OpenDatabase database;
            database.push(path);
            grow(database);
            const SystemCalls calls([](const std::string& call, const std::string&) {
                if (call == "unlink")
                    die();
                return 0;
            });
            database.flush();
        });
        child.end();
        ASSERT_TRUE(fs::exists(path + "-journal"));
        ASSERT_NE(ScratchFolder::read(path), ScratchFolder::read(saved));
    }

    // Leaves what there is when the file was deleted after that.
    void leaveTheJournalOnly() {
        interrupt();
        fs::remove(path);
    }

    std::string folderName() const { return fs::path(folder.path()).filename().string(); }

    // Runs an operation in processes that are killed before their first call that changes a file, their
    // second, and so on until one comes to its end. @return how many were killed.
    static int killAtEveryCall(const std::function<void()>& prepare, const std::function<void()>& operation,
                               const std::function<void()>& check) {
        SharedMemory shared;
        int killed = 0;
        for (;; ++killed) {
            SCOPED_TRACE("killed before call " + std::to_string(killed));
            prepare();
            Child child([&] {
                int calls = 0;
                const SystemCalls counted([&](const std::string&, const std::string&) {
                    if (calls++ == killed)
                        die();
                    return 0;
                });
                operation();
                shared->completed = 1;
            });
            child.end();
            check();
            if (shared->completed == 1 || HasFailure())
                return killed;
        }
    }

    static inline const std::string kValue = std::string(200, 'v');
    const ScratchFolder folder;
    const ScratchFolder aside;
    const std::string path;
    const std::string saved;
    const Lines before = contentOfOneTopic(kItems, kValue);
    Lines after = before;
};

TEST_F(resourceInterruptions, growingFlush_killedAnywhere_isWholeOrUndone) {
    const int killed = killAtEveryCall([&] { restore(); },
                                       [&] {
                                           OpenDatabase database;
                                           database.push(path);
                                           grow(database);
                                           database.flush();
                                       },
                                       [&] {
                                           const Lines found = contentOfResourceFile(path);
                                           EXPECT_TRUE(found == before || found == after);
                                       });
    EXPECT_GT(killed, 20);
    EXPECT_TRUE(contentOfResourceFile(path) == after);
}

TEST_F(resourceInterruptions, recovery_killedAnywhere_isDoneByTheNext) {
    interrupt();
    const std::string half = aside.path("half");
    fs::copy_file(path, half);
    fs::copy_file(path + "-journal", half + "-journal");
    const int killed = killAtEveryCall(
        [&] {
            replace(half, path);
            replace(half + "-journal", path + "-journal");
        },
        [&] { OpenDatabase().push(path); }, [&] { EXPECT_TRUE(contentOfResourceFile(path) == before); });
    EXPECT_GT(killed, 3);
}

TEST_F(resourceInterruptions, creationBesideALeftoverJournal_killedAnywhere_isWholeOrNotDone) {
    interrupt();
    const std::string journal = aside.path("journal");
    fs::copy_file(path + "-journal", journal);
    const int killed = killAtEveryCall(
        [&] {
            fs::remove(path);
            replace(journal, path + "-journal");
        },
        [&] { OpenDatabase().create(path); },
        [&] {
            if (!fs::exists(path)) {
                EXPECT_NE(OpenDatabase().create(path), nullptr);
                EXPECT_FALSE(fs::exists(path + "-journal"));
            }
            EXPECT_THAT(contentOfResourceFile(path), IsEmpty());
            EXPECT_THAT(ScratchFolder::read(path + "-journal"), IsEmpty());
        });
    EXPECT_GT(killed, 10);
    EXPECT_FALSE(fs::exists(path + "-journal"));
}

// A power cut would bring the journal back, and it would be taken for that of the new file; or take the name
// of that away.
TEST_F(resourceInterruptions, creationBesideALeftoverJournal_bringsEveryStepToTheDisk) {
    leaveTheJournalOnly();
    Lines seen;
    {
        OpenDatabase database;
        const SystemCalls calls([&](const std::string& call, const std::string& file) {
            // Those of the file while it has no name yet are SQLite's own.
            if (!file.starts_with('.'))
                seen.push_back(call + " " + file);
            return 0;
        });
        EXPECT_NE(database.create(path), nullptr);
    }
    const auto first = std::find(seen.begin(), seen.end(), "truncate file-journal");
    EXPECT_THAT(Lines(first, seen.end()),
                ElementsAre("truncate file-journal", "sync file-journal", "link file", "unlink file-journal",
                            "sync " + folderName()));
}

// Whoever wrote to the new file before that would have the journal of its own removed.
TEST_F(resourceInterruptions, creationBesideALeftoverJournal_letsOthersWriteOnlyAfterItsRemoval) {
    leaveTheJournalOnly();
    SharedMemory shared;
    Child creator([&] {
        OpenDatabase database;
        const SystemCalls calls([&](const std::string& call, const std::string& file) {
            if (call == "unlink" && file == "file-journal") {
                shared->ready = 1;
                usleep(200000);
                shared->go = 1;
            }
            return 0;
        });
        shared->answers[0] = database.create(path) != nullptr ? 1 : 0;
    });
    waitFor([&] { return shared->ready == 1; });
    OpenDatabase other;
    EXPECT_NE(other.push(path), nullptr);
    EXPECT_EQ(other.addTopic("added"), 1);
    EXPECT_EQ(other.flush(), 1);
    EXPECT_EQ(shared->go, 1) << "it has not waited";
    creator.end();
    EXPECT_EQ(shared->answers[0], 1);
    EXPECT_THAT(contentOfResourceFile(path), ElementsAre("added"));
}

TEST_F(resourceInterruptions, flush_whoseCallsFail_changesNothingAndIsDoneLater) {
    for (const int error : {EIO, ENOSPC}) {
        bool happened = true;
        for (int failing = 0; happened; ++failing) {
            SCOPED_TRACE("call " + std::to_string(failing) + " fails with " + std::to_string(error));
            restore();
            OpenDatabase database;
            ASSERT_NE(database.push(path), nullptr);
            grow(database);
            int flushed = 0;
            int made = 0;
            {
                const SystemCalls calls([&](const std::string& call, const std::string& file) {
                    // When only the folder is not brought to the disk, a flush fails that is done.
                    if (call == "sync" && file == folderName())
                        return 0;
                    return made++ == failing ? error : 0;
                });
                flushed = database.flush();
            }
            happened = made > failing;
            EXPECT_EQ(takenError(), flushed == 1 ? 0 : 12);
            EXPECT_TRUE(database.everything() == after);
            ASSERT_TRUE(contentOfResourceFile(path) == (flushed == 1 ? after : before));
            EXPECT_EQ(database.flush(), 1);
            ASSERT_TRUE(contentOfResourceFile(path) == after);
        }
    }
}

// Another process stops for a moment while the header counts more pages than the file has.
TEST_F(resourceInterruptions, writerThatLetsTheFileGrow_isWaitedFor) {
    OpenDatabase flushing;
    flushing.push(path);
    flushing.modify("topic", "0", "changed");
    const std::function<bool()> operations[] = {[&] { return OpenDatabase().push(path) != nullptr; },
                                                [&] { return flushing.flush() == 1; }};
    for (const auto& operation : operations) {
        restore();
        SharedMemory shared;
        Child child([&] {
            OpenDatabase database;
            database.push(path);
            grow(database);
            int pages = 0;
            const SystemCalls calls([&](const std::string& call, const std::string& file) {
                if (call == "write" && file == "file" && ++pages == 2) {
                    shared->ready = 1;
                    usleep(300000);
                }
                return 0;
            });
            shared->answers[0] = database.flush();
        });
        waitFor([&] { return shared->ready == 1; });
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(operation());
        EXPECT_GT(secondsSince(start), 0.15);
        child.end();
        EXPECT_EQ(shared->answers[0], 1);
    }
    EXPECT_EQ(contentOfResourceFile(path).size(), after.size());
    EXPECT_EQ(flushing.value("added", "0"), kValue);
}

// One has seen that there is no file, and is slow. Another makes the file meanwhile and is killed while it
// writes: its journal is needed.
TEST_F(resourceInterruptions, creatorThatComesTooLate_leavesTheJournalOfTheOther) {
    interrupt();
    const std::string journal = aside.path("journal");
    fs::copy_file(path + "-journal", journal);
    for (const bool leftover : {false, true}) {
        SCOPED_TRACE(leftover ? "beside the journal of a file that is gone" : "");
        fs::remove(path);
        fs::remove(path + "-journal");
        if (leftover)
            fs::copy_file(journal, path + "-journal");
        SharedMemory shared;
        Child slow([&] {
            OpenDatabase database;
            const SystemCalls calls([&](const std::string&, const std::string&) {
                shared->ready = 1;
                waitFor([&] { return shared->go == 1; });
                return 0;
            });
            shared->answers[0] = database.create(path) == nullptr ? rdb_err : 0;
            shared->completed = 1;
        });
        waitFor([&] { return shared->ready == 1; });
        Child fast([&] {
            OpenDatabase database;
            database.create(path);
            database.addTopic("topic");
            for (int i = 0; i < kItems; ++i)
                database.add("topic", std::to_string(i), kValue);
            database.flush();
            for (int i = 0; i < kItems; ++i)
                database.modify("topic", std::to_string(i), std::string(200, 'w'));
            int pages = 0;
            const SystemCalls calls([&](const std::string& call, const std::string& file) {
                if (call == "write" && file == "file" && ++pages == 3) {
                    shared->go = 1;
                    waitFor([&] { return shared->completed == 1; });
                    die();
                }
                return 0;
            });
            database.flush();
        });
        slow.end();
        fast.end();
        EXPECT_EQ(shared->answers[0], 2);
        EXPECT_TRUE(fs::exists(path + "-journal"));
        EXPECT_TRUE(contentOfResourceFile(path) == before);
    }
}

TEST_F(resourceInterruptions, creationWhereAFileWithAJournalIs_leavesTheJournal) {
    interrupt();
    OpenDatabase database;
    EXPECT_EQ(database.create(path), nullptr);
    EXPECT_EQ(takenError(), 2);
    EXPECT_TRUE(fs::exists(path + "-journal"));
    EXPECT_TRUE(contentOfResourceFile(path) == before);
}

// A power cut would bring the journal back, which undoes what was completed.
TEST_F(resourceInterruptions, flush_endsWithTheFolderWithoutTheJournalOnTheDisk) {
    OpenDatabase database;
    database.push(path);
    grow(database);
    Lines seen;
    {
        const SystemCalls calls([&](const std::string& call, const std::string& file) {
            seen.push_back(call + " " + file);
            return 0;
        });
        EXPECT_EQ(database.flush(), 1);
    }
    ASSERT_GT(seen.size(), 3u);
    EXPECT_THAT(Lines(seen.end() - 3, seen.end()),
                ElementsAre("unlink file-journal", "openFolder file-journal", "sync " + folderName()));
}

TEST_F(resourceInterruptions, fileOfAnotherKindThatHasTakenThePlace_isNotRecoveredByAFlush) {
    ForeignConnection other(aside.path("other"));
    other.run(
        "CREATE TABLE t (a); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50) "
        "INSERT INTO t SELECT zeroblob(1000) FROM n");
    OpenDatabase database;
    database.push(path);
    grow(database);
    fs::remove(path);
    interruptWriting(aside.path("other"), path, "UPDATE t SET a = randomblob(1000)");
    const std::string bytes = ScratchFolder::read(path);
    EXPECT_EQ(database.flush(), 0);
    EXPECT_EQ(takenError(), 12);
    EXPECT_EQ(ScratchFolder::read(path), bytes);
    EXPECT_TRUE(fs::exists(path + "-journal"));
}

// One process writes rounds, the other reads: every time one whole round. Reading the many topics takes long
// enough for a flush to come between them and the items, were that not hindered.
TEST_F(resourceInterruptions, opening_seesOneFlushWhole) {
    constexpr int kTopics = 3000;
    {
        OpenDatabase database;
        database.push(path);
        for (int i = 0; i < kTopics; ++i)
            database.addTopic("filling " + std::to_string(i));
        ASSERT_EQ(database.flush(), 1);
    }
    SharedMemory shared;
    Child child([&] {
        OpenDatabase database;
        database.push(path);
        for (int round = 1; shared->go == 0; ++round) {
            const std::string value = std::to_string(round);
            database.modify("topic", "0", value);
            database.addTopic(value);
            rdb_remove_topic(database.db, database.file, std::to_string(round - 1).c_str());
            database.flush();
            shared->completed = round;
        }
    });
    waitFor([&] { return shared->completed > 0; });
    for (int i = 0; i < 60; ++i) {
        OpenDatabase database;
        EXPECT_NE(database.push(path), nullptr);
        const char* const last = rdb_posat_topic(database.db, database.file, kTopics + 1);
        EXPECT_EQ(database.value("topic", "0"), last != nullptr ? last : "(none)");
        EXPECT_EQ(rdb_posat_topic(database.db, database.file, kTopics + 2), nullptr);
    }
    shared->go = 1;
    child.end();
    EXPECT_GT(shared->completed, 2);
}

TEST_F(resourceInterruptions, threadsWithADatabaseEach_writeTheSameFile) {
    constexpr int kRounds = 20;
    int written[2] = {};
    const auto write = [&](int thread) {
        for (int round = 0; round < kRounds; ++round) {
            const std::string topic = std::to_string(thread) + " " + std::to_string(round);
            rdb_db* const db = rdb_open();
            rdb_file* const file = rdb_push_rfile(db, path.c_str());
            if (rdb_add_topic(db, file, topic.c_str(), "") == 1 && rdb_flush(db) == 1)
                ++written[thread];
            rdb_close(db);
        }
    };
    std::thread first(write, 0);
    std::thread second(write, 1);
    first.join();
    second.join();
    rdb_err = 0;
    EXPECT_THAT(written, ElementsAre(kRounds, kRounds));
    EXPECT_EQ(contentOfResourceFile(path).size(), before.size() + 2 * kRounds);
}

// Places.

TEST(resourcePlaces, fileInThePlaceOfTheJournal_isNotReplaced) {
    const ScratchFolder folder;
    writtenFile(folder, "a-journal", 2, "value");
    folder.write("b-journal", "a diary of the press");
    folder.write("c-journal", "short");
    fs::create_directory(folder.path("d-journal"));
    fs::create_symlink("b-journal", folder.path("e-journal"));
    ASSERT_EQ(mkfifo(folder.path("f-journal").c_str(), 0600), 0);
    for (const char* const name : {"a", "b", "c", "d", "e", "f"}) {
        OpenDatabase database;
        EXPECT_EQ(database.create(folder.path(name)), nullptr) << name;
        EXPECT_EQ(takenError(), 2) << name;
        EXPECT_FALSE(fs::exists(folder.path(name))) << name;
    }
    EXPECT_EQ(contentOfResourceFile(folder.path("a-journal")), contentOfOneTopic(2, "value"));
    EXPECT_EQ(ScratchFolder::read(folder.path("b-journal")), "a diary of the press");
    EXPECT_EQ(ScratchFolder::read(folder.path("c-journal")), "short");
    EXPECT_TRUE(fs::is_directory(folder.path("d-journal")));
    EXPECT_TRUE(fs::is_symlink(folder.path("e-journal")));
}

// What SQLite has begun there and not made count.
TEST(resourcePlaces, journalThatNeverCounted_isNoHindrance) {
    const ScratchFolder folder;
    folder.write("a-journal", "");
    folder.write("b-journal", std::string(512, '\0'));
    for (const char* const name : {"a", "b"}) {
        OpenDatabase database;
        ASSERT_NE(database.create(folder.path(name)), nullptr) << name;
        database.addTopic("topic");
        EXPECT_EQ(database.flush(), 1);
        EXPECT_THAT(contentOfResourceFile(folder.path(name)), ElementsAre("topic"));
        EXPECT_FALSE(fs::exists(folder.path(name) + "-journal"));
    }
}

// Whether a file can be created there, and then written and opened.
bool isCreated(const std::string& path) {
    OpenDatabase database;
    if (database.create(path) == nullptr) {
        EXPECT_EQ(takenError(), 2);
        EXPECT_EQ(ScratchFolder::read(path), "");
        return false;
    }
    database.addTopic("topic");
    EXPECT_EQ(database.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path), ElementsAre("topic"));
    return true;
}

TEST(resourcePlaces, longestNameAndPath_areThoseThatCanBeWritten) {
    const ScratchFolder folder;
    EXPECT_TRUE(isCreated(folder.path(std::string(247, 'n'))));
    EXPECT_FALSE(isCreated(folder.path(std::string(248, 'n'))));
    EXPECT_FALSE(isCreated(folder.path(std::string(255, 'n'))));
    const auto folderOf = [&](std::size_t size) {
        std::string path = folder.path();
        while (path.size() + 101 < size)
            path += "/" + std::string(100, 'd');
        path += "/" + std::string(size - path.size() - 1, 'e');
        fs::create_directories(path);
        return path;
    };
    const std::string longest = folderOf(460);
    EXPECT_TRUE(isCreated(longest + "/" + std::string(43, 'n')));
    EXPECT_FALSE(isCreated(longest + "/" + std::string(44, 'n')));
    EXPECT_FALSE(isCreated(folderOf(461) + "/n"));
    // Through a link it is as long as it was.
    fs::create_symlink(longest, folder.path("link"));
    EXPECT_TRUE(isCreated(folder.path("link/n")));
    EXPECT_FALSE(isCreated(folder.path("link/" + std::string(44, 'm'))));
}

TEST(resourcePlaces, flush_throughALink_writesTheFileAndLeavesTheLink) {
    const ScratchFolder folder;
    fs::create_directory(folder.path("real"));
    const std::string real = writtenFile(folder, "real/file", 1, "before");
    fs::create_symlink("real/file", folder.path("link"));
    ASSERT_EQ(chmod(real.c_str(), 0604), 0);
    OpenDatabase database;
    ASSERT_NE(database.push(folder.path("link")), nullptr);
    database.modify("topic", "0", "after");
    Lines journals;
    {
        const SystemCalls calls([&](const std::string& call, const std::string& file) {
            if (call == "unlink")
                journals.push_back(file + (fs::exists(real + "-journal") ? " beside the file" : ""));
            return 0;
        });
        EXPECT_EQ(database.flush(), 1);
    }
    EXPECT_THAT(journals, ElementsAre("file-journal beside the file"));
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_EQ(contentOfResourceFile(real), contentOfOneTopic(1, "after"));
    EXPECT_EQ(static_cast<int>(fs::status(real).permissions()), 0604);
}

TEST(resourcePlaces, flush_afterTheFolderWasLeft_findsTheFileThroughALinkedFolder) {
    const ScratchFolder folder;
    fs::create_directory(folder.path("real"));
    const std::string real = writtenFile(folder, "real/file", 1, "before");
    fs::create_symlink("real", folder.path("link"));
    const fs::path home = fs::current_path();
    fs::current_path(folder.path("link"));
    OpenDatabase database;
    EXPECT_NE(database.push("file"), nullptr);
    fs::current_path(home);
    database.modify("topic", "0", "after");
    EXPECT_EQ(database.flush(), 1);
    EXPECT_EQ(contentOfResourceFile(real), contentOfOneTopic(1, "after"));
}

// Another user than root, whom no permission stops.
void asAnOrdinaryUser(const std::function<void()>& f) {
    if (getuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
        _exit(1);
    f();
}

TEST(resourcePlaces, withoutPermissionToWrite_filesAreReadAndNotFlushed) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    const auto expectReadOnly = [&] {
        SharedMemory shared;
        Child child([&] {
            asAnOrdinaryUser([&] {
                OpenDatabase database;
                shared->ready = database.push(path) != nullptr ? 1 : 0;
                database.modify("topic", "0", "after");
                shared->answers[0] = database.flush() == 0 ? takenError() : 0;
                shared->answers[1] = database.create(folder.path("new")) == nullptr ? takenError() : 0;
            });
        });
        child.end();
        EXPECT_EQ(shared->ready, 1);
        EXPECT_EQ(shared->answers[0], 12);
        EXPECT_EQ(contentOfResourceFile(path), contentOfOneTopic(1, "before"));
        return shared->answers[1].load();
    };
    // The folder, then the file.
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    EXPECT_EQ(expectReadOnly(), 2);
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(expectReadOnly(), 0);
}

} // namespace
} // namespace qxcms::tests
