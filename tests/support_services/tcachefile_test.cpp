// The cache file on the bundled resource database: what is stored and found, under which names, in which
// order.
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "platform/resource_database.h"
#include "support/file_name_escaping.h"
#include "support/tcachefile.h"
#include "tests/support/reports.h"
#include "tests/support/resource_files.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

// The text of an item; "(none)" where there is no such item.
std::string textOf(TCacheFile& cache, const char* topic, const char* item, int encodeTopic = 0,
                   int decodeValue = 0) {
    char text[4096];
    if (cache.Search(topic, item, text, sizeof text, encodeTopic, decodeValue) != 0)
        return "(none)";
    return text;
}

std::vector<std::string> topicsOf(TCacheFile& cache, const char* filter = nullptr) {
    std::vector<std::string> topics;
    cache.ScanTopicsInit();
    while (const char* const topic = cache.ScanTopics(filter, 0))
        topics.emplace_back(topic);
    return topics;
}

std::vector<std::pair<std::string, std::string>> itemsOf(TCacheFile& cache, const char* topic) {
    std::vector<std::pair<std::string, std::string>> items;
    cache.ScanItemsInit();
    const char* value = nullptr;
    while (const char* const item = cache.ScanItems(topic, &value, 0))
        items.emplace_back(item, value);
    return items;
}

// A new cache file with the topic "t".
class cacheFile : public testing::Test {
protected:
    cacheFile() : path(scratch.path("results")), cache(path.c_str(), 1) {}
    void SetUp() override {
        ASSERT_EQ(cache.GetStatus(), 0);
        ASSERT_EQ(cache.AddTopic("t", 0), 0);
        ASSERT_THAT(reports.errors, IsEmpty());
    }

    ReportCollector reports;
    ScratchFolder scratch;
    std::string path;
    TCacheFile cache;
};

TEST_F(cacheFile, savedFile_isFoundByAPath) {
    ASSERT_EQ(cache.AddItem("t", "i", "text", 0, 0), 0);
    ASSERT_EQ(cache.Save(), 0);
    TCacheFile again(path.c_str(), 0);
    EXPECT_EQ(again.GetStatus(), 0);
    EXPECT_EQ(textOf(again, "t", "i"), "text");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, directoryAndName_areJoinedAsTheyStand) {
    ASSERT_EQ(cache.Save(), 0);
    const std::string folder = scratch.path();
    EXPECT_EQ(TCacheFile("results", (folder + "/").c_str()).GetStatus(), 0);
    EXPECT_EQ(TCacheFile("ults", (folder + "/res").c_str()).GetStatus(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_EQ(TCacheFile("results", folder.c_str()).GetStatus(), 3);
    EXPECT_THAT(reports.errors,
                ElementsAre(Report{"Unable to push file " + folder + "results", "tcachefile", 0}));
}

TEST_F(cacheFile, nameWithoutADirectory_isThePath) {
    ASSERT_EQ(cache.Save(), 0);
    EXPECT_EQ(TCacheFile(path.c_str(), nullptr).GetStatus(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, missingFile_isNotMadeUnasked) {
    const std::string missing = scratch.path("missing");
    EXPECT_EQ(TCacheFile(missing.c_str(), 0).GetStatus(), 3);
    EXPECT_EQ(TCacheFile("missing", (scratch.path() + "/").c_str()).GetStatus(), 3);
    const Report report = {"Unable to push file " + missing, "tcachefile", 0};
    EXPECT_THAT(reports.errors, ElementsAre(report, report));
}

TEST_F(cacheFile, noName_isAFileThatCannotBePushed) {
    EXPECT_EQ(TCacheFile(nullptr, scratch.path().c_str()).GetStatus(), 3);
    EXPECT_EQ(TCacheFile(nullptr, 1).GetStatus(), 3);
    const Report report = {"Unable to push file", "tcachefile", 0};
    EXPECT_THAT(reports.errors, ElementsAre(report, report));
}

TEST_F(cacheFile, fileThatIsThere_isOpenedThoughCreatingWasAllowed) {
    ASSERT_EQ(cache.Save(), 0);
    TCacheFile again(path.c_str(), 1);
    EXPECT_EQ(again.GetStatus(), 0);
    EXPECT_THAT(topicsOf(again), ElementsAre("t"));
}

// Of two programs that start together one makes the file, and the other uses it.
TEST_F(cacheFile, missingFileThatTwoProcessesMake_servesBoth) {
    for (int run = 0; run < 20; ++run) {
        const std::string missing = scratch.path("missing " + std::to_string(run));
        SharedMemory shared;
        const auto construct = [&](int number) {
            ++shared->ready;
            waitFor([&] { return shared->go == 1; });
            shared->answers[number] = TCacheFile(missing.c_str(), 1).GetStatus() == 0 ? 1 : 2;
        };
        Child first([&] { construct(0); });
        Child second([&] { construct(1); });
        waitFor([&] { return shared->ready == 2; });
        shared->go = 1;
        first.end();
        second.end();
        ASSERT_EQ(shared->answers[0], 1);
        ASSERT_EQ(shared->answers[1], 1);
    }
}

TEST_F(cacheFile, goodRun_leavesNoError) {
    rdb_err = 0;
    TCacheFile made(scratch.path("made").c_str(), 1);
    EXPECT_EQ(rdb_err, 0) << "made";
    EXPECT_THAT(topicsOf(made), IsEmpty());
    EXPECT_EQ(rdb_err, 0) << "no topics";
    ASSERT_EQ(made.AddTopic("a", 0), 0);
    EXPECT_EQ(rdb_err, 0) << "new topic";
    EXPECT_THAT(itemsOf(made, "a"), IsEmpty());
    EXPECT_EQ(rdb_err, 0) << "no items";
    ASSERT_EQ(cache.CopyTopic(made, "a"), 0);
    EXPECT_EQ(rdb_err, 0) << "copied without items";
    ASSERT_EQ(made.AddItem("a", "i", "x", 0, 0), 0);
    EXPECT_EQ(rdb_err, 0) << "new item";
    ASSERT_EQ(made.ChangeIntItem("a", "n", 1, 0, 9, 0), 0);
    EXPECT_EQ(rdb_err, 0) << "new number";
    EXPECT_THAT(topicsOf(made), SizeIs(1));
    EXPECT_EQ(rdb_err, 0) << "end of the topics";
    EXPECT_THAT(itemsOf(made, "a"), SizeIs(2));
    EXPECT_EQ(rdb_err, 0) << "end of the items";
    ASSERT_EQ(cache.CopyTopic(made, "a"), 0);
    EXPECT_EQ(rdb_err, 0) << "copied";
    ASSERT_EQ(made.Save(), 0);
    EXPECT_EQ(rdb_err, 0) << "saved";
}

// An error that somebody else has not dealt with yet is not this one's.
TEST_F(cacheFile, goodRun_leavesTheErrorOfAnother) {
    rdb_err = 12;
    EXPECT_EQ(TCacheFile(scratch.path("made").c_str(), 1).GetStatus(), 0);
    EXPECT_EQ(cache.AddTopic("u", 0), 0);
    EXPECT_EQ(cache.AddItem("u", "i", "x", 0, 0), 0);
    EXPECT_THAT(topicsOf(cache), ElementsAre("t", "u"));
    EXPECT_THAT(itemsOf(cache, "u"), SizeIs(1));
    EXPECT_EQ(rdb_err, 12);
    rdb_err = 0;
}

TEST_F(cacheFile, fileOfAnotherKind_isNeitherOpenedNorWrittenOver) {
    const std::string foreign = scratch.write("notes", "not a resource file\n");
    EXPECT_EQ(TCacheFile(foreign.c_str(), 1).GetStatus(), 3);
    EXPECT_EQ(ScratchFolder::read(foreign), "not a resource file\n");
    EXPECT_THAT(reports.errors, ElementsAre(Report{"Unable to push file " + foreign, "tcachefile", 0}));
}

// What a scan gives is stored already: escaping it once more would find nothing.
TEST_F(cacheFile, escapedTopics_areFoundAgainAsAScanGivesThem) {
    ASSERT_EQ(cache.AddTopic("Ink 50%", 1), 0);
    ASSERT_EQ(cache.AddItem("Ink 50%", "runs", 7, 1), 0);
    EXPECT_STREQ(cache.ScanTopics("Ink%20", 1), "50%25");
    EXPECT_EQ(cache.ScanTopics("Ink ", 1), nullptr);
    const std::string stored = topicsOf(cache).back();
    int runs = 0;
    EXPECT_EQ(cache.Search(stored.c_str(), "runs", &runs, 0, 0, 0), 0);
    EXPECT_EQ(runs, 7);
    EXPECT_EQ(cache.Search(stored.c_str(), "runs", &runs, 0, 1, 0), -1);
    char name[12];
    EXPECT_EQ(TCMS_DecodeIllegalCharacters(stored.c_str(), name), 1);
    EXPECT_STREQ(name, "Ink 50%");
}

TEST_F(cacheFile, whatIsNotSaved_isLost) {
    ASSERT_EQ(cache.AddItem("t", "i", "saved", 0, 0), 0);
    ASSERT_EQ(cache.Save(), 0);
    {
        TCacheFile other(path.c_str(), 0);
        ASSERT_EQ(other.AddItem("t", "i", "not saved", 0, 0), 0);
        ASSERT_EQ(other.AddTopic("new", 0), 0);
        EXPECT_EQ(textOf(other, "t", "i"), "not saved");
    }
    TCacheFile again(path.c_str(), 0);
    EXPECT_EQ(textOf(again, "t", "i"), "saved");
    EXPECT_THAT(topicsOf(again), ElementsAre("t"));
}

TEST_F(cacheFile, initSave_hasNothingToDo) {
    EXPECT_EQ(cache.InitSave(), 0);
    EXPECT_EQ(TCacheFile(scratch.path("missing").c_str(), 0).InitSave(), 0);
}

TEST_F(cacheFile, addTopic_thatIsThere_isRefusedInSilence) {
    EXPECT_EQ(cache.AddTopic("t", 0), -1);
    EXPECT_EQ(cache.AddTopic("a b", 1), 0);
    EXPECT_EQ(cache.AddTopic("a b", 1), -1);
    EXPECT_EQ(cache.AddTopic("a%20b", 0), -1);
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_THAT(topicsOf(cache), ElementsAre("t", "a%20b"));
}

TEST_F(cacheFile, encodedTopic_isFoundWithTheFlag) {
    ASSERT_EQ(cache.AddTopic("a b", 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "text", "x", 1, 0), 0);
    ASSERT_EQ(cache.AddItem("a b", "int", 5, 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "real", 2.5, 1), 0);
    ASSERT_EQ(cache.ChangeIntItem("a b", "int", 2, 0, 100, 1), 0);
    EXPECT_THAT(itemsOf(cache, "a%20b"),
                ElementsAre(Pair("text", "x"), Pair("int", "7"), Pair("real", "2.5000")));
    EXPECT_EQ(textOf(cache, "a b", "text", 1), "x");
    EXPECT_EQ(textOf(cache, "a b", "text", 0), "(none)");
    int whole = 0;
    EXPECT_EQ(cache.Search("a b", "int", &whole, 0, 1, 0), 0);
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(cache.Search("a b", "int", &whole, 0, 0, 0), -1);
    double real = 0.0;
    EXPECT_EQ(cache.Search("a b", "real", &real, 0, 1, 0), 0);
    EXPECT_EQ(real, 2.5);
    EXPECT_EQ(cache.Search("a b", "real", &real, 0, 0, 0), -1);
    EXPECT_EQ(cache.RemoveTopic("a b", 1), 0);
    EXPECT_THAT(topicsOf(cache), ElementsAre("t"));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, eighteenCharacters_areEscapedInTopicsAndNoOther) {
    ASSERT_EQ(cache.AddTopic("$% ./\\*[]@?:|#<>\";", 1), 0);
    ASSERT_EQ(cache.AddTopic("az-AZ_09!&'()+,=^`{}~\x7f\x80\xff\t\n", 1), 0);
    EXPECT_THAT(topicsOf(cache), ElementsAre("t", "%24%25%20%2e%2f%5c%2a%5b%5d%40%3f%3a%7c%23%3c%3e%22%3b",
                                             "az-AZ_09!&'()+,=^`{}~\x7f\x80\xff\t\n"));
}

TEST_F(cacheFile, reservedNames_keepTheirFullStops) {
    ASSERT_EQ(cache.AddTopic("trans._White_100_K", 1), 0);
    EXPECT_THAT(topicsOf(cache), ElementsAre("t", "trans._White_100_K"));
}

TEST_F(cacheFile, topicWithoutTheFlag_isStoredAsItIs) {
    ASSERT_EQ(cache.AddTopic("a b/c.d", 0), 0);
    EXPECT_THAT(topicsOf(cache), ElementsAre("t", "a b/c.d"));
}

TEST_F(cacheFile, removedTopic_takesItsItemsAlong) {
    ASSERT_EQ(cache.AddItem("t", "i", "x", 0, 0), 0);
    ASSERT_EQ(cache.RemoveTopic("t", 0), 0);
    EXPECT_EQ(textOf(cache, "t", "i"), "(none)");
    ASSERT_EQ(cache.AddTopic("t", 0), 0);
    EXPECT_THAT(itemsOf(cache, "t"), IsEmpty());
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, removeTopic_thatIsNotThere_isReported) {
    EXPECT_EQ(cache.RemoveTopic("a b", 1), -1);
    ASSERT_THAT(reports.errors, SizeIs(1));
    EXPECT_THAT(reports.errors[0].message, StartsWith("Unable to remove topic : a b to the data base"));
    EXPECT_EQ(reports.errors[0].module, "qxcms_rdb_err");
    EXPECT_EQ(reports.errors[0].line, 47);
}

TEST_F(cacheFile, addItem_thatIsThere_getsTheNewValueInItsPlace) {
    ASSERT_EQ(cache.AddItem("t", "first", "1", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "second", "2", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "first", "one", 0, 0), 0);
    EXPECT_THAT(itemsOf(cache, "t"), ElementsAre(Pair("first", "one"), Pair("second", "2")));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, addItem_doesNotMakeTheTopic) {
    EXPECT_EQ(cache.AddItem("a b", "i", "x", 1, 0), -1);
    ASSERT_THAT(reports.errors, SizeIs(1));
    EXPECT_THAT(reports.errors[0].message, StartsWith("Unable to add item i to topic a b"));
    EXPECT_EQ(reports.errors[0].module, "qxcms_rdb_err");
    EXPECT_THAT(topicsOf(cache), ElementsAre("t"));
}

TEST_F(cacheFile, itemNames_areNeverEscaped) {
    ASSERT_EQ(cache.AddTopic("a b", 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "x y.z", "1", 1, 1), 0);
    EXPECT_THAT(itemsOf(cache, "a%20b"), ElementsAre(Pair("x y.z", "1")));
    EXPECT_EQ(textOf(cache, "a b", "x y.z", 1), "1");
}

TEST_F(cacheFile, valueWithItsFlag_isEscapedAndDecodedOnDemand) {
    ASSERT_EQ(cache.AddItem("t", "i", "Ink 50%", 0, 1), 0);
    EXPECT_EQ(textOf(cache, "t", "i", 0, 0), "Ink%2050%25");
    EXPECT_EQ(textOf(cache, "t", "i", 0, 1), "Ink 50%");
}

TEST_F(cacheFile, flagsOfTopicAndValue_areSeparate) {
    ASSERT_EQ(cache.AddTopic("a b", 0), 0);
    ASSERT_EQ(cache.AddTopic("a b", 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "i", "x y", 0, 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "i", "x y", 1, 0), 0);
    EXPECT_THAT(itemsOf(cache, "a b"), ElementsAre(Pair("i", "x%20y")));
    EXPECT_THAT(itemsOf(cache, "a%20b"), ElementsAre(Pair("i", "x y")));
}

TEST_F(cacheFile, integers_areStoredInDecimal) {
    const std::pair<int, const char*> examples[] = {
        {0, "0"}, {-7, "-7"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"}};
    for (const auto& [value, text] : examples) {
        ASSERT_EQ(cache.AddItem("t", "i", value, 0), 0);
        EXPECT_EQ(textOf(cache, "t", "i"), text);
        int found = 1;
        EXPECT_EQ(cache.Search("t", "i", &found, 0, 0, 0), 0);
        EXPECT_EQ(found, value);
    }
}

// As C's "%6.4f" writes them.
TEST_F(cacheFile, reals_areStoredWithFourDecimalsAndSixCharactersAtLeast) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> examples[] = {{0.0, "0.0000"},
                                                       {-0.0, "-0.0000"},
                                                       {1.5, "1.5000"},
                                                       {12.34567, "12.3457"},
                                                       {-0.00001, "-0.0000"},
                                                       {0.03125, "0.0312"}, // an exact half, to even
                                                       {0.09375, "0.0938"},
                                                       {1e10, "10000000000.0000"},
                                                       {infinity, "   inf"},
                                                       {-infinity, "  -inf"},
                                                       {std::fabs(std::nan("")), "   nan"}};
    for (const auto& [value, text] : examples) {
        ASSERT_EQ(cache.AddItem("t", "i", value, 0), 0);
        EXPECT_EQ(textOf(cache, "t", "i"), text);
    }
}

// The full stop is one of the eighteen characters.
TEST_F(cacheFile, reals_areNotEscaped) {
    ASSERT_EQ(cache.AddItem("t", "i", 1234.5, 0), 0);
    double found = 0.0;
    EXPECT_EQ(cache.Search("t", "i", &found, 0, 0, 0), 0);
    EXPECT_EQ(found, 1234.5);
}

TEST_F(cacheFile, changeIntItem_startsFromZeroAndStaysWithinTheLimits) {
    ASSERT_EQ(cache.ChangeIntItem("t", "absent", 5, 0, 3, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "absent"), "3");
    ASSERT_EQ(cache.ChangeIntItem("t", "absent", -5, 1, 3, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "absent"), "1");
    ASSERT_EQ(cache.ChangeIntItem("t", "absent", 40, -100, 100, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "absent"), "41");
    ASSERT_EQ(cache.ChangeIntItem("t", "other", 5, 8, 10, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "other"), "8");
}

TEST_F(cacheFile, changeIntItem_maximumBelowMinimum_wins) {
    ASSERT_EQ(cache.ChangeIntItem("t", "i", 5, 10, 2, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "i"), "2");
    ASSERT_EQ(cache.ChangeIntItem("t", "i", -50, 10, 2, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "i"), "2");
}

TEST_F(cacheFile, changeIntItem_doesNotOverflow) {
    ASSERT_EQ(cache.AddItem("t", "i", INT_MAX, 0), 0);
    ASSERT_EQ(cache.ChangeIntItem("t", "i", INT_MAX, INT_MIN, INT_MAX, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "i"), "2147483647");
    ASSERT_EQ(cache.AddItem("t", "i", INT_MIN, 0), 0);
    ASSERT_EQ(cache.ChangeIntItem("t", "i", -1, INT_MIN, INT_MAX, 0), 0);
    EXPECT_EQ(textOf(cache, "t", "i"), "-2147483648");
}

TEST_F(cacheFile, changeIntItem_ofAnUnknownTopic_isReported) {
    EXPECT_EQ(cache.ChangeIntItem("a b", "i", 1, 0, 9, 1), -1);
    ASSERT_THAT(reports.errors, SizeIs(1));
    EXPECT_THAT(reports.errors[0].message, StartsWith("Unable to add item i to topic a b"));
}

TEST_F(cacheFile, searchForNumbers_takesTheValueAtTheIndex) {
    ASSERT_EQ(cache.AddItem("t", "i", "3 -4,5", 0, 0), 0);
    const int expected[] = {3, -4, 5};
    for (int index = 0; index < 3; ++index) {
        int whole = 0;
        EXPECT_EQ(cache.Search("t", "i", &whole, index, 0, 0), 0);
        EXPECT_EQ(whole, expected[index]);
        double real = 0.0;
        EXPECT_EQ(cache.Search("t", "i", &real, index, 0, 0), 0);
        EXPECT_EQ(real, expected[index]);
    }
}

TEST_F(cacheFile, searchForNumbers_withoutAValueAtTheIndex_answersAsTheConversion) {
    ASSERT_EQ(cache.AddItem("t", "i", "3 4", 0, 0), 0);
    int whole = 77;
    EXPECT_EQ(cache.Search("t", "i", &whole, 2, 0, 0), -1);
    EXPECT_EQ(whole, 77);
    double real = 7.5;
    EXPECT_EQ(cache.Search("t", "i", &real, 2, 0, 0), -1);
    EXPECT_EQ(real, 7.5);
}

// The last flag of the numbers is that of decoding in the text form.
TEST_F(cacheFile, searchForNumbers_theLastFlag_hasNoEffect) {
    ASSERT_EQ(cache.AddItem("t", "i", "2%20", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "j", "1 2", 0, 1), 0);
    for (const int flag : {0, 1}) {
        double real = 0.0;
        int whole = 0;
        const int answered = cache.Search("t", "i", &real, 0, 0, 0);
        EXPECT_EQ(cache.Search("t", "i", &real, 0, 0, flag), answered);
        EXPECT_EQ(cache.Search("t", "j", &whole, 1, 0, flag), -1) << "one value: 1%202";
    }
}

TEST_F(cacheFile, searchForNumbers_readsUpTo1023Characters) {
    const std::string longest = "7" + std::string(1022, ' ');
    ASSERT_EQ(cache.AddItem("t", "fits", longest.c_str(), 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "tooLong", (longest + " ").c_str(), 0, 0), 0);
    int whole = 0;
    EXPECT_EQ(cache.Search("t", "fits", &whole, 0, 0, 0), 0);
    EXPECT_EQ(whole, 7);
    double real = 0.0;
    EXPECT_EQ(cache.Search("t", "fits", &real, 0, 0, 0), 0);
    EXPECT_EQ(real, 7.0);
    EXPECT_EQ(cache.Search("t", "tooLong", &whole, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "tooLong", &real, 0, 0, 0), -1);
    EXPECT_THAT(textOf(cache, "t", "tooLong"), SizeIs(1024));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, search_withoutSuchAnItem_isMinusOneInSilence) {
    int whole = 77;
    double real = 7.5;
    char text[] = "kept";
    for (const char* const topic : {"t", "unknown"}) {
        EXPECT_EQ(cache.Search(topic, "i", &whole, 0, 0, 0), -1);
        EXPECT_EQ(cache.Search(topic, "i", &real, 0, 0, 0), -1);
        EXPECT_EQ(cache.Search(topic, "i", text, sizeof text, 0, 0), -1);
    }
    EXPECT_EQ(whole, 77);
    EXPECT_EQ(real, 7.5);
    EXPECT_STREQ(text, "kept");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, searchText_isCutOffWithinTheBuffer) {
    ASSERT_EQ(cache.AddItem("t", "i", "abcdef", 0, 0), 0);
    const std::pair<int, const char*> examples[] = {{7, "abcdef"}, {6, "abcde"}, {2, "a"}, {1, ""}};
    for (const auto& [size, expected] : examples) {
        char text[8] = "#######";
        EXPECT_EQ(cache.Search("t", "i", text, size, 0, 0), 0);
        EXPECT_STREQ(text, expected);
        EXPECT_EQ(text[size], size == 7 ? '\0' : '#') << "written behind " << size;
    }
}

TEST_F(cacheFile, searchText_intoNothing_isMinusOne) {
    ASSERT_EQ(cache.AddItem("t", "i", "abcdef", 0, 0), 0);
    char text[] = "kept";
    EXPECT_EQ(cache.Search("t", "i", text, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "i", text, -1, 0, 1), -1);
    EXPECT_STREQ(text, "kept");
}

// "a b" would fit: of the five characters "a%20b", "a%2" are copied, and a "%" with one digit is dropped.
TEST_F(cacheFile, searchText_isCutOffBeforeItIsDecoded) {
    ASSERT_EQ(cache.AddItem("t", "i", "a b", 0, 1), 0);
    char text[8];
    EXPECT_EQ(cache.Search("t", "i", text, 4, 0, 1), 0);
    EXPECT_STREQ(text, "a2");
    EXPECT_EQ(cache.Search("t", "i", text, 6, 0, 1), 0);
    EXPECT_STREQ(text, "a b");
}

TEST_F(cacheFile, scanTopics_givesThemInTheOrderOfAddition) {
    ASSERT_EQ(cache.AddTopic("b", 0), 0);
    ASSERT_EQ(cache.AddTopic("a", 0), 0);
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "t");
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "b");
    EXPECT_STREQ(cache.ScanTopics(nullptr, 1), "t");
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "b");
    cache.ScanTopicsInit();
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "t");
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "b");
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "a");
    EXPECT_EQ(cache.ScanTopics(nullptr, 0), nullptr);
    EXPECT_EQ(cache.ScanTopics(nullptr, 0), nullptr);
    ASSERT_EQ(cache.AddTopic("late", 0), 0);
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "late");
    EXPECT_THAT(reports.errors, IsEmpty());
}

// Kept simple: the scan counts topics, whatever becomes of them.
TEST_F(cacheFile, scanTopics_passesOverOneForEachThatIsRemoved) {
    for (const char* const topic : {"u", "v", "w"})
        ASSERT_EQ(cache.AddTopic(topic, 0), 0);
    for (const char* const expected : {"t", "v"}) {
        ASSERT_STREQ(cache.ScanTopics(nullptr, 0), expected);
        ASSERT_EQ(cache.RemoveTopic(expected, 0), 0);
    }
    EXPECT_EQ(cache.ScanTopics(nullptr, 0), nullptr);
    EXPECT_THAT(topicsOf(cache), ElementsAre("u", "w"));
}

TEST_F(cacheFile, scanTopics_neverGivesTheInternalOne) {
    ASSERT_EQ(cache.AddTopic("_internal_", 0), 0);
    ASSERT_EQ(cache.AddTopic("_InterNAL_", 0), 0);
    ASSERT_EQ(cache.AddTopic("_internal_2", 0), 0);
    EXPECT_THAT(topicsOf(cache), ElementsAre("t", "_internal_2"));
    EXPECT_THAT(topicsOf(cache, "_int"), ElementsAre("ernal_2"));
}

TEST_F(cacheFile, scanTopics_filter_takesThePrefixOff) {
    for (const char* const topic : {"ink.cyan", "paper", "ink.", "INK.x"})
        ASSERT_EQ(cache.AddTopic(topic, 0), 0);
    EXPECT_THAT(topicsOf(cache, "ink."), ElementsAre("cyan", ""));
    EXPECT_THAT(topicsOf(cache, "nowhere"), IsEmpty());
    EXPECT_THAT(topicsOf(cache, ""), ElementsAre("t", "ink.cyan", "paper", "ink.", "INK.x"));
}

TEST_F(cacheFile, scanTopics_filterInside_cutsItsLengthOffTheFront) {
    for (const char* const topic : {"my ink.cyan", "xink."})
        ASSERT_EQ(cache.AddTopic(topic, 0), 0);
    EXPECT_THAT(topicsOf(cache, "ink."), ElementsAre("nk.cyan", "."));
}

TEST_F(cacheFile, scanItems_givesThemInTheOrderOfAddition) {
    ASSERT_EQ(cache.AddItem("t", "b", "2", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "a", "1", 0, 0), 0);
    const char* value = nullptr;
    EXPECT_STREQ(cache.ScanItems("t", &value, 0), "b");
    EXPECT_STREQ(value, "2");
    EXPECT_STREQ(cache.ScanItems("t", &value, 1), "b");
    EXPECT_STREQ(cache.ScanItems("t", &value, 0), "a");
    EXPECT_STREQ(value, "1");
    EXPECT_EQ(cache.ScanItems("t", &value, 0), nullptr);
    EXPECT_EQ(value, nullptr);
    cache.ScanItemsInit();
    EXPECT_STREQ(cache.ScanItems("t", &value, 0), "b");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, scanItems_nameAndValue_areBothGood) {
    ASSERT_EQ(cache.AddItem("t", "a name that is longer than any small buffer", "its value", 0, 0), 0);
    const char* value = nullptr;
    const char* const item = cache.ScanItems("t", &value, 1);
    EXPECT_STREQ(item, "a name that is longer than any small buffer");
    EXPECT_STREQ(value, "its value");
}

TEST_F(cacheFile, scanItems_withoutInterestInValues) {
    ASSERT_EQ(cache.AddItem("t", "i", "2", 0, 0), 0);
    EXPECT_STREQ(cache.ScanItems("t", nullptr, 1), "i");
    EXPECT_EQ(cache.ScanItems("t", nullptr, 0), nullptr);
}

TEST_F(cacheFile, scanItems_ofAnUnknownTopic_isEmpty) {
    const char* value = "old";
    EXPECT_EQ(cache.ScanItems("unknown", &value, 1), nullptr);
    EXPECT_EQ(value, nullptr);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, scans_keepSeparatePositions) {
    ASSERT_EQ(cache.AddTopic("u", 0), 0);
    for (const char* const topic : {"t", "u"})
        for (const char* const item : {"1", "2"})
            ASSERT_EQ(cache.AddItem(topic, item, topic, 0, 0), 0);
    std::vector<std::string> found;
    const char* value = nullptr;
    for (const char* name = cache.ScanTopics(nullptr, 1); name != nullptr;
         name = cache.ScanTopics(nullptr, 0)) {
        cache.ScanItemsInit();
        while (const char* const item = cache.ScanItems(name, &value, 0))
            found.push_back(std::string(value) + item);
    }
    EXPECT_THAT(found, ElementsAre("t1", "t2", "u1", "u2"));
}

TEST_F(cacheFile, copyTopic_bringsAllItemsAsTheyAreStored) {
    ASSERT_EQ(cache.AddTopic("a b", 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "second", "x y", 1, 1), 0);
    ASSERT_EQ(cache.AddItem("a b", "first", "1", 1, 0), 0);
    TCacheFile copy(scratch.path("copy").c_str(), 1);
    EXPECT_EQ(copy.CopyTopic(cache, "a%20b"), 0);
    EXPECT_THAT(topicsOf(copy), ElementsAre("a%20b"));
    EXPECT_THAT(itemsOf(copy, "a%20b"), ElementsAre(Pair("second", "x%20y"), Pair("first", "1")));
    EXPECT_THAT(itemsOf(cache, "a%20b"), SizeIs(2));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, copyTopic_intoOneThatIsThere_goesItemByItem) {
    ASSERT_EQ(cache.AddItem("t", "both", "new", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "added", "x", 0, 0), 0);
    TCacheFile target(scratch.path("copy").c_str(), 1);
    ASSERT_EQ(target.AddTopic("t", 0), 0);
    ASSERT_EQ(target.AddItem("t", "kept", "y", 0, 0), 0);
    ASSERT_EQ(target.AddItem("t", "both", "old", 0, 0), 0);
    EXPECT_EQ(target.CopyTopic(cache, "t"), 0);
    EXPECT_THAT(itemsOf(target, "t"),
                ElementsAre(Pair("kept", "y"), Pair("both", "new"), Pair("added", "x")));
}

TEST_F(cacheFile, copyTopic_thatTheOtherLacks_isMinusOneAndAddsNothing) {
    TCacheFile target(scratch.path("copy").c_str(), 1);
    EXPECT_EQ(target.CopyTopic(cache, "unknown"), -1);
    EXPECT_THAT(topicsOf(target), IsEmpty());
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, copyTopic_withoutItems_isCopiedAllTheSame) {
    TCacheFile target(scratch.path("copy").c_str(), 1);
    EXPECT_EQ(target.CopyTopic(cache, "t"), 0);
    EXPECT_THAT(topicsOf(target), ElementsAre("t"));
}

TEST_F(cacheFile, copyTopic_fromItself_changesNothing) {
    ASSERT_EQ(cache.AddItem("t", "i", "1", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "j", "2", 0, 0), 0);
    EXPECT_EQ(cache.CopyTopic(cache, "t"), 0);
    EXPECT_THAT(itemsOf(cache, "t"), ElementsAre(Pair("i", "1"), Pair("j", "2")));
}

TEST_F(cacheFile, copyTopic_leavesTheScansWhereTheyAre) {
    ASSERT_EQ(cache.AddTopic("u", 0), 0);
    ASSERT_EQ(cache.AddItem("t", "i", "1", 0, 0), 0);
    ASSERT_EQ(cache.AddItem("t", "j", "2", 0, 0), 0);
    const char* value = nullptr;
    ASSERT_STREQ(cache.ScanTopics(nullptr, 1), "t");
    ASSERT_STREQ(cache.ScanItems("t", &value, 1), "i");
    TCacheFile target(scratch.path("copy").c_str(), 1);
    ASSERT_EQ(target.CopyTopic(cache, "t"), 0);
    EXPECT_STREQ(cache.ScanTopics(nullptr, 0), "u");
    EXPECT_STREQ(cache.ScanItems("t", &value, 0), "j");
}

TEST_F(cacheFile, equality_comparesNamesAlone) {
    const std::string folder = scratch.path() + "/";
    const TCacheFile one("results", folder.c_str());
    const TCacheFile elsewhere("results", "nowhere/");
    const TCacheFile otherCase("Results", folder.c_str());
    const TCacheFile none(nullptr, folder.c_str());
    const TCacheFile noneEither(nullptr, 0);
    EXPECT_TRUE(one == one);
    EXPECT_TRUE(one == elsewhere);
    EXPECT_FALSE(one == otherCase);
    EXPECT_FALSE(one == cache) << "a path is a name too, and another one";
    EXPECT_FALSE(one == none);
    EXPECT_FALSE(none == one);
    EXPECT_TRUE(none == noneEither);
}

TEST_F(cacheFile, nothingGiven_isMinusOneInSilence) {
    int whole = 0;
    double real = 0.0;
    char text[8];
    EXPECT_EQ(cache.AddTopic(nullptr, 1), -1);
    EXPECT_EQ(cache.RemoveTopic(nullptr, 1), -1);
    EXPECT_EQ(cache.AddItem(nullptr, "i", "x", 0, 0), -1);
    EXPECT_EQ(cache.AddItem("t", nullptr, "x", 0, 0), -1);
    EXPECT_EQ(cache.AddItem("t", "i", nullptr, 0, 0), -1);
    EXPECT_EQ(cache.AddItem(nullptr, "i", 1, 0), -1);
    EXPECT_EQ(cache.AddItem("t", nullptr, 1.0, 0), -1);
    EXPECT_EQ(cache.ChangeIntItem(nullptr, "i", 1, 0, 9, 0), -1);
    EXPECT_EQ(cache.ChangeIntItem("t", nullptr, 1, 0, 9, 0), -1);
    ASSERT_EQ(cache.AddItem("t", "i", 1, 0), 0);
    EXPECT_EQ(cache.Search(nullptr, "i", &whole, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", nullptr, &whole, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "i", static_cast<int*>(nullptr), 0, 0, 0), -1);
    EXPECT_EQ(cache.Search(nullptr, "i", &real, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", nullptr, &real, 0, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "i", static_cast<double*>(nullptr), 0, 0, 0), -1);
    EXPECT_EQ(cache.Search(nullptr, "i", text, 8, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", nullptr, text, 8, 0, 0), -1);
    EXPECT_EQ(cache.Search("t", "i", static_cast<char*>(nullptr), 8, 0, 0), -1);
    EXPECT_EQ(cache.ScanItems(nullptr, nullptr, 1), nullptr);
    const char* value = "old";
    EXPECT_EQ(cache.ScanItems(nullptr, &value, 1), nullptr);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(cache.CopyTopic(cache, nullptr), -1);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, messages_areJoinedWithOneBlank) {
    cache.SetErrMsg("first", "second", nullptr);
    cache.SetErrMsg("first ", "second", nullptr);
    cache.SetErrMsg("first", nullptr, nullptr);
    cache.SetErrMsg(nullptr, "second", nullptr);
    cache.SetErrMsg("", "", nullptr);
    EXPECT_THAT(reports.errors,
                ElementsAre(Report{"first second", "tcachefile", 0}, Report{"first  second", "tcachefile", 0},
                            Report{"first", "tcachefile", 0}, Report{"second", "tcachefile", 0},
                            Report{" ", "tcachefile", 0}));
}

TEST_F(cacheFile, messages_ofNothing_areNoReport) {
    cache.SetErrMsg(nullptr, nullptr, nullptr);
    cache.SetErrMsg(nullptr, nullptr, [](const char*) {
        ADD_FAILURE();
        return 0;
    });
    EXPECT_THAT(reports.errors, IsEmpty());
}

std::string& lastGiven() {
    static std::string text;
    return text;
}

TEST_F(cacheFile, messages_goToTheReporterThatIsGiven) {
    cache.SetErrMsg("first", "second", [](const char* message) {
        lastGiven() = message;
        return 0;
    });
    EXPECT_EQ(lastGiven(), "first second");
    EXPECT_THAT(reports.errors, IsEmpty());
}

struct ListeningCache : TCacheFile {
    using TCacheFile::TCacheFile;
    void SetErrMsg(const char* first, const char* second, Reporter reporter) override {
        heard.emplace_back(first == nullptr ? "(none)" : first);
        EXPECT_EQ(second, nullptr);
        EXPECT_NE(reporter, nullptr);
    }
    std::vector<std::string> heard;
};

TEST_F(cacheFile, messages_ofEveryOperation_passThroughTheVirtualOne) {
    ListeningCache listening(scratch.path("own").c_str(), 1);
    EXPECT_EQ(listening.RemoveTopic("a b", 1), -1);
    EXPECT_EQ(listening.AddItem("a b", "i", "x", 1, 0), -1);
    EXPECT_THAT(listening.heard, ElementsAre("Unable to remove topic : a b to the data base",
                                             "Unable to add item i to topic a b"));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(cacheFile, belongsToOneOwner) {
    static_assert(!std::is_copy_constructible_v<TCacheFile> && !std::is_copy_assignable_v<TCacheFile>);
    static_assert(!std::is_move_constructible_v<TCacheFile> && !std::is_move_assignable_v<TCacheFile>);
    static_assert(std::has_virtual_destructor_v<TCacheFile>);
}

} // namespace
} // namespace qxcms::tests
