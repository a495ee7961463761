// The cache file when the resource database or the memory fails: every message, and that nothing else is
// said.
#include <string>

#include <gmock/gmock.h>

#include "platform/resource_database.h"
#include "support/tcachefile.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/failing_platform/substitute_resource_database.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const std::string kReporter = "qxcms_rdb_err:47: ";

// Longer than what a std::string holds without memory.
const std::string kTopic = "a topic with a name of some length";
const std::string kStoredTopic = "a%20topic%20with%20a%20name%20of%20some%20length";
const std::string kItem = "an item with a name of some length";
const std::string kText = "a value text with a length of some characters";
const std::string kStoredText = "a%20value%20text%20with%20a%20length%20of%20some%20characters";

// Fills a file without a trace in the count of the memory.
void fill(const std::string& path, const SubstituteDatabase::Topics& topics) {
    const AllocationTruce truce;
    database().files[path] = topics;
}

using cacheFileFaults = OnSubstituteDatabase;

TEST_F(cacheFileFaults, databaseThatCannotBeOpened_isStatus1) {
    database().refusesToOpen = true;
    database().files["d/f"] = {};
    EXPECT_EQ(TCacheFile("f", "d/").GetStatus(), 1);
    EXPECT_EQ(TCacheFile("d/f", 1).GetStatus(), 1);
    EXPECT_THAT(platform().errors,
                ElementsAre("tcachefile:0: Cannot Create RDB", "tcachefile:0: Cannot Create RDB"));
    EXPECT_THAT(database().paths, IsEmpty());
}

TEST_F(cacheFileFaults, fileThatCannotBePushed_isStatus3AndReportedWithItsPath) {
    database().files["d/f"] = {};
    database().refusesToPush = true;
    EXPECT_EQ(TCacheFile("f", "d/").GetStatus(), 3);
    EXPECT_EQ(TCacheFile("d/f", 0).GetStatus(), 3);
    EXPECT_THAT(database().paths, ElementsAre("push d/f", "push d/f"));
    EXPECT_THAT(platform().errors, ElementsAre("tcachefile:0: Unable to push file d/f",
                                               "tcachefile:0: Unable to push file d/f"));
}

TEST_F(cacheFileFaults, fileThatCannotBeCreatedEither_isReportedAsNotPushed) {
    database().refusesToCreate = true;
    EXPECT_EQ(TCacheFile("d/f", 1).GetStatus(), 3);
    EXPECT_THAT(database().paths, ElementsAre("push d/f", "create d/f", "push d/f"));
    EXPECT_EQ(rdb_err, 2) << "the caller may ask";
    EXPECT_THAT(platform().errors, ElementsAre("tcachefile:0: Unable to push file d/f"));
}

TEST_F(cacheFileFaults, fileThatIsCreated_isNotReportedAsNotPushed) {
    EXPECT_EQ(TCacheFile("d/f", 1).GetStatus(), 0);
    EXPECT_THAT(database().paths, ElementsAre("push d/f", "create d/f"));
    EXPECT_THAT(platform().errors, IsEmpty());
}

TEST_F(cacheFileFaults, fileThatIsPushed_isNotCreated) {
    database().files["d/f"] = {};
    EXPECT_EQ(TCacheFile("d/f", 1).GetStatus(), 0);
    EXPECT_THAT(database().paths, ElementsAre("push d/f"));
}

TEST_F(cacheFileFaults, topicThatCannotBeAdded_isReportedByItsOwnName) {
    database().refusesTopics = true;
    TCacheFile cache("f", 1);
    EXPECT_EQ(cache.AddTopic("a b", 1), -1);
    EXPECT_THAT(
        platform().errors,
        ElementsAre(kReporter + "Unable to add topic : a b to the data base : Failed to add a topic"));
    EXPECT_EQ(rdb_err, 0);
}

TEST_F(cacheFileFaults, topicThatCannotBeRemoved_isReportedAsToTheDataBase) {
    database().files["f"] = {{"a%20b", {}}};
    database().refusesRemoval = true;
    TCacheFile cache("f", 0);
    EXPECT_EQ(cache.RemoveTopic("a b", 1), -1);
    EXPECT_THAT(
        platform().errors,
        ElementsAre(kReporter + "Unable to remove topic : a b to the data base : Failed to remove an item"));
}

TEST_F(cacheFileFaults, itemThatCannotBeAdded_isReportedWithItsTopic) {
    database().files["f"] = {{"a%20b", {}}};
    database().refusesItems = true;
    TCacheFile cache("f", 0);
    EXPECT_EQ(cache.AddItem("a b", "c d", "x", 1, 1), -1);
    EXPECT_EQ(cache.AddItem("a b", "c d", 1, 1), -1);
    EXPECT_EQ(cache.AddItem("a b", "c d", 1.0, 1), -1);
    EXPECT_EQ(cache.ChangeIntItem("a b", "c d", 1, 0, 9, 1), -1);
    const std::string report = kReporter + "Unable to add item c d to topic a b : Failed to add an item";
    EXPECT_THAT(platform().errors, ElementsAre(report, report, report, report));
}

TEST_F(cacheFileFaults, itemThatCannotBeModified_isReportedWithItsTopic) {
    database().files["f"] = {{"a%20b", {{"c d", "old"}}}};
    database().refusesChanges = true;
    TCacheFile cache("f", 0);
    EXPECT_EQ(cache.AddItem("a b", "c d", "x", 1, 1), -1);
    EXPECT_THAT(platform().errors,
                ElementsAre(kReporter + "Unable to modify item c d of topic a b : Failed to add an item"));
    EXPECT_THAT(database().files["f"][0].second, ElementsAre(Pair("c d", "old")));
}

TEST_F(cacheFileFaults, valueThatCannotBeRead_isNullAndReportedWithTwoBlanks) {
    database().files["f"] = {{"t", {{"i", "1"}, {"j", "2"}}}};
    database().hiddenItem = "i";
    TCacheFile cache("f", 0);
    const char* value = "old";
    EXPECT_STREQ(cache.ScanItems("t", &value, 1), "i");
    EXPECT_EQ(value, nullptr);
    EXPECT_THAT(platform().errors,
                ElementsAre(kReporter + "Cannot get item Value for item  i : Item not found in database"));
    EXPECT_STREQ(cache.ScanItems("t", &value, 0), "j");
    EXPECT_STREQ(value, "2");
}

TEST_F(cacheFileFaults, flushThatFails_isMinusOneInSilence) {
    TCacheFile cache("f", 1);
    ASSERT_EQ(cache.Save(), 0);
    database().refusesToFlush = true;
    EXPECT_EQ(cache.Save(), -1);
    EXPECT_THAT(platform().errors, IsEmpty());
    EXPECT_EQ(rdb_err, 12) << "the caller may ask";
}

TEST_F(cacheFileFaults, copyOfATopicThatCannotBeAdded_isReported) {
    database().files["from"] = {{"a b", {{"i", "1"}}}};
    database().refusesTopics = true;
    const TCacheFile from("from", 0);
    TCacheFile to("to", 1);
    EXPECT_EQ(to.CopyTopic(from, "a b"), -1);
    EXPECT_THAT(
        platform().errors,
        ElementsAre(kReporter + "Unable to add topic : a b to the data base : Failed to add a topic"));
}

TEST_F(cacheFileFaults, copyOfAnItemThatCannotBeAdded_endsTheCopy) {
    database().files["from"] = {{"t", {{"i", "1"}, {"j", "2"}}}};
    database().refusesItems = true;
    const TCacheFile from("from", 0);
    TCacheFile to("to", 1);
    EXPECT_EQ(to.CopyTopic(from, "t"), -1);
    EXPECT_THAT(platform().errors,
                ElementsAre(kReporter + "Unable to add item i to topic t : Failed to add an item"));
}

TEST_F(cacheFileFaults, copyOfAValueThatCannotBeRead_endsTheCopy) {
    database().files["from"] = {{"t", {{"i", "1"}, {"j", "2"}, {"k", "3"}}}};
    database().hiddenItem = "j";
    const TCacheFile from("from", 0);
    TCacheFile to("to", 1);
    EXPECT_EQ(to.CopyTopic(from, "t"), -1);
    EXPECT_THAT(platform().errors,
                ElementsAre(kReporter + "Cannot get item Value for item  j : Item not found in database"));
    EXPECT_THAT(database().files["to"], ElementsAre(Pair("t", ElementsAre(Pair("i", "1")))));
}

// Changes spoil what the database handed out before.
TEST_F(cacheFileFaults, copyWithinOneDatabase_usesNothingThatIsGone) {
    database().files["f"] = {{"t", {{"i", "1"}, {"j", "2"}}}};
    TCacheFile cache("f", 0);
    EXPECT_EQ(cache.CopyTopic(cache, "t"), 0);
    EXPECT_THAT(database().files["f"], ElementsAre(Pair("t", ElementsAre(Pair("i", "1"), Pair("j", "2")))));
}

TEST_F(cacheFileFaults, numbersAreRead_with1024Characters) {
    database().files["f"] = {{"t", {{"i", "1"}}}};
    TCacheFile cache("f", 0);
    int whole = 0;
    double real = 0.0;
    EXPECT_EQ(cache.Search("t", "i", &whole, 0, 0, 0), 0);
    EXPECT_EQ(cache.Search("t", "i", &real, 0, 0, 0), 0);
    EXPECT_THAT(database().stringSizes, ElementsAre(1024, 1024));
}

// Every operation of an object without a file fails as the database says why.
void expectNothingWorks(TCacheFile& cache, const std::string& why) {
    int whole = 0;
    double real = 0.0;
    char text[8];
    const char* value = "old";
    TCacheFile source("source", 0);
    EXPECT_EQ(cache.Search("t", "i", &whole, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "i", &real, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "i", text, 8, 0, 0), -1);
    rdb_err = 0;
    EXPECT_EQ(cache.ScanTopics(nullptr, 1), nullptr);
    EXPECT_NE(rdb_err, 0);
    rdb_err = 0;
    EXPECT_EQ(cache.ScanItems("t", &value, 1), nullptr);
    EXPECT_NE(rdb_err, 0);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(cache.Save(), -1);
    EXPECT_EQ(source.CopyTopic(cache, "t"), -1);
    EXPECT_THAT(platform().errors, IsEmpty());

    EXPECT_EQ(cache.AddTopic("t", 0), -1);
    EXPECT_EQ(cache.RemoveTopic("t", 0), -1);
    EXPECT_EQ(cache.CopyTopic(source, "t"), -1);
    const std::string itemWhy = why == "No resource file handle" ? "There are no files in rdb" : why;
    EXPECT_EQ(cache.AddItem("t", "i", "x", 0, 0), -1);
    EXPECT_EQ(cache.ChangeIntItem("t", "i", 1, 0, 9, 0), -1);
    EXPECT_THAT(platform().errors,
                ElementsAre(kReporter + "Unable to add topic : t to the data base : " + why,
                            kReporter + "Unable to remove topic : t to the data base : " + why,
                            kReporter + "Unable to add topic : t to the data base : " + why,
                            kReporter + "Unable to add item i to topic t : " + itemWhy,
                            kReporter + "Unable to add item i to topic t : " + itemWhy));
}

TEST_F(cacheFileFaults, withoutADatabase_nothingWorks) {
    database().files["source"] = {{"t", {{"i", "1"}}}};
    database().refusesToOpen = true;
    TCacheFile cache("f", 1);
    database().refusesToOpen = false;
    platform().errors.clear();
    expectNothingWorks(cache, "A null pointer as rdb pointer");
}

TEST_F(cacheFileFaults, withoutAFile_nothingWorks) {
    database().files["source"] = {{"t", {{"i", "1"}}}};
    TCacheFile cache("f", 0);
    platform().errors.clear();
    expectNothingWorks(cache, "No resource file handle");
}

TEST_F(cacheFileFaults, construction_withoutMemory_neverOpensAnotherFile) {
    database().files["the directory of the file/the name of the file"] = {};
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCacheFile cache("the name of the file", "the directory of the file/");
        faults.disarm();
        EXPECT_EQ(cache.GetStatus(), faults.happened() ? 3 : 0);
    });
    EXPECT_THAT(database().paths, Each("push the directory of the file/the name of the file"));
    EXPECT_THAT(platform().errors, Each("tcachefile:0: Unable to push file"));
}

TEST_F(cacheFileFaults, constructionFromAPath_withoutMemory_makesNoFile) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        database().files.clear();
        faults.arm();
        const TCacheFile cache("the path of a file that is not there yet", 1);
        faults.disarm();
        EXPECT_EQ(cache.GetStatus(), faults.happened() ? 3 : 0);
    });
}

TEST_F(cacheFileFaults, topics_withoutMemory) {
    TCacheFile cache("f", 1);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        fill("f", {});
        faults.arm();
        const int added = cache.AddTopic(kTopic.c_str(), 1);
        faults.disarm();
        EXPECT_EQ(added, faults.happened() ? -1 : 0);
        EXPECT_EQ(database().files["f"].size(), faults.happened() ? 0u : 1u);
    });
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        fill("f", {{kStoredTopic, {}}});
        faults.arm();
        const int removed = cache.RemoveTopic(kTopic.c_str(), 1);
        faults.disarm();
        EXPECT_EQ(removed, faults.happened() ? -1 : 0);
        EXPECT_EQ(database().files["f"].size(), faults.happened() ? 1u : 0u);
    });
    EXPECT_THAT(platform().errors, IsEmpty());
}

TEST_F(cacheFileFaults, items_withoutMemory_areAddedWholeOrNotAtAll) {
    TCacheFile cache("f", 1);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        fill("f", {{kStoredTopic, {}}});
        faults.arm();
        const int added = cache.AddItem(kTopic.c_str(), kItem.c_str(), kText.c_str(), 1, 1);
        faults.disarm();
        EXPECT_EQ(added, faults.happened() ? -1 : 0);
        if (faults.happened()) {
            EXPECT_THAT(database().files["f"][0].second, IsEmpty());
        } else {
            EXPECT_THAT(database().files["f"][0].second, ElementsAre(Pair(kItem, kStoredText)));
        }
    });
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        fill("f", {{kStoredTopic, {{kItem, "1"}}}});
        faults.arm();
        const int whole = cache.AddItem(kTopic.c_str(), kItem.c_str(), 7, 1);
        const int real = cache.AddItem(kTopic.c_str(), kItem.c_str(), 1e300, 1);
        const int changed = cache.ChangeIntItem(kTopic.c_str(), kItem.c_str(), 2, 0, 9, 1);
        faults.disarm();
        EXPECT_EQ(whole == 0 && real == 0 && changed == 0, !faults.happened());
    });
    EXPECT_THAT(platform().errors, IsEmpty());
}

TEST_F(cacheFileFaults, searches_withoutMemory_findNothing) {
    database().files["f"] = {{kStoredTopic, {{kItem, "7"}, {"text", kStoredText}}}};
    TCacheFile cache("f", 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        int value = 77;
        faults.arm();
        const int found = cache.Search(kTopic.c_str(), kItem.c_str(), &value, 0, 1, 0);
        faults.disarm();
        EXPECT_EQ(found, faults.happened() ? -1 : 0);
        EXPECT_EQ(value, faults.happened() ? 77 : 7);
    });
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        double value = 77.0;
        faults.arm();
        const int found = cache.Search(kTopic.c_str(), kItem.c_str(), &value, 0, 1, 0);
        faults.disarm();
        EXPECT_EQ(found, faults.happened() ? -1 : 0);
        EXPECT_EQ(value, faults.happened() ? 77.0 : 7.0);
    });
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        char text[100] = "kept";
        faults.arm();
        const int found = cache.Search(kTopic.c_str(), "text", text, sizeof text, 1, 1);
        faults.disarm();
        EXPECT_EQ(found, faults.happened() ? -1 : 0);
        EXPECT_EQ(text, faults.happened() ? "kept" : kText);
    });
    EXPECT_THAT(platform().errors, IsEmpty());
}

TEST_F(cacheFileFaults, copies_needNoMemoryButTheDatabases) {
    database().files["from"] = {{kStoredTopic, {{kItem, kText}}}};
    const TCacheFile from("from", 0);
    TCacheFile to("to", 1);
    expectNoAllocation([&] { EXPECT_EQ(to.CopyTopic(from, kStoredTopic.c_str()), 0); });
    EXPECT_THAT(database().files["to"], ElementsAre(Pair(kStoredTopic, ElementsAre(Pair(kItem, kText)))));
}

TEST_F(cacheFileFaults, failures_withoutMemoryForTheMessage_areFailuresStill) {
    fill("from", {{kTopic, {{kItem, kText}}}});
    const TCacheFile from("from", 0);
    TCacheFile cache("f", 1);
    database().refusesTopics = true;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const int copied = cache.CopyTopic(from, kTopic.c_str());
        const int added = cache.AddTopic(kTopic.c_str(), 0);
        const int stored = cache.AddItem(kTopic.c_str(), kItem.c_str(), "1", 0, 0);
        faults.disarm();
        EXPECT_EQ(copied, -1);
        EXPECT_EQ(added, -1);
        EXPECT_EQ(stored, -1);
    });
}

TEST_F(cacheFileFaults, joinedMessage_withoutMemory_isTheFirstText) {
    TCacheFile cache("f", 1);
    const std::string whole = "tcachefile:0: a first text of some length a second text of some length";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        platform().errors.clear();
        faults.arm();
        cache.SetErrMsg("a first text of some length", "a second text of some length", nullptr);
        faults.disarm();
        EXPECT_THAT(platform().errors,
                    ElementsAre(faults.happened() ? "tcachefile:0: a first text of some length" : whole));
    });
}

TEST_F(cacheFileFaults, scans_needNoMemory) {
    database().files["f"] = {{kTopic, {{kItem, kText}}}};
    TCacheFile cache("f", 0);
    expectNoAllocation([&] {
        const char* value = nullptr;
        EXPECT_STREQ(cache.ScanTopics("a topic", 1), " with a name of some length");
        EXPECT_STREQ(cache.ScanItems(kTopic.c_str(), &value, 1), kItem.c_str());
        EXPECT_STREQ(value, kText.c_str());
        EXPECT_EQ(cache.Save(), 0);
    });
}

} // namespace
} // namespace qxcms::tests
