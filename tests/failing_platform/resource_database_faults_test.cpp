// The resource database when the memory fails, its own or that of SQLite.
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/resource_database.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/support/open_database.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

std::ptrdiff_t filesIn(const ScratchFolder& folder) {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
}

constexpr const char* kTopic = "a name that is longer than what a string holds by itself";
constexpr const char* kItem = "the name of an item that is longer than what a string holds";
constexpr const char* kValue = "a value that is longer than what a string holds by itself";
constexpr const char* kOther = "another value that is longer than what a string holds by itself";

std::string line(const char* value) {
    return std::string(kTopic) + " / " + kItem + " = " + value;
}

// A folder with a file of one topic and one item. SQLite has made what it keeps for good.
class resourceMemory : public testing::Test {
protected:
    void SetUp() override {
        OpenDatabase database;
        ASSERT_NE(database.create(path), nullptr);
        database.addTopic(kTopic);
        database.add(kTopic, kItem, kValue);
        ASSERT_EQ(database.flush(), 1);
    }

    // Puts a copy in the place of a file. One that is cut off and written anew would have to wait for the
    // disk.
    void restore(const std::string& from, const std::string& to) {
        fs::remove(to);
        fs::copy_file(from, to);
    }

    // True for one failure of eight: what follows takes its time.
    bool isChosen() { return failures++ % 8 == 0; }

    ScratchFolder folder;
    ScratchFolder aside;
    std::string path = folder.path("file");

private:
    int failures = 0;
};

TEST_F(resourceMemory, databaseWithoutMemory_isNullAndCode4) {
    forEveryFailingAllocation([](AllocationFaults& faults) {
        faults.arm();
        rdb_db* const db = rdb_open();
        faults.disarm();
        EXPECT_EQ(db == nullptr, faults.happened());
        EXPECT_EQ(takenError(), faults.happened() ? 4 : 0);
        rdb_close(db);
    });
}

TEST_F(resourceMemory, pushWithoutMemory_isCode2AndIsDoneLater) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        OpenDatabase database;
        faults.arm();
        const bool pushed = database.push(path) != nullptr;
        faults.disarm();
        // SQLite does without what it wants for speed alone.
        if (!pushed) {
            EXPECT_TRUE(faults.happened());
            EXPECT_EQ(takenError(), 2);
            EXPECT_EQ(rdb_search_topic(database.db, kTopic), 0);
            EXPECT_EQ(takenError(), 5);
            EXPECT_NE(database.push(path), nullptr);
        }
        EXPECT_THAT(database.everything(), ElementsAre(kTopic, line(kValue)));
    });
}

TEST_F(resourceMemory, creationWithoutMemory_isCode2AndLeavesNothing) {
    const std::string other = folder.path("other");
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        OpenDatabase database;
        faults.arm();
        const bool created = rdb_create_rfile(database.db, other.c_str()) != nullptr;
        faults.disarm();
        if (!created) {
            EXPECT_TRUE(faults.happened());
            EXPECT_EQ(takenError(), 2);
            EXPECT_EQ(filesIn(folder), 1);
            if (!isChosen())
                return;
            EXPECT_NE(database.create(other), nullptr);
        }
        EXPECT_EQ(filesIn(folder), 2);
        EXPECT_THAT(contentOfResourceFile(other), IsEmpty());
        fs::remove(other);
    });
}

TEST_F(resourceMemory, topicWithoutMemory_isCode9Or7AndIsAddedLater) {
    bool seen[21] = {};
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        OpenDatabase database;
        database.push(path);
        const std::string name = std::string("new: ") + kTopic;
        faults.arm();
        const int added = rdb_add_topic(database.db, database.file, name.c_str(), kOther);
        faults.disarm();
        EXPECT_EQ(added == 0, faults.happened());
        if (added == 0) {
            const int error = takenError();
            ASSERT_THAT(error, AnyOf(9, 7));
            seen[error] = true;
            EXPECT_THAT(database.topics(), ElementsAre(kTopic));
            EXPECT_EQ(database.addTopic(name), 1);
        }
        EXPECT_THAT(database.topics(), ElementsAre(kTopic, name));
    });
    EXPECT_TRUE(seen[9] && seen[7]);
}

TEST_F(resourceMemory, itemWithoutMemory_isCode10Or11AndIsAddedLater) {
    bool seen[21] = {};
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        OpenDatabase database;
        database.push(path);
        const std::string name = std::string("new: ") + kItem;
        faults.arm();
        const int added = rdb_add_item(database.db, kTopic, name.c_str(), kValue, kOther);
        faults.disarm();
        EXPECT_EQ(added == 0, faults.happened());
        if (added == 0) {
            const int error = takenError();
            ASSERT_THAT(error, AnyOf(10, 11));
            seen[error] = true;
            EXPECT_THAT(database.items(kTopic), ElementsAre(kItem));
            EXPECT_EQ(database.add(kTopic, name, kValue), 1);
        }
        EXPECT_THAT(database.items(kTopic), ElementsAre(kItem, name));
    });
    EXPECT_TRUE(seen[10] && seen[11]);
}

TEST_F(resourceMemory, valueWithoutMemory_isCode8AndTheOldOneStays) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        OpenDatabase database;
        database.push(path);
        faults.arm();
        const int modified = rdb_modify(database.db, kTopic, kItem, kOther);
        faults.disarm();
        EXPECT_EQ(modified == 0, faults.happened());
        EXPECT_EQ(takenError(), modified == 0 ? 8 : 0);
        EXPECT_EQ(database.value(kTopic, kItem), modified == 0 ? kValue : kOther);
    });
}

TEST_F(resourceMemory, removalWithoutMemory_isCode20AndTheTopicStays) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        OpenDatabase database;
        database.push(path);
        faults.arm();
        const int removed = rdb_remove_topic(database.db, database.file, kTopic);
        faults.disarm();
        EXPECT_EQ(removed == 0, faults.happened());
        EXPECT_EQ(takenError(), removed == 0 ? 20 : 0);
        EXPECT_EQ(database.topics().size(), removed == 0 ? 1u : 0u);
    });
}

TEST_F(resourceMemory, flushWithoutMemory_isCode12AndIsDoneLater) {
    const std::string added = std::string("new: ") + kTopic;
    const std::string before = aside.path("before");
    restore(path, before);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        restore(before, path);
        OpenDatabase database;
        database.push(path);
        database.modify(kTopic, kItem, kOther);
        database.addTopic(added);
        faults.arm();
        const int flushed = database.flush();
        faults.disarm();
        const auto after = ElementsAre(kTopic, line(kOther), added);
        if (flushed == 0) {
            EXPECT_TRUE(faults.happened());
            EXPECT_EQ(takenError(), 12);
            EXPECT_THAT(contentOfResourceFile(path), ElementsAre(kTopic, line(kValue)));
            if (!isChosen())
                return;
            EXPECT_EQ(database.flush(), 1);
        }
        EXPECT_THAT(contentOfResourceFile(path), after);
        EXPECT_THAT(database.everything(), after);
        EXPECT_EQ(filesIn(folder), 1);
    });
}

// The same where others have written meanwhile, so that the content is read again.
TEST_F(resourceMemory, flushWithoutMemory_afterOthersWrote_isCode12AndIsDoneLater) {
    const std::string added = std::string("new: ") + kTopic;
    const std::string before = aside.path("before");
    const std::string after = aside.path("after");
    restore(path, before);
    restore(path, after);
    {
        OpenDatabase other;
        other.push(after);
        other.addTopic(added);
        ASSERT_EQ(other.flush(), 1);
    }
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        restore(before, path);
        OpenDatabase database;
        database.push(path);
        rdb_remove_topic(database.db, database.file, kTopic);
        restore(after, path);
        faults.arm();
        const int flushed = database.flush();
        faults.disarm();
        if (flushed == 0) {
            EXPECT_TRUE(faults.happened());
            EXPECT_EQ(takenError(), 12);
            EXPECT_THAT(contentOfResourceFile(path), ElementsAre(kTopic, line(kValue), added));
            EXPECT_THAT(database.everything(), IsEmpty());
            if (!isChosen())
                return;
            EXPECT_EQ(database.flush(), 1);
        }
        EXPECT_THAT(contentOfResourceFile(path), ElementsAre(added));
        EXPECT_THAT(database.everything(), ElementsAre(added));
    });
}

TEST_F(resourceMemory, lookingAndWalking_needNoMemory) {
    OpenDatabase database;
    database.push(path);
    char buffer[8];
    int number = 0;
    const char* value = nullptr;
    expectNoAllocation([&] {
        EXPECT_EQ(rdb_search_topic(database.db, kTopic), 1);
        EXPECT_EQ(rdb_search(database.db, kTopic, kItem, &value), 1);
        EXPECT_EQ(rdb_search_int(database.db, kTopic, kItem, &number), 1);
        EXPECT_EQ(rdb_search_string(database.db, kTopic, kItem, buffer, 8), 0);
        EXPECT_STREQ(rdb_posat_topic(database.db, database.file, 0), kTopic);
        EXPECT_STREQ(rdb_posat_item(database.db, kTopic, 0), kItem);
        EXPECT_EQ(rdb_posat_item(database.db, kTopic, 1), nullptr);
        EXPECT_EQ(rdb_flush(database.db), 1);
    });
}

} // namespace
} // namespace qxcms::tests
