// The operations on resource files, one after the other.
#include <sys/stat.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/resource_database.h"
#include "tests/support/open_database.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

// True when an operation failed with a code; `rdb_err` was something else before.
template <class Operation>
testing::AssertionResult fails(int code, const Operation& operation) {
    rdb_err = -77;
    if (operation())
        return testing::AssertionFailure() << "it succeeded";
    const int error = takenError();
    return error == code ? testing::AssertionSuccess()
                         : testing::AssertionFailure() << "the code is " << error;
}
#define EXPECT_FAILS(operation, code) EXPECT_TRUE(fails(code, [&] { return operation; }))

// A database with a new file and, for reading it again, its path.
struct NewFile : OpenDatabase {
    NewFile() { EXPECT_NE(create(path), nullptr); }

    ScratchFolder folder;
    std::string path = folder.path("cache.rdb");
};

// Files.

TEST(resourceDatabase, createdFile_isThereAtOnceAndHasNoTopics) {
    NewFile made;
    EXPECT_TRUE(fs::is_regular_file(made.path));
    EXPECT_THAT(contentOfResourceFile(made.path), IsEmpty());
}

TEST(resourceDatabase, creatingAndFlushing_leaveNothingBesideTheFile) {
    NewFile made;
    made.addTopic("inks");
    EXPECT_EQ(made.flush(), 1);
    int files = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(made.folder.path()))
        ++files;
    EXPECT_EQ(files, 1);
}

TEST(resourceDatabase, createdFile_hasTheModeBitsOfTheProcess) {
    for (const mode_t mask : {027u, 002u}) {
        const mode_t before = umask(mask);
        NewFile made;
        umask(before);
        EXPECT_EQ(fs::status(made.path).permissions(), static_cast<fs::perms>(0666 & ~mask));
    }
}

TEST(resourceDatabase, creating_neverGoesOverWhatIsThere) {
    NewFile made;
    made.addTopic("inks");
    made.flush();
    const std::string link = made.folder.path("link");
    fs::create_symlink(made.folder.path("nowhere"), link);
    const std::string folder = made.folder.path("folder");
    fs::create_directory(folder);
    const std::string text = made.folder.write("text", "a text");
    const std::string empty = made.folder.write("empty", "");

    OpenDatabase other;
    for (const std::string& path : {made.path, link, folder, text, empty})
        EXPECT_FAILS(other.create(path), 2) << path;
    EXPECT_THAT(contentOfResourceFile(made.path), ElementsAre("inks"));
    EXPECT_FALSE(fs::exists(made.folder.path("nowhere")));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(ScratchFolder::read(text), "a text");
    EXPECT_EQ(ScratchFolder::read(empty), "");
}

TEST(resourceDatabase, creatingInAFolderThatIsNotThere_fails) {
    const ScratchFolder folder;
    OpenDatabase database;
    EXPECT_FAILS(database.create(folder.path("missing/cache.rdb")), 2);
}

TEST(resourceDatabase, pushingWhatIsNotThere_failsAndMakesNothing) {
    const ScratchFolder folder;
    OpenDatabase database;
    EXPECT_FAILS(database.push(folder.path("missing")), 2);
    EXPECT_FAILS(database.push(folder.path()), 2);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(resourceDatabase, pathsOfAnyBytes_arePlainPaths) {
    const ScratchFolder folder;
    for (const std::string name : {"a b?c#d%41.rdb", "file:x", ":memory:", "\xC3\xA4\xFF", "a\nb", "100%"}) {
        const std::string path = folder.path(name);
        OpenDatabase database;
        ASSERT_NE(database.create(path), nullptr) << name;
        database.addTopic(name);
        EXPECT_EQ(database.flush(), 1) << name;
        EXPECT_TRUE(fs::is_regular_file(path)) << name;
        EXPECT_THAT(contentOfResourceFile(path), ElementsAre(name));
    }
}

TEST(resourceDatabase, relativePaths_stayWithTheFolderOfThePushing) {
    const ScratchFolder folder;
    fs::create_directory(folder.path("elsewhere"));
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    OpenDatabase database;
    EXPECT_NE(database.create(":memory:"), nullptr);
    fs::current_path(folder.path("elsewhere"));
    database.addTopic("inks");
    EXPECT_EQ(database.flush(), 1);
    fs::current_path(before);
    EXPECT_THAT(contentOfResourceFile(folder.path(":memory:")), ElementsAre("inks"));
}

TEST(resourceDatabase, missingPath_isCode1) {
    OpenDatabase database;
    EXPECT_FAILS(rdb_push_rfile(database.db, nullptr), 1);
    EXPECT_FAILS(rdb_push_rfile(database.db, ""), 1);
    EXPECT_FAILS(rdb_create_rfile(database.db, nullptr), 1);
    EXPECT_FAILS(rdb_create_rfile(database.db, ""), 1);
}

// Several files.

TEST(resourceDatabase, topicOfTheFileThatCameLast_hidesTheOthersWithTheirItems) {
    const ScratchFolder folder;
    OpenDatabase database;
    rdb_file* const first = database.create(folder.path("first"));
    database.addTopic("shared");
    database.add("shared", "value", "1");
    database.add("shared", "only here", "x");
    database.addTopic("of the first");
    database.add("of the first", "value", "3");
    rdb_file* const second = database.create(folder.path("second"));
    EXPECT_EQ(database.value("shared", "value"), "1");
    EXPECT_EQ(database.addTopic("shared"), 1);
    EXPECT_FAILS(rdb_search(database.db, "shared", "value", nullptr), 17);
    database.add("shared", "value", "2");
    EXPECT_EQ(database.value("shared", "value"), "2");
    EXPECT_FAILS(rdb_search(database.db, "shared", "only here", nullptr), 17);
    EXPECT_EQ(database.value("of the first", "value"), "3");
    database.file = first;
    EXPECT_THAT(database.topics(), ElementsAre("shared", "of the first"));
    database.file = second;
    EXPECT_THAT(database.topics(), ElementsAre("shared"));

    // Each file gets what is its own.
    EXPECT_EQ(database.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(folder.path("first")),
                ElementsAre("shared", "shared / value = 1", "shared / only here = x", "of the first",
                            "of the first / value = 3"));
    EXPECT_THAT(contentOfResourceFile(folder.path("second")), ElementsAre("shared", "shared / value = 2"));

    // A topic is removed from the file that is named.
    EXPECT_FAILS(rdb_remove_topic(database.db, second, "of the first"), 19);
    EXPECT_EQ(rdb_remove_topic(database.db, second, "shared"), 1);
    EXPECT_EQ(database.value("shared", "value"), "1");
}

TEST(resourceDatabase, flush_writesTheOtherFilesWhenOneFails) {
    const ScratchFolder folder;
    OpenDatabase database;
    for (const std::string name : {"first", "second", "third"}) {
        database.create(folder.path(name));
        database.addTopic("of " + name);
    }
    fs::remove(folder.path("second"));
    EXPECT_FAILS(database.flush(), 12);
    EXPECT_FALSE(fs::exists(folder.path("second")));
    EXPECT_THAT(contentOfResourceFile(folder.path("first")), ElementsAre("of first"));
    EXPECT_THAT(contentOfResourceFile(folder.path("third")), ElementsAre("of third"));
}

// Topics and items.

TEST(resourceDatabase, topicsAndItems_standInTheirOrderOfAddition) {
    NewFile made;
    for (const char* const topic : {"zinc", "amber", "Zinc", ""})
        EXPECT_EQ(made.addTopic(topic), 1);
    for (const char* const item : {"2", "10", "1"})
        EXPECT_EQ(made.add("amber", item, std::string("value ") + item), 1);
    EXPECT_EQ(made.add("zinc", "", ""), 1);
    const Lines expected = {"zinc",
                            "zinc /  = ",
                            "amber",
                            "amber / 2 = value 2",
                            "amber / 10 = value 10",
                            "amber / 1 = value 1",
                            "Zinc",
                            ""};
    EXPECT_EQ(made.everything(), expected);
    EXPECT_EQ(made.flush(), 1);
    EXPECT_EQ(made.everything(), expected);
    EXPECT_EQ(contentOfResourceFile(made.path), expected);
    EXPECT_EQ(rdb_search_topic(made.db, "amber"), 1);
    EXPECT_EQ(rdb_search_topic(made.db, ""), 1);
}

TEST(resourceDatabase, successes_leaveTheErrorAsItIs) {
    NewFile made;
    rdb_err = 12;
    EXPECT_EQ(made.addTopic("inks"), 1);
    EXPECT_EQ(made.add("inks", "cyan", "1"), 1);
    EXPECT_EQ(made.value("inks", "cyan"), "1");
    EXPECT_EQ(made.flush(), 1);
    EXPECT_EQ(takenError(), 12);
}

TEST(resourceDatabase, whatIsThereAlready_isNotAddedAgain) {
    NewFile made;
    made.addTopic("inks");
    made.add("inks", "cyan", "1");
    for (int round = 0; round < 2; ++round) {
        EXPECT_FAILS(made.addTopic("inks"), 7);
        EXPECT_FAILS(made.add("inks", "cyan", "2"), 8);
        EXPECT_THAT(made.everything(), ElementsAre("inks", "inks / cyan = 1"));
        made.flush();
    }
}

TEST(resourceDatabase, modifiedItem_keepsItsPlace) {
    NewFile made;
    made.addTopic("inks");
    for (const char* const item : {"cyan", "magenta", "yellow"})
        made.add("inks", item, "1");
    made.flush();
    EXPECT_EQ(made.modify("inks", "magenta", "2"), 1);
    EXPECT_EQ(made.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(made.path),
                ElementsAre("inks", "inks / cyan = 1", "inks / magenta = 2", "inks / yellow = 1"));
}

TEST(resourceDatabase, valueOfAnItem_mayReplaceThatOfTheSame) {
    NewFile made;
    made.addTopic("inks");
    const std::string longValue = std::string(100, 'a') + std::string(100, 'b');
    made.add("inks", "cyan", longValue);
    const char* value = nullptr;
    ASSERT_EQ(rdb_search(made.db, "inks", "cyan", &value), 1);
    EXPECT_EQ(rdb_modify(made.db, "inks", "cyan", value + 100), 1);
    EXPECT_EQ(made.value("inks", "cyan"), std::string(100, 'b'));
}

TEST(resourceDatabase, whatIsGivenOut_outlivesOtherQuestions) {
    NewFile made;
    ASSERT_EQ(made.addTopic("t"), 1);
    ASSERT_EQ(made.add("t", "an item with a name of some length", "a value of some length"), 1);
    ASSERT_EQ(made.add("t", "j", "another value of some length"), 1);
    const char* value = nullptr;
    const char* other = nullptr;
    int number = 0;
    char text[100];
    const char* const topic = rdb_posat_topic(made.db, made.file, 0);
    const char* const item = rdb_posat_item(made.db, topic, 0);
    ASSERT_EQ(rdb_search(made.db, topic, item, &value), 1);
    EXPECT_STREQ(rdb_posat_item(made.db, topic, 1), "j");
    EXPECT_EQ(rdb_search(made.db, topic, "j", &other), 1);
    EXPECT_EQ(rdb_search(made.db, topic, "unknown", &other), 0);
    EXPECT_EQ(rdb_search_topic(made.db, topic), 1);
    EXPECT_EQ(rdb_search_int(made.db, topic, "j", &number), 1);
    EXPECT_EQ(rdb_search_string(made.db, topic, "j", text, sizeof text), 1);
    EXPECT_STREQ(topic, "t");
    EXPECT_STREQ(item, "an item with a name of some length");
    EXPECT_STREQ(value, "a value of some length");
    EXPECT_STREQ(other, "another value of some length");
}

TEST(resourceDatabase, removedTopic_isGoneWithItsItems) {
    NewFile made;
    for (const char* const topic : {"first", "second", "third"}) {
        made.addTopic(topic);
        made.add(topic, "item", "value");
    }
    made.flush();
    EXPECT_EQ(rdb_remove_topic(made.db, made.file, "second"), 1);
    EXPECT_EQ(rdb_search_topic(made.db, "second"), 0);
    EXPECT_FAILS(rdb_remove_topic(made.db, made.file, "second"), 19);
    EXPECT_THAT(made.topics(), ElementsAre("first", "third"));
    EXPECT_THAT(contentOfResourceFile(made.path),
                ElementsAre("first", "first / item = value", "second", "second / item = value", "third",
                            "third / item = value"));
    EXPECT_EQ(made.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(made.path),
                ElementsAre("first", "first / item = value", "third", "third / item = value"));
}

TEST(resourceDatabase, topicThatComesAgain_standsLastAndHasNoneOfItsItems) {
    NewFile made;
    for (const char* const topic : {"first", "second"}) {
        made.addTopic(topic);
        made.add(topic, "old", "value");
    }
    made.flush();
    EXPECT_EQ(rdb_remove_topic(made.db, made.file, "first"), 1);
    EXPECT_EQ(made.addTopic("first"), 1);
    made.add("first", "new", "value");
    const auto expected = ElementsAre("second", "second / old = value", "first", "first / new = value");
    EXPECT_THAT(made.everything(), expected);
    EXPECT_EQ(made.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(made.path), expected);
    // Once more, without a flush between.
    rdb_remove_topic(made.db, made.file, "first");
    made.addTopic("first");
    EXPECT_EQ(rdb_remove_topic(made.db, made.file, "first"), 1);
    EXPECT_EQ(made.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(made.path), ElementsAre("second", "second / old = value"));
}

TEST(resourceDatabase, remarks_standInTheFile) {
    NewFile made;
    EXPECT_EQ(rdb_add_topic(made.db, made.file, "inks", "a remark beside the topic"), 1);
    EXPECT_EQ(rdb_add_item(made.db, "inks", "cyan", "1", "a remark beside the item"), 1);
    EXPECT_EQ(rdb_add_topic(made.db, made.file, "no remark", nullptr), 1);
    EXPECT_EQ(rdb_add_item(made.db, "no remark", "cyan", "1", nullptr), 1);
    EXPECT_EQ(made.flush(), 1);
    // They stay when the value changes.
    OpenDatabase later;
    later.push(made.path);
    later.modify("inks", "cyan", "2");
    EXPECT_EQ(later.flush(), 1);
    const std::string bytes = ScratchFolder::read(made.path);
    EXPECT_NE(bytes.find("a remark beside the topic"), std::string::npos);
    EXPECT_NE(bytes.find("a remark beside the item"), std::string::npos);
}

TEST(resourceDatabase, namesAndValues_holdAnyByteButNul) {
    std::string every;
    for (int byte = 1; byte < 256; ++byte)
        every += static_cast<char>(byte);
    const Lines texts = {every, "'; DROP TABLE item; --", "\"",       "%s%n",
                         "?1",  "a' OR '1'='1",           "\xFF\xFE", "\n"};
    NewFile made;
    for (const std::string& topic : texts) {
        ASSERT_EQ(made.addTopic(topic), 1);
        for (const std::string& item : texts)
            ASSERT_EQ(made.add(topic, item, item + topic), 1);
    }
    ASSERT_EQ(made.flush(), 1);
    OpenDatabase again;
    again.push(made.path);
    EXPECT_EQ(again.topics(), texts);
    for (const std::string& topic : texts) {
        EXPECT_EQ(again.items(topic), texts);
        for (const std::string& item : texts)
            EXPECT_EQ(again.value(topic, item), item + topic);
    }
    for (const std::string& topic : texts) {
        ASSERT_EQ(again.modify(topic, every, every), 1);
        ASSERT_EQ(rdb_remove_topic(again.db, again.file, topic.c_str()), 1);
    }
    ASSERT_EQ(again.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(made.path), IsEmpty());
}

TEST(resourceDatabase, longNamesAndValues_areKept) {
    const std::string name(100000, 'n');
    const std::string value(10000000, 'v');
    NewFile made;
    made.addTopic(name);
    made.add(name, name, value);
    EXPECT_EQ(made.flush(), 1);
    OpenDatabase again;
    again.push(made.path);
    EXPECT_EQ(again.value(name, name), value);
}

// Values.

TEST(resourceDatabase, value_isUntouchedWhenThereIsNone) {
    NewFile made;
    made.addTopic("inks");
    const char* value = "before";
    int number = 7;
    char buffer[] = "before";
    EXPECT_EQ(rdb_search(made.db, "inks", "cyan", &value), 0);
    EXPECT_EQ(rdb_search_int(made.db, "inks", "cyan", &number), 0);
    EXPECT_EQ(rdb_search_string(made.db, "inks", "cyan", buffer, 7), 0);
    EXPECT_STREQ(value, "before");
    EXPECT_EQ(number, 7);
    EXPECT_STREQ(buffer, "before");
    // Whoever only wants to know whether it is there.
    made.add("inks", "cyan", "1");
    EXPECT_EQ(rdb_search(made.db, "inks", "cyan", nullptr), 1);
    EXPECT_EQ(rdb_search_int(made.db, "inks", "cyan", nullptr), 1);
}

TEST(resourceDatabase, strings_areCopiedWithinTheBuffer) {
    NewFile made;
    made.addTopic("inks");
    made.add("inks", "cyan", "12345");
    char buffer[8];
    const auto copied = [&](int size) {
        std::memset(buffer, '#', sizeof buffer);
        return rdb_search_string(made.db, "inks", "cyan", buffer, size);
    };
    EXPECT_EQ(copied(8), 1);
    EXPECT_EQ(std::string(buffer, 8), std::string("12345\0##", 8));
    EXPECT_EQ(copied(6), 1);
    EXPECT_EQ(std::string(buffer, 8), std::string("12345\0##", 8));
    EXPECT_FAILS(copied(5), 18);
    EXPECT_EQ(std::string(buffer, 8), std::string("1234\0###", 8));
    EXPECT_FAILS(copied(1), 18);
    EXPECT_EQ(std::string(buffer, 8), std::string("\0#######", 8));
    for (const int size : {0, -1, INT_MIN}) {
        EXPECT_FAILS(copied(size), 18);
        EXPECT_EQ(std::string(buffer, 8), "########");
    }
    EXPECT_FAILS(rdb_search_string(made.db, "inks", "cyan", nullptr, 8), 18);
    made.add("inks", "none", "");
    EXPECT_EQ(rdb_search_string(made.db, "inks", "none", buffer, 1), 1);
    EXPECT_STREQ(buffer, "");
}

TEST(resourceDatabase, integers_areReadAsFarAsTheyGo) {
    NewFile made;
    made.addTopic("counts");
    const auto number = [&](const char* value) {
        if (made.add("counts", "n", value) == 0)
            made.modify("counts", "n", value);
        int found = -77;
        EXPECT_EQ(rdb_search_int(made.db, "counts", "n", &found), 1);
        return found;
    };
    EXPECT_EQ(number("0"), 0);
    EXPECT_EQ(number("-12"), -12);
    EXPECT_EQ(number(" +7 apples"), 7);
    EXPECT_EQ(number("3.9"), 3);
    EXPECT_EQ(number(""), 0);
    EXPECT_EQ(number("apples"), 0);
    EXPECT_EQ(number("0x10"), 0);
    EXPECT_EQ(number("2147483647"), INT_MAX);
    EXPECT_EQ(number("2147483648"), INT_MAX);
    EXPECT_EQ(number("-99999999999999999999"), INT_MIN);
}

// Failures and their codes.

TEST(resourceDatabase, nullDatabase_isCode4) {
    NewFile made;
    char buffer[8];
    EXPECT_FAILS(rdb_push_rfile(nullptr, made.path.c_str()), 4);
    EXPECT_FAILS(rdb_create_rfile(nullptr, made.folder.path("other").c_str()), 4);
    EXPECT_FAILS(rdb_search_topic(nullptr, "inks"), 4);
    EXPECT_FAILS(rdb_add_topic(nullptr, made.file, "inks", ""), 4);
    EXPECT_FAILS(rdb_remove_topic(nullptr, made.file, "inks"), 4);
    EXPECT_FAILS(rdb_search(nullptr, "inks", "cyan", nullptr), 4);
    EXPECT_FAILS(rdb_search_string(nullptr, "inks", "cyan", buffer, 8), 4);
    EXPECT_FAILS(rdb_search_int(nullptr, "inks", "cyan", nullptr), 4);
    EXPECT_FAILS(rdb_add_item(nullptr, "inks", "cyan", "1", ""), 4);
    EXPECT_FAILS(rdb_modify(nullptr, "inks", "cyan", "1"), 4);
    EXPECT_FAILS(rdb_posat_topic(nullptr, made.file, 0), 4);
    EXPECT_FAILS(rdb_posat_item(nullptr, "inks", 0), 4);
    EXPECT_FAILS(rdb_flush(nullptr), 4);
    rdb_close(nullptr);
    EXPECT_EQ(takenError(), 0);
    EXPECT_FALSE(fs::exists(made.folder.path("other")));
}

TEST(resourceDatabase, databaseWithoutFiles_isCode5) {
    NewFile made;
    OpenDatabase none;
    char buffer[8];
    EXPECT_FAILS(rdb_search_topic(none.db, "inks"), 5);
    EXPECT_FAILS(rdb_add_topic(none.db, made.file, "inks", ""), 5);
    EXPECT_FAILS(rdb_add_topic(none.db, nullptr, "inks", ""), 5);
    EXPECT_FAILS(rdb_remove_topic(none.db, made.file, "inks"), 5);
    EXPECT_FAILS(rdb_search(none.db, "inks", "cyan", nullptr), 5);
    EXPECT_FAILS(rdb_search_string(none.db, "inks", "cyan", buffer, 8), 5);
    EXPECT_FAILS(rdb_search_int(none.db, "inks", "cyan", nullptr), 5);
    EXPECT_FAILS(rdb_add_item(none.db, "inks", "cyan", "1", ""), 5);
    EXPECT_FAILS(rdb_modify(none.db, "inks", "cyan", "1"), 5);
    EXPECT_FAILS(rdb_posat_topic(none.db, made.file, 0), 5);
    EXPECT_FAILS(rdb_posat_item(none.db, "inks", 0), 5);
    EXPECT_FAILS(rdb_flush(none.db), 5);
}

TEST(resourceDatabase, missingOrForeignFileHandle_isCode6) {
    NewFile made, other;
    for (rdb_file* const file : {static_cast<rdb_file*>(nullptr), other.file}) {
        EXPECT_FAILS(rdb_add_topic(made.db, file, "inks", ""), 6);
        EXPECT_FAILS(rdb_remove_topic(made.db, file, "inks"), 6);
        EXPECT_FAILS(rdb_posat_topic(made.db, file, 0), 6);
    }
}

TEST(resourceDatabase, missingTopic_isCode15_whereOneIsRemoved19) {
    NewFile made;
    made.addTopic("inks");
    char buffer[8];
    for (const char* const topic : {"Inks", "ink", "inks ", "", static_cast<const char*>(nullptr)}) {
        EXPECT_FAILS(rdb_search_topic(made.db, topic), 15);
        EXPECT_FAILS(rdb_search(made.db, topic, "cyan", nullptr), 15);
        EXPECT_FAILS(rdb_search_string(made.db, topic, "cyan", buffer, 8), 15);
        EXPECT_FAILS(rdb_search_int(made.db, topic, "cyan", nullptr), 15);
        EXPECT_FAILS(rdb_add_item(made.db, topic, "cyan", "1", ""), 15);
        EXPECT_FAILS(rdb_modify(made.db, topic, "cyan", "1"), 15);
        EXPECT_FAILS(rdb_posat_item(made.db, topic, 0), 15);
        EXPECT_FAILS(rdb_remove_topic(made.db, made.file, topic), 19);
    }
    EXPECT_THAT(made.everything(), ElementsAre("inks"));
}

TEST(resourceDatabase, missingItem_isCode17) {
    NewFile made;
    made.addTopic("inks");
    made.add("inks", "cyan", "1");
    char buffer[8];
    for (const char* const item : {"Cyan", "", static_cast<const char*>(nullptr)}) {
        EXPECT_FAILS(rdb_search(made.db, "inks", item, nullptr), 17);
        EXPECT_FAILS(rdb_search_string(made.db, "inks", item, buffer, 8), 17);
        EXPECT_FAILS(rdb_search_int(made.db, "inks", item, nullptr), 17);
        EXPECT_FAILS(rdb_modify(made.db, "inks", item, "1"), 17);
    }
}

TEST(resourceDatabase, nullNamesAndValues_areNotAdded) {
    NewFile made;
    EXPECT_FAILS(rdb_add_topic(made.db, made.file, nullptr, ""), 7);
    made.addTopic("inks");
    made.add("inks", "cyan", "1");
    EXPECT_FAILS(rdb_add_item(made.db, "inks", nullptr, "1", ""), 8);
    EXPECT_FAILS(rdb_add_item(made.db, "inks", "magenta", nullptr, ""), 8);
    EXPECT_FAILS(rdb_modify(made.db, "inks", "cyan", nullptr), 8);
    EXPECT_THAT(made.everything(), ElementsAre("inks", "inks / cyan = 1"));
}

TEST(resourceDatabase, pastTheEnd_isCode13Or14_whereNothingIsAtAll3) {
    NewFile made;
    for (const int n : {0, 1, -1, INT_MAX, INT_MIN})
        EXPECT_FAILS(rdb_posat_topic(made.db, made.file, n), 3);
    made.addTopic("inks");
    for (const int n : {1, 2, -1, INT_MAX, INT_MIN})
        EXPECT_FAILS(rdb_posat_topic(made.db, made.file, n), 13);
    for (const int n : {0, 1, -1, INT_MAX, INT_MIN})
        EXPECT_FAILS(rdb_posat_item(made.db, "inks", n), 3);
    made.add("inks", "cyan", "1");
    for (const int n : {1, 2, -1, INT_MAX, INT_MIN})
        EXPECT_FAILS(rdb_posat_item(made.db, "inks", n), 14);
}

TEST(resourceDatabase, changesThatCannotBeWritten_areCode12AndAreKept) {
    NewFile made;
    made.addTopic("inks");
    made.flush();
    made.add("inks", "cyan", "1");
    const std::string aside = made.folder.path("aside");
    fs::rename(made.path, aside);
    EXPECT_FAILS(made.flush(), 12);
    EXPECT_FALSE(fs::exists(made.path));
    // Something else in its place stays as it is.
    made.folder.write("cache.rdb", "a text");
    EXPECT_FAILS(made.flush(), 12);
    EXPECT_EQ(ScratchFolder::read(made.path), "a text");
    EXPECT_EQ(made.value("inks", "cyan"), "1");
    fs::rename(aside, made.path);
    EXPECT_THAT(contentOfResourceFile(made.path), ElementsAre("inks"));
    EXPECT_EQ(made.flush(), 1);
    EXPECT_THAT(contentOfResourceFile(made.path), ElementsAre("inks", "inks / cyan = 1"));
}

TEST(resourceDatabase, flushWithoutChanges_doesNotTouchTheFile) {
    NewFile made;
    made.addTopic("inks");
    EXPECT_EQ(made.flush(), 1);
    const std::string bytes = ScratchFolder::read(made.path);
    EXPECT_EQ(made.flush(), 1);
    EXPECT_EQ(ScratchFolder::read(made.path), bytes);
    // A topic that came and went is no change.
    made.addTopic("for a moment");
    rdb_remove_topic(made.db, made.file, "for a moment");
    EXPECT_EQ(made.flush(), 1);
    EXPECT_EQ(ScratchFolder::read(made.path), bytes);
    fs::remove(made.path);
    EXPECT_EQ(made.flush(), 1);
}

TEST(resourceDatabase, closing_losesWhatWasNotFlushed) {
    NewFile made;
    made.addTopic("inks");
    made.add("inks", "cyan", "1");
    made.flush();
    {
        OpenDatabase other;
        other.push(made.path);
        other.modify("inks", "cyan", "2");
        other.add("inks", "magenta", "1");
        other.addTopic("papers");
        rdb_remove_topic(other.db, other.file, "inks");
    }
    EXPECT_THAT(contentOfResourceFile(made.path), ElementsAre("inks", "inks / cyan = 1"));
}

} // namespace
} // namespace qxcms::tests
