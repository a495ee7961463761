// What stands on the disk: files of others, interrupted writing, several writers, many items.
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "platform/resource_database.h"
#include "tests/support/batches.h"
#include "tests/support/open_database.h"
#include "tests/support/resource_files.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

// Every file of a folder with its bytes and the time of its last change.
std::map<std::string, std::pair<std::string, fs::file_time_type>> stateOf(const ScratchFolder& folder) {
    std::map<std::string, std::pair<std::string, fs::file_time_type>> state;
    for (const auto& entry : fs::directory_iterator(folder.path()))
        state[entry.path()] = {ScratchFolder::read(entry.path()), entry.last_write_time()};
    return state;
}

// The format.

TEST(resourceFiles, tablesAreThoseOfTheDocument) {
    const ScratchFolder folder;
    OpenDatabase database;
    database.create(folder.path("file"));
    rdb_add_topic(database.db, database.file, "inks", "of the press");
    rdb_add_item(database.db, "inks", "cyan", "1", "in percent");
    database.flush();
    ForeignConnection file(folder.path("file"));
    EXPECT_EQ(file.ask("PRAGMA application_id"), "1364742726\n"); // "QXRF"
    EXPECT_EQ(file.ask("PRAGMA user_version"), "1\n");
    EXPECT_EQ(file.ask("PRAGMA journal_mode"), "delete\n");
    EXPECT_EQ(file.ask("PRAGMA integrity_check"), "ok\n");
    EXPECT_EQ(file.ask("SELECT id || ' ' || CAST(name AS TEXT) || ' ' || CAST(text AS TEXT) FROM topic"),
              "1 inks of the press\n");
    EXPECT_EQ(file.ask("SELECT topic || ' ' || CAST(name AS TEXT) || ' ' || CAST(value AS TEXT) || ' ' || "
                       "CAST(text AS TEXT) FROM item"),
              "1 cyan 1 in percent\n");
    EXPECT_EQ(file.ask("SELECT typeof(name) || typeof(value) || typeof(text) FROM item"), "blobblobblob\n");
    EXPECT_EQ(file.ask("SELECT length(value) FROM revision"), "16\n");
}

TEST(resourceFiles, documentHasTheTablesLetterByLetter) {
    const ScratchFolder folder;
    writtenFile(folder, "file", 0, "");
    std::string document = ScratchFolder::read(QXCMS_SOURCE_DIR "/docs/data.md");
    for (char& c : document)
        c = c == '\n' ? ' ' : c;
    while (document.find("  ") != std::string::npos)
        document.erase(document.find("  "), 1);
    ForeignConnection file(folder.path("file"));
    for (const char* const table : {"topic", "item", "revision"}) {
        const std::string sql =
            file.ask(std::string("SELECT sql FROM sqlite_schema WHERE name = '") + table + "'");
        EXPECT_NE(document.find(sql.substr(0, sql.size() - 1) + ";"), std::string::npos) << sql;
    }
}

// Files of others.

TEST(resourceFiles, whatIsNoResourceFile_isRefusedAndUntouched) {
    const ScratchFolder folder;
    const std::string good = writtenFile(folder, "good", 100, "value");
    const std::string bytes = ScratchFolder::read(good);
    folder.write("empty", "");
    folder.write("text", std::string(5000, 'x'));
    folder.write("magic alone", bytes.substr(0, 16));
    folder.write("header alone", bytes.substr(0, 100));
    folder.write("first page alone", bytes.substr(0, 4096));
    const auto copyWith = [&](const std::string& name, const std::string& sql) {
        fs::copy_file(good, folder.path(name));
        ForeignConnection(folder.path(name)).run(sql);
    };
    copyWith("other application", "PRAGMA application_id = 7");
    copyWith("no application", "PRAGMA application_id = 0");
    copyWith("older", "PRAGMA user_version = 0");
    copyWith("newer", "PRAGMA user_version = 2");
    copyWith("more tables", "CREATE TABLE more (a)");
    copyWith("fewer tables", "DROP TABLE revision");
    copyWith("more columns", "ALTER TABLE item ADD COLUMN more BLOB");
    copyWith("an index", "CREATE INDEX more ON item (value)");
    copyWith("a trigger", "CREATE TRIGGER more AFTER INSERT ON item BEGIN DELETE FROM topic; END");
    copyWith("a view", "DROP TABLE item; CREATE VIEW item AS SELECT 1 AS topic, 'a' AS name FROM topic");
    copyWith("no revision", "DELETE FROM revision");
    copyWith("item of no topic", "PRAGMA foreign_keys = OFF; UPDATE item SET topic = 9 WHERE id = 3");
    copyWith("write-ahead log", "PRAGMA journal_mode = WAL");
    copyWith("NUL in a topic", "UPDATE topic SET name = x'610062'");
    copyWith("NUL in an item", "UPDATE item SET name = x'610062' WHERE id = 3");
    copyWith("NUL in a value", "UPDATE item SET value = x'00' WHERE id = 3");
    copyWith("NUL in a remark", "UPDATE topic SET text = x'00'");
    ForeignConnection(folder.path("other database"))
        .run("CREATE TABLE topic (name); INSERT INTO topic VALUES (1)");
    ForeignConnection(folder.path("write ahead")).run("PRAGMA journal_mode = WAL; CREATE TABLE topic (name)");
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    fs::create_directory(folder.path("folder"));

    std::vector<std::string> refused;
    for (const auto& entry : fs::directory_iterator(folder.path()))
        if (entry.path() != good)
            refused.push_back(entry.path());
    EXPECT_EQ(refused.size(), 26u);
    fs::remove(folder.path("pipe")); // not to be read by the test
    fs::remove(folder.path("folder"));
    const auto before = stateOf(folder);
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    fs::create_directory(folder.path("folder"));
    OpenDatabase database;
    for (const std::string& path : refused) {
        EXPECT_EQ(database.push(path), nullptr) << path;
        EXPECT_EQ(takenError(), 2) << path;
    }
    fs::remove(folder.path("pipe"));
    fs::remove(folder.path("folder"));
    EXPECT_EQ(stateOf(folder), before);
    EXPECT_NE(database.push(good), nullptr);
}

TEST(resourceFiles, whatSqliteKeepsForItself_doesNoHarm) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 5, "value");
    ForeignConnection(path).run("ANALYZE; VACUUM");
    EXPECT_EQ(ForeignConnection(path).ask("SELECT name FROM sqlite_schema WHERE name = 'sqlite_stat1'"),
              "sqlite_stat1\n");
    OpenDatabase database;
    ASSERT_NE(database.push(path), nullptr);
    EXPECT_EQ(database.everything(), contentOfOneTopic(5, "value"));
    database.modify("topic", "0", "other");
    EXPECT_EQ(database.flush(), 1);
}

TEST(resourceFiles, interruptedWritingOfOthers_isNotRecoveredEither) {
    const ScratchFolder folder;
    ForeignConnection other(folder.path("source"));
    other.run(
        "CREATE TABLE t (a); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 500) "
        "INSERT INTO t SELECT zeroblob(1000) FROM n");
    interruptWriting(folder.path("source"), folder.path("target"), "UPDATE t SET a = randomblob(1000)");
    const auto before = stateOf(folder);
    OpenDatabase database;
    EXPECT_EQ(database.push(folder.path("target")), nullptr);
    EXPECT_EQ(stateOf(folder), before);
    // It is one that SQLite would recover.
    EXPECT_EQ(ForeignConnection(folder.path("target")).ask("SELECT count(*) FROM t WHERE a = zeroblob(1000)"),
              "500\n");
    EXPECT_FALSE(fs::exists(folder.path("target-journal")));
}

TEST(resourceFiles, interruptedWriting_isUndoneByTheNextOpening) {
    const ScratchFolder folder;
    const std::string source = writtenFile(folder, "source", 500, std::string(1000, 'a'));
    const std::string target = folder.path("target");
    interruptWriting(source, target, "UPDATE item SET value = randomblob(1000)");
    EXPECT_NE(ScratchFolder::read(source), ScratchFolder::read(target));
    EXPECT_EQ(contentOfResourceFile(target), contentOfOneTopic(500, std::string(1000, 'a')));
    EXPECT_FALSE(fs::exists(target + "-journal"));
}

// A file may have been deleted after a crash, with its journal left behind.
TEST(resourceFiles, journalOfAFileThatIsGone_doesNotReachTheNewOne) {
    const ScratchFolder folder;
    const std::string source = writtenFile(folder, "source", 500, std::string(1000, 'a'));
    const std::string target = folder.path("target");
    interruptWriting(source, target,
                     "UPDATE topic SET text = x'00'; UPDATE item SET value = randomblob(1000)");
    fs::remove(target);
    fs::create_hard_link(target + "-journal", folder.path("journal"));
    OpenDatabase database;
    ASSERT_NE(database.create(target), nullptr);
    EXPECT_EQ(fs::file_size(folder.path("journal")), 0u) << "counts if its removal is interrupted";
    EXPECT_THAT(contentOfResourceFile(target), IsEmpty());
    EXPECT_EQ(ForeignConnection(target).ask("PRAGMA integrity_check"), "ok\n");
}

// Whatever a damaged file holds, it is refused or read; the sanitizers watch.
TEST(resourceFiles, damagedFiles_areRefusedOrRead) {
    const ScratchFolder folder;
    const std::string bytes = ScratchFolder::read(writtenFile(folder, "good", 200, "value"));
    ASSERT_GT(bytes.size(), 16000u);
    Random random(8);
    int readable = 0;
    for (int round = 0; round < 400; ++round) {
        std::string damaged = bytes;
        if (round % 4 == 0)
            damaged.resize(random.below(bytes.size()));
        else
            for (int i = 0; i < round % 4 * 3; ++i)
                // Half of the damage in the headers, where it hurts most.
                damaged[random.below(i % 2 == 0 ? bytes.size() : 200)] = static_cast<char>(random.bits());
        // One that is cut off and written anew would have to wait for the disk.
        fs::remove(folder.path("damaged"));
        OpenDatabase database;
        if (database.push(folder.write("damaged", damaged)) == nullptr) {
            EXPECT_EQ(takenError(), 2);
            continue;
        }
        ++readable;
        database.everything();
        database.addTopic("more");
        database.modify("topic", "0", "other");
        database.flush();
        fs::remove(folder.path("damaged-journal"));
    }
    EXPECT_GT(readable, 0);
    EXPECT_LT(readable, 400);
}

// Several databases at a time.

TEST(resourceFiles, unwrittenChanges_areSeenByNobodyAndBlockNobody) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "value");
    OpenDatabase first, second;
    first.push(path);
    first.modify("topic", "0", "of the first");
    first.addTopic("topic of the first");
    const auto start = std::chrono::steady_clock::now();
    second.push(path);
    EXPECT_EQ(second.everything(), contentOfOneTopic(1, "value"));
    second.addTopic("topic of the second");
    EXPECT_EQ(second.flush(), 1);
    EXPECT_LT(secondsSince(start), 1.5);
    EXPECT_EQ(first.flush(), 1);
}

TEST(resourceFiles, laterFlush_winsItemByItem) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 4, "before");
    OpenDatabase first, second;
    first.push(path);
    second.push(path);
    first.modify("topic", "0", "of the first");
    first.modify("topic", "1", "of the first");
    first.add("topic", "new", "of the first");
    second.modify("topic", "1", "of the second");
    second.modify("topic", "2", "of the second");
    second.add("topic", "new", "of the second");
    EXPECT_EQ(first.flush(), 1);
    EXPECT_EQ(second.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path),
                ElementsAre("topic", "topic / 0 = of the first", "topic / 1 = of the second",
                            "topic / 2 = of the second", "topic / 3 = before",
                            "topic / new = of the second"));
}

TEST(resourceFiles, whatOthersWrote_isSeenAfterAFlushThatHadSomethingToWrite) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase first, second;
    first.push(path);
    second.push(path);
    first.modify("topic", "0", "after");
    first.flush();
    EXPECT_EQ(second.value("topic", "0"), "before");
    second.flush();
    EXPECT_EQ(second.value("topic", "0"), "before");
    second.addTopic("more");
    second.flush();
    EXPECT_EQ(second.value("topic", "0"), "after");
    EXPECT_THAT(second.topics(), ElementsAre("topic", "more"));
    // The renewed content has no changes to write.
    const std::string bytes = ScratchFolder::read(path);
    second.flush();
    EXPECT_EQ(ScratchFolder::read(path), bytes);
}

TEST(resourceFiles, topicThatBothAdd_isOneWithTheItemsOfBoth) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 0, "");
    OpenDatabase first, second;
    for (OpenDatabase* const database : {&first, &second}) {
        database->push(path);
        database->addTopic("both");
        database->add("both", database == &first ? "a" : "b", "1");
    }
    EXPECT_EQ(first.flush(), 1);
    EXPECT_EQ(second.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path), ElementsAre("topic", "both", "both / a = 1", "both / b = 1"));
}

TEST(resourceFiles, topicThatOthersRemoved_comesBackWithTheItemsThatAreWritten) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 3, "before");
    OpenDatabase first, second;
    first.push(path);
    second.push(path);
    rdb_remove_topic(first.db, first.file, "topic");
    second.modify("topic", "1", "after");
    EXPECT_EQ(first.flush(), 1);
    EXPECT_EQ(second.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path), ElementsAre("topic", "topic / 1 = after"));
    EXPECT_THAT(second.everything(), ElementsAre("topic", "topic / 1 = after"));
}

TEST(resourceFiles, removedTopic_goesWithWhatOthersAddedToIt) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase first, second;
    first.push(path);
    second.push(path);
    rdb_remove_topic(second.db, second.file, "topic");
    first.add("topic", "more", "1");
    EXPECT_EQ(first.flush(), 1);
    EXPECT_EQ(second.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path), IsEmpty());
    // One that came and went here is nobody else's.
    second.addTopic("another");
    rdb_remove_topic(second.db, second.file, "another");
    first.addTopic("another");
    EXPECT_EQ(first.flush(), 1);
    second.addTopic("more");
    EXPECT_EQ(second.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path), ElementsAre("another", "more"));
}

TEST(resourceFiles, removal_isWrittenOnce) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase first, second;
    first.push(path);
    rdb_remove_topic(first.db, first.file, "topic");
    EXPECT_EQ(first.flush(), 1);
    second.push(path);
    second.addTopic("topic");
    EXPECT_EQ(second.flush(), 1);
    first.addTopic("more");
    EXPECT_EQ(first.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(path), ElementsAre("topic", "more"));
}

TEST(resourceFiles, itemThatBothAdd_hasTheRemarkOfTheLater) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 0, "");
    OpenDatabase first, second;
    first.push(path);
    second.push(path);
    rdb_add_item(first.db, "topic", "item", "1", "of the first");
    rdb_add_item(second.db, "topic", "item", "1", "of the second");
    EXPECT_EQ(first.flush(), 1);
    EXPECT_EQ(second.flush(), 1);
    EXPECT_EQ(ForeignConnection(path).ask("SELECT CAST(text AS TEXT) FROM item"), "of the second\n");
}

TEST(resourceFiles, topicThatBothAdd_keepsTheRemarkOfTheFirst) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 0, "");
    OpenDatabase first, second;
    first.push(path);
    second.push(path);
    rdb_add_topic(first.db, first.file, "both", "of the first");
    rdb_add_topic(second.db, second.file, "both", "of the second");
    EXPECT_EQ(first.flush(), 1);
    EXPECT_EQ(second.flush(), 1);
    EXPECT_EQ(ForeignConnection(path).ask("SELECT CAST(text AS TEXT) FROM topic WHERE id = 2"),
              "of the first\n");
}

// Where nobody else has written, what was handed out need not be made again.
TEST(resourceFiles, flushesOfOneAlone_doNotReadTheFileAgain) {
    const ScratchFolder folder;
    OpenDatabase database;
    database.push(writtenFile(folder, "file", 1, "value"));
    const char* const name = rdb_posat_topic(database.db, database.file, 0);
    for (const char* const value : {"a", "b", "c"}) {
        database.modify("topic", "0", value);
        EXPECT_EQ(database.flush(), 1);
        EXPECT_EQ(rdb_posat_topic(database.db, database.file, 0), name);
    }
}

TEST(resourceFiles, fileThatGotOtherTablesMeanwhile_isNotWritten) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase database;
    database.push(path);
    ForeignConnection(path).run("CREATE TABLE more (a)");
    database.modify("topic", "0", "after");
    EXPECT_EQ(database.flush(), 0);
    EXPECT_EQ(takenError(), 12);
    EXPECT_EQ(ForeignConnection(path).ask("SELECT CAST(value AS TEXT) FROM item"), "before\n");
}

TEST(resourceFiles, flush_waitsForAnotherWriterAndThenFails) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase database;
    database.push(path);
    database.modify("topic", "0", "after");
    {
        ForeignConnection other(path);
        other.run("BEGIN IMMEDIATE");
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(database.flush(), 0);
        EXPECT_EQ(takenError(), 12);
        EXPECT_GT(secondsSince(start), 1.5);
        EXPECT_LT(secondsSince(start), 4.0);
        EXPECT_EQ(database.value("topic", "0"), "after");
        // Reading is not hindered by a writer that has not come to its end.
        EXPECT_EQ(contentOfResourceFile(path), contentOfOneTopic(1, "before"));
    }
    EXPECT_EQ(database.flush(), 1);
    EXPECT_EQ(contentOfResourceFile(path), contentOfOneTopic(1, "after"));
}

TEST(resourceFiles, flush_waitsForAReaderAndThenFailsWithNothingWritten) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 300, "before");
    OpenDatabase database;
    database.push(path);
    for (int i = 0; i < 300; ++i)
        database.modify("topic", std::to_string(i), "after");
    {
        // After a writer, which takes its time too: both waits together are one.
        ForeignConnection writer(path);
        writer.run("BEGIN IMMEDIATE");
        ForeignConnection other(path);
        other.run("BEGIN; SELECT count(*) FROM item");
        const auto start = std::chrono::steady_clock::now();
        std::thread end([&] {
            usleep(1500000);
            writer.run("ROLLBACK");
        });
        EXPECT_EQ(database.flush(), 0);
        EXPECT_EQ(takenError(), 12);
        EXPECT_GT(secondsSince(start), 1.5);
        EXPECT_LT(secondsSince(start), 3.0);
        end.join();
        EXPECT_EQ(other.ask("SELECT count(*) FROM item WHERE value = CAST('before' AS BLOB)"), "300\n");
    }
    EXPECT_EQ(contentOfResourceFile(path), contentOfOneTopic(300, "before"));
    EXPECT_EQ(database.flush(), 1);
    EXPECT_EQ(contentOfResourceFile(path), contentOfOneTopic(300, "after"));
}

TEST(resourceFiles, opening_waitsForAWriterThatIsAboutToEndAndThenFails) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase database;
    {
        ForeignConnection other(path);
        other.run("BEGIN EXCLUSIVE");
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(database.push(path), nullptr);
        EXPECT_EQ(takenError(), 2);
        EXPECT_GT(secondsSince(start), 1.5);
        EXPECT_LT(secondsSince(start), 4.0);
    }
    EXPECT_NE(database.push(path), nullptr);
}

TEST(resourceFiles, revisionChanges_alsoWhenOthersReplaceTheFile) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", 1, "before");
    OpenDatabase database;
    database.push(path);
    fs::rename(path, folder.path("aside"));
    writtenFile(folder, "file", 2, "other");
    database.addTopic("more");
    EXPECT_EQ(database.flush(), 1);
    EXPECT_THAT(database.everything(),
                ElementsAre("topic", "topic / 0 = other", "topic / 1 = other", "more"));
    EXPECT_EQ(contentOfResourceFile(path), database.everything());
}

// Several processes.

constexpr int kItemsOfARound = 150;

std::string valueOfRound(int round) {
    return std::to_string(round) + std::string(200, static_cast<char>('a' + round % 26));
}

Lines contentOfRound(int round) {
    Lines lines = contentOfOneTopic(kItemsOfARound, valueOfRound(round));
    const std::string last = "round " + std::to_string(round);
    lines.push_back(last);
    for (int i = 0; i < 10; ++i)
        lines.push_back(last + " / " + std::to_string(i) + " = " + valueOfRound(round));
    return lines;
}

// Changes every value, adds a topic and removes the one of the round before.
void makeRound(OpenDatabase& database, int round) {
    for (int i = 0; i < kItemsOfARound; ++i)
        database.modify("topic", std::to_string(i), valueOfRound(round));
    const std::string last = "round " + std::to_string(round);
    database.addTopic(last);
    for (int i = 0; i < 10; ++i)
        database.add(last, std::to_string(i), valueOfRound(round));
    rdb_remove_topic(database.db, database.file, ("round " + std::to_string(round - 1)).c_str());
}

// Kill -9 at any moment of 200 runs: what the last completed flush held is there, nothing half.
TEST(resourceFiles, killedWriters_leaveWhatTheLastFlushHeld) {
    const ScratchFolder folder;
    const std::string path = writtenFile(folder, "file", kItemsOfARound, "");
    {
        OpenDatabase database;
        database.push(path);
        makeRound(database, 1);
        ASSERT_EQ(database.flush(), 1);
    }
    SharedMemory shared;
    shared->completed = 1;
    Random random(21);
    int whileWriting = 0;
    for (int run = 0; run < 200; ++run) {
        SCOPED_TRACE(run);
        shared->ready = 0;
        shared->isWriting = 0;
        Child child([&] {
            OpenDatabase database;
            database.push(path);
            for (int round = shared->completed + 1;; ++round) {
                makeRound(database, round);
                shared->isWriting = 1;
                shared->ready = 1;
                if (database.flush() == 0)
                    _exit(1);
                shared->completed = round;
                shared->isWriting = 0;
            }
        });
        waitFor([&] { return shared->ready == 1; });
        usleep(static_cast<useconds_t>(random.below(8000)));
        child.kill();
        child.end();
        ASSERT_EQ(shared->ready, 1);
        whileWriting += shared->isWriting;
        // A flush may have come to its end just before it could say so.
        const int completed = shared->completed;
        const Lines found = contentOfResourceFile(path);
        ASSERT_THAT(found, AnyOf(contentOfRound(completed), contentOfRound(completed + 1)));
        shared->completed = found == contentOfRound(completed) ? completed : completed + 1;
    }
    EXPECT_GT(whileWriting, 20);
    EXPECT_EQ(ForeignConnection(path).ask("PRAGMA integrity_check"), "ok\n");
}

// The revision tells whether others have written, so that it must not come twice.
TEST(resourceFiles, revisionsOfAForkedProcess_areOthers) {
    const ScratchFolder folder;
    const auto revisionOf = [&](const std::string& path) {
        return ForeignConnection(path).ask("SELECT hex(value) FROM revision");
    };
    const std::string warmUp = writtenFile(folder, "warm up", 1, "");
    Child child([&] { writtenFile(folder, "of the child", 1, ""); });
    child.end();
    const std::string own = writtenFile(folder, "own", 1, "");
    EXPECT_NE(revisionOf(own), revisionOf(warmUp));
    EXPECT_NE(revisionOf(own), revisionOf(folder.path("of the child")));
}

TEST(resourceFiles, killedCreators_leaveAWholeFileOrNone) {
    const ScratchFolder folder;
    SharedMemory shared;
    Random random(22);
    int next = 0;
    const auto pathOf = [&](int number) { return folder.path("file " + std::to_string(number)); };
    for (int run = 0; run < 40; ++run) {
        shared->ready = 0;
        shared->completed = next;
        Child child([&] {
            for (int number = next;; ++number) {
                shared->ready = 1;
                OpenDatabase database;
                if (database.create(pathOf(number)) == nullptr)
                    _exit(1);
                shared->completed = number + 1;
            }
        });
        waitFor([&] { return shared->ready == 1; });
        usleep(static_cast<useconds_t>(random.below(8000)));
        child.kill();
        child.end();
        for (; next < shared->completed; ++next)
            ASSERT_THAT(contentOfResourceFile(pathOf(next)), IsEmpty());
        if (fs::exists(pathOf(next))) {
            ASSERT_THAT(contentOfResourceFile(pathOf(next)), IsEmpty());
        } else {
            OpenDatabase database;
            ASSERT_NE(database.create(pathOf(next)), nullptr);
        }
        ++next;
    }
}

// Both start from the same content and save at the same moment.
TEST(resourceFiles, twoProcessesThatSaveAtOnce_bothEndWithAWholeFile) {
    constexpr int kItems = 400;
    int bothSucceeded = 0;
    for (int run = 0; run < 20; ++run) {
        SCOPED_TRACE(run);
        const ScratchFolder folder;
        const std::string path = writtenFile(folder, "file", kItems, "before");
        SharedMemory shared;
        const auto save = [&](int number, const std::string& name) {
            OpenDatabase database;
            database.push(path);
            for (int i = 0; i < kItems; ++i)
                database.modify("topic", std::to_string(i), name);
            database.addTopic("of " + name);
            for (int i = 0; i < kItems; ++i)
                database.add("of " + name, std::to_string(i), name);
            ++shared->ready;
            waitFor([&] { return shared->go == 1; });
            const auto start = std::chrono::steady_clock::now();
            const bool saved = database.flush() == 1;
            const bool refused = rdb_err == 12 && secondsSince(start) > 1.5;
            shared->answers[number] = saved ? 1 : (refused ? 2 : 3);
        };
        Child first([&] { save(0, "first"); });
        Child second([&] { save(1, "second"); });
        waitFor([&] { return shared->ready == 2; });
        shared->go = 1;
        first.end();
        second.end();
        // 1: done, 2: refused after the longest wait.
        EXPECT_THAT(shared->answers[0].load(), AnyOf(1, 2));
        EXPECT_THAT(shared->answers[1].load(), AnyOf(1, 2));
        EXPECT_TRUE(shared->answers[0] == 1 || shared->answers[1] == 1);
        bothSucceeded += shared->answers[0] == 1 && shared->answers[1] == 1 ? 1 : 0;

        OpenDatabase database;
        ASSERT_NE(database.push(path), nullptr);
        for (int number = 0; number < 2; ++number) {
            const std::string topic = number == 0 ? "of first" : "of second";
            const bool isThere = rdb_search_topic(database.db, topic.c_str()) == 1;
            EXPECT_EQ(isThere, shared->answers[number] == 1);
            EXPECT_EQ(database.items(topic).size(), isThere ? static_cast<std::size_t>(kItems) : 0u);
        }
        const std::string winner = database.value("topic", "0");
        EXPECT_THAT(winner, AnyOf("first", "second"));
        for (int i = 0; i < kItems; ++i)
            ASSERT_EQ(database.value("topic", std::to_string(i)), winner);
        EXPECT_EQ(ForeignConnection(path).ask("PRAGMA integrity_check"), "ok\n");
    }
    EXPECT_GT(bothSucceeded, 0);
}

TEST(resourceFiles, twoProcessesThatCreateAtOnce_haveOneWinner) {
    for (int run = 0; run < 20; ++run) {
        const ScratchFolder folder;
        SharedMemory shared;
        const auto create = [&](int number) {
            OpenDatabase database;
            ++shared->ready;
            waitFor([&] { return shared->go == 1; });
            shared->answers[number] = database.create(folder.path("file")) != nullptr ? 1 : 2;
        };
        Child first([&] { create(0); });
        Child second([&] { create(1); });
        waitFor([&] { return shared->ready == 2; });
        shared->go = 1;
        first.end();
        second.end();
        EXPECT_EQ(shared->answers[0] + shared->answers[1], 3);
        EXPECT_THAT(contentOfResourceFile(folder.path("file")), IsEmpty());
    }
}

// Many items.

constexpr int kManyTopics = 1000;
constexpr int kItemsEach = 100;

TEST(resourceFiles, hundredThousandItems_takeSeconds) {
    const ScratchFolder folder;
    const auto start = std::chrono::steady_clock::now();
    {
        OpenDatabase database;
        database.create(folder.path("file"));
        for (int topic = 0; topic < kManyTopics; ++topic) {
            const std::string name = "topic " + std::to_string(topic);
            ASSERT_EQ(database.addTopic(name), 1);
            for (int item = 0; item < kItemsEach; ++item)
                ASSERT_EQ(database.add(name, "item " + std::to_string(item), std::to_string(topic + item)),
                          1);
        }
        ASSERT_EQ(database.flush(), 1);
    }
    OpenDatabase database;
    ASSERT_NE(database.push(folder.path("file")), nullptr);
    for (int topic = 0; topic < kManyTopics; ++topic) {
        const std::string name = "topic " + std::to_string(topic);
        for (int item = 0; item < kItemsEach; ++item) {
            int value = -1;
            ASSERT_EQ(
                rdb_search_int(database.db, name.c_str(), ("item " + std::to_string(item)).c_str(), &value),
                1);
            ASSERT_EQ(value, topic + item);
        }
    }
    std::size_t seen = 0;
    for (const std::string& topic : database.topics())
        seen += database.items(topic).size();
    EXPECT_EQ(seen, static_cast<std::size_t>(kManyTopics) * kItemsEach);
    EXPECT_LT(secondsSince(start), 20.0);
}

// Twenty times as many names in one topic: a walk that starts from the first each time takes 400 times as
// long.
TEST(resourceFiles, walkThroughAllNames_takesTimeInProportion) {
    const ScratchFolder folder;
    OpenDatabase database;
    database.create(folder.path("file"));
    const auto fill = [&](const std::string& topic, int items) {
        database.addTopic(topic);
        for (int i = 0; i < items; ++i)
            database.add(topic, std::to_string(i), "");
    };
    fill("few", 5000);
    fill("many", 100000);
    const auto secondsOfWalks = [&](const char* topic, int walks) {
        double least = 1e9;
        for (int attempt = 0; attempt < 5; ++attempt) {
            const auto start = std::chrono::steady_clock::now();
            for (int walk = 0; walk < walks; ++walk)
                for (int n = 0; rdb_posat_item(database.db, topic, n) != nullptr; ++n)
                    ;
            least = std::min(least, secondsSince(start));
        }
        return least;
    };
    // The same number of steps; five times as long is allowed for memory that is further away.
    EXPECT_LT(secondsOfWalks("many", 1), 5.0 * secondsOfWalks("few", 20));
}

} // namespace
} // namespace qxcms::tests
