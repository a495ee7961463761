// Documents when the memory fails.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::ElementsAreArray;

// Names and values too long to be kept without an allocation; aliases of the sample name; every class of
// fields.
const std::string kDocument = "CGATS.17\n"
                              "ORIGINATOR \"somebody whose name is long\" # written by hand\n"
                              "CREATED \"today\"\n"
                              "KEYWORD \"AFieldWhoseNameIsLong\"\n"
                              "KEYWORD \"MyField\"\n"
                              "SPOT_ID \"Orange\"\n"
                              "PROCESSCOLOR_ID \"first\"\nPROCESSCOLOR_ID \"second\"\n"
                              "BEGIN_NOTES\nfree text\nEND_NOTES\n"
                              "NUMBER_OF_FIELDS 11\n"
                              "BEGIN_DATA_FORMAT\n"
                              "SampleID SAMPLE_NAME AFieldWhoseNameIsLong CMYK_C CMYK_M CMYK_Y CMYK_K "
                              "SPECTRAL_NM_000000700 nm400 XYZ_X SPOT_1\n"
                              "END_DATA_FORMAT\n"
                              "NUMBER_OF_SETS 2\n"
                              "BEGIN_DATA\n"
                              "1 \"first patch\" a 100 0 0 0 20 10 7 0\n"
                              "2 \"second patch\" b 0 100 0 0 40 30 8 100\n"
                              "END_DATA\n"
                              "NUMBER_OF_FIELDS 6\n"
                              "BEGIN_DATA_FORMAT\n"
                              "SampleID LAB_L LAB_A LAB_B PC2_1 PC2_2\n"
                              "END_DATA_FORMAT\n"
                              "NUMBER_OF_SETS 1\n"
                              "BEGIN_DATA\n"
                              "1 50 10 -10 0 100\n"
                              "END_DATA\n"
                              "BEGIN_DATA_FORMAT\n"
                              "5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 XYZ_X XYZ_Y XYZ_Z\n"
                              "END_DATA_FORMAT\n"
                              "NUMBER_OF_SETS 1\n"
                              "BEGIN_DATA\n"
                              "1 2 3 4 5 6 7 8\n"
                              "END_DATA\n";

// CMYK solids with CIELAB and spectra.
const std::string kSolids = "BEGIN_DATA_FORMAT\n"
                            "CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B nm400 nm700\n"
                            "END_DATA_FORMAT\n"
                            "NUMBER_OF_SETS 4\n"
                            "BEGIN_DATA\n"
                            "100 0 0 0 55 -37 -50 0.1 0.2\n"
                            "0 100 0 0 48 74 -3 0.3 0.4\n"
                            "0 0 100 0 89 -5 93 0.5 0.6\n"
                            "0 0 0 100 16 0 0 0.7 0.8\n"
                            "END_DATA\n";

using cgatsFaults = OnSubstitutePlatform;

void expectSameTable(const TCgats& document, int table, const TCgats& whole, int wholeTable) {
    ASSERT_EQ(document.GetNrSamples(table), whole.GetNrSamples(wholeTable));
    ASSERT_EQ(document.GetNrFields(table), whole.GetNrFields(wholeTable));
    EXPECT_EQ(document.GetNrWaveLengths(table), whole.GetNrWaveLengths(wholeTable));
    EXPECT_EQ(document.GetNrProcessColors(table), whole.GetNrProcessColors(wholeTable));
    EXPECT_EQ(document.GetNrSpotColors(table), whole.GetNrSpotColors(wholeTable));
    EXPECT_EQ(document.ContainsLab(table), whole.ContainsLab(wholeTable));
    EXPECT_EQ(document.ContainsXyz(table), whole.ContainsXyz(wholeTable));
    for (int field = 0; field < whole.GetNrFields(wholeTable); ++field) {
        const char* const name = whole.GetTable(wholeTable)->GetHeader()->GetField(field)->GetName();
        EXPECT_EQ(document.GetFieldNameIndex(table, name), field) << name;
        for (int sample = 0; sample < whole.GetNrSamples(wholeTable); ++sample) {
            char text[320] = "", expected[320] = "";
            EXPECT_EQ(document.GetField(table, sample, field, text), 0);
            EXPECT_EQ(whole.GetField(wholeTable, sample, field, expected), 0);
            EXPECT_STREQ(text, expected);
        }
    }
    double spectrum[2] = {}, expected[2] = {};
    EXPECT_EQ(document.GetSpectrum(table, 0, spectrum), whole.GetSpectrum(wholeTable, 0, expected));
    EXPECT_THAT(spectrum, ElementsAreArray(expected));
}

void expectSameDocument(const TCgats& document, const TCgats& whole) {
    ASSERT_EQ(document.GetNrTags(), whole.GetNrTags());
    for (int i = 0; i < whole.GetNrTags(); ++i) {
        EXPECT_STREQ(document.GetTagAt(i)->GetKeyword(), whole.GetTagAt(i)->GetKeyword());
        EXPECT_STREQ(document.GetTagAt(i)->GetValue(), whole.GetTagAt(i)->GetValue());
        EXPECT_STREQ(document.GetTagAt(i)->GetComment(), whole.GetTagAt(i)->GetComment());
    }
    ASSERT_EQ(document.GetNrCommentBlocks(), whole.GetNrCommentBlocks());
    for (int i = 0; i < whole.GetNrCommentBlocks(); ++i)
        EXPECT_STREQ(document.GetCommentBlock(i), whole.GetCommentBlock(i));
    ASSERT_EQ(document.GetNrCustomFields(), whole.GetNrCustomFields());
    for (int i = 0; i < whole.GetNrCustomFields(); ++i)
        EXPECT_STREQ(document.GetCustomField(i), whole.GetCustomField(i));
    ASSERT_EQ(document.GetNrTables(), whole.GetNrTables());
    for (int table = 0; table < whole.GetNrTables(); ++table)
        expectSameTable(document, table, whole, table);
}

// Whatever a read left behind, its questions have answers.
void expectItCanBeAsked(const TCgats& document) {
    for (int i = 0; i < document.GetNrTags(); ++i)
        ASSERT_NE(document.GetTagAt(i), nullptr);
    for (int i = 0; i < document.GetNrCommentBlocks(); ++i)
        ASSERT_NE(document.GetCommentBlock(i), nullptr);
    for (int i = 0; i < document.GetNrCustomFields(); ++i)
        ASSERT_NE(document.GetCustomField(i), nullptr);
    for (int table = -1; table <= document.GetNrTables(); ++table) {
        const bool isThere = document.GetTable(table) != nullptr;
        EXPECT_EQ(document.GetNrSamples(table) >= 0, isThere);
        EXPECT_EQ(document.GetNrFields(table) >= 0, isThere && document.GetErrorCode() == 0);
        char text[4200];
        document.GetField(table, 0, 0, text);
        document.GetSampleName(table, 0, text);
        double values[16];
        document.GetSpectrum(table, 0, values);
        document.GetCoordinates(table, 0, values);
        EXPECT_EQ(document.GetFieldNameIndex(table, "no such name"), -1);
    }
}

// Reading.

// Without memory a document records code 1, or it did without and holds everything: to sort the spectral
// columns memory is welcome, but not needed.
TEST_F(cgatsFaults, textReadWithoutMemory_isAnErrorOrWhole) {
    const TCgats whole(kDocument.c_str(), 0);
    ASSERT_EQ(whole.GetErrorCode(), 0);
    ASSERT_EQ(whole.GetNrTables(), 3);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats document(kDocument.c_str(), 0);
        faults.disarm();
        EXPECT_THAT(document.GetErrorCode(), AnyOf(0, 1));
        EXPECT_STREQ(document.GetErrorMessage(), document.GetErrorCode() == 0 ? "" : "Unknown error.");
        expectItCanBeAsked(document);
        if (document.GetErrorCode() == 0)
            expectSameDocument(document, whole);
        else {
            EXPECT_TRUE(faults.happened());
        }
    });
}

TEST_F(cgatsFaults, fileReadWithoutMemory_isAnErrorOrWholeAndTheFileIsClosed) {
    const ScratchFolder folder;
    const std::string name = folder.write("document.txt", kDocument);
    const TCgats whole(kDocument.c_str(), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats document(name.c_str());
        faults.disarm();
        EXPECT_THAT(document.GetErrorCode(), AnyOf(0, 1));
        expectItCanBeAsked(document);
        if (document.GetErrorCode() == 0)
            expectSameDocument(document, whole);
        else {
            EXPECT_TRUE(faults.happened());
        }
    });
}

// The answer is not recorded, and the document takes up the text when there is memory.
TEST_F(cgatsFaults, bufferReadWithoutMemory_answers1AndCanBeReadAgain) {
    const TCgats whole(kSolids.c_str(), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        faults.arm();
        const int answer = document.ReadFromBuffer(kSolids.c_str());
        faults.disarm();
        EXPECT_THAT(answer, AnyOf(0, 1));
        EXPECT_TRUE(answer == 0 || faults.happened());
        EXPECT_EQ(document.GetErrorCode(), 0);
        expectItCanBeAsked(document);
        // A data format that was begun is begun anew.
        ASSERT_EQ(document.ReadFromBuffer(("NUMBER_OF_FIELDS 9\n" + kSolids).c_str()), 0);
        expectSameTable(document, document.GetNrTables() - 1, whole, 0);
    });
}

// A sink that counts and takes no memory.
class CountingSink : public TCgatsDiagnosticSink {
public:
    void Refused(const TCgatsDiagnostic& diagnostic) override {
        ++refusals;
        code = diagnostic.code;
    }
    void Doubted(const TCgatsDoubtfulValue&) override { ++doubts; }

    int refusals = 0;
    int code = 0;
    int doubts = 0;
};

TEST_F(cgatsFaults, goodTextWithoutMemory_isNotRefusedToTheSink) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        CountingSink sink;
        faults.arm();
        const int answer = document.ReadFromBuffer(kDocument.c_str(), &sink);
        faults.disarm();
        EXPECT_THAT(answer, AnyOf(0, 1));
        EXPECT_EQ(sink.refusals, 0);
    });
}

TEST_F(cgatsFaults, badTextWithoutMemory_isRefusedToTheSinkOrAnswered1) {
    struct Refusal {
        std::string text;
        int code;
    };
    const std::string format = "NUMBER_OF_FIELDS 2\nBEGIN_DATA_FORMAT\n";
    const Refusal refusals[] = {
        {std::string(300, 'k'), -1},
        {"BEGIN_NOTES\nwithout an end", 5},
        {"BEGIN_DATA\n1\n", 6},
        {format + "LAB_L", 9},
        {format + "LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n", 10},
        {format + "LAB_L NoSuchNameAsThisOneThere\nEND_DATA_FORMAT\n", 11},
        {format + "LAB_L\nEND_DATA_FORMAT\n", 12},
        {format + "5CLR_1 PC0_3\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1 2\n", 17},
        {format + "LAB_L LAB_A\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1", 1}};
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.text);
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TCgats document;
            CountingSink sink;
            faults.arm();
            const int answer = document.ReadFromBuffer(refusal.text.c_str(), &sink);
            faults.disarm();
            EXPECT_TRUE(answer == refusal.code || (answer == 1 && faults.happened())) << answer;
            EXPECT_LE(sink.refusals, 1);
            if (sink.refusals == 1) {
                EXPECT_EQ(sink.code, answer);
            } else {
                EXPECT_EQ(answer, 1);
            }
            EXPECT_TRUE(sink.refusals == 1 || faults.happened());
            expectItCanBeAsked(document);
        });
    }
}

TEST_F(cgatsFaults, fileToBufferWithoutMemory_answers1AndGivesNull) {
    const ScratchFolder folder;
    const std::string name = folder.write("document.txt", kDocument);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        char mark = 'x';
        char* text = &mark;
        faults.arm();
        const int answer = TCgats::FileToBuffer(name.c_str(), &text);
        faults.disarm();
        EXPECT_THAT(answer, AnyOf(0, 1));
        EXPECT_TRUE(answer == 0 || faults.happened());
        EXPECT_EQ(text == nullptr, answer != 0);
        if (text != nullptr) {
            EXPECT_EQ(text, kDocument);
        }
        delete[] text;
    });
}

// A file that does not tell its size is read into buffers that grow.
TEST_F(cgatsFaults, fileOfUnknownSizeWithoutMemory_answers1AndGivesNull) {
    const char* const name = "/proc/self/smaps";
    std::ifstream file(name);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    if (bytes.size() < 4 * 4096)
        GTEST_SKIP() << name << " is short here";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        char* text = nullptr;
        faults.arm();
        const int answer = TCgats::FileToBuffer(name, &text);
        faults.disarm();
        EXPECT_THAT(answer, AnyOf(0, 1));
        EXPECT_TRUE(answer == 0 || faults.happened());
        EXPECT_EQ(text == nullptr, answer != 0);
        delete[] text;
    });
}

// Single steps.

TEST_F(cgatsFaults, nextTagWithoutMemory_isMinus1AndIsReadLater) {
    const TCgats document;
    const char* const text = "CREATED \"today\" # by hand\n";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        char keyword[TCgats::kMaxKeyword + 1], value[TCgats::kMaxValue + 1], comment[TCgats::kMaxComment + 1];
        int code = -7, numeric = -7;
        const char* next = nullptr;
        faults.arm();
        const int answer = document.ReadNextTag(text, keyword, value, comment, &code, &numeric, &next);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? -1 : 0);
        EXPECT_EQ(document.ReadNextTag(text, keyword, value, comment, &code, &numeric, &next), 0);
        EXPECT_STREQ(value, "today");
        EXPECT_EQ(next, text + std::strlen(text));
    });
}

TEST_F(cgatsFaults, commentBlockWithoutMemory_isNotKeptAndIsReadLater) {
    const char* const text = "\nfree text\nEND_A_LONG_NAME_OF_NOTES\n";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        const char* position = text;
        faults.arm();
        const int answer = document.ReadCommentTag("BEGIN_A_LONG_NAME_OF_NOTES", &position);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 1 : 0);
        EXPECT_EQ(document.GetNrCommentBlocks(), faults.happened() ? 0 : 1);
        position = text;
        EXPECT_EQ(document.ReadCommentTag("BEGIN_A_LONG_NAME_OF_NOTES", &position), 0);
        EXPECT_STREQ(document.GetCommentBlock(document.GetNrCommentBlocks() - 1), "\nfree text\n");
    });
}

TEST_F(cgatsFaults, dataFormatWithoutMemory_answers1AndIsReadLater) {
    const char* const text = "LAB_L LAB_A LAB_B SPECTRAL_NM_000000400 SAMPLE_NAME\nEND_DATA_FORMAT\n";
    for (const bool declared : {false, true}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TCgats document;
            if (declared)
                document.InitTmpHeader(5);
            const char* position = text;
            faults.arm();
            const int answer = document.ReadTmpHeader(&position);
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? 1 : 0);
            document.InitTmpHeader(5);
            position = text;
            EXPECT_EQ(document.ReadTmpHeader(&position), 0);
            EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 5);
            EXPECT_EQ(document.GetNrCustomFields(), 1);
        });
    }
}

// The header of a table that could not be made waits for the next try, but the last step may have taken it.
TEST_F(cgatsFaults, samplesWithoutMemory_answer1AndMakeNoTable) {
    const char* const format = "SampleID nm410 nm400 LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n";
    const char* const samples = "a 1 2 3 4 5\nb 6 7 8 9 10\n";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        const char* position = format;
        ASSERT_EQ(document.ReadTmpHeader(&position), 0);
        document.SetNrSamples(2);
        position = samples;
        faults.arm();
        const int answer = document.ReadTable(&position);
        faults.disarm();
        EXPECT_THAT(answer, AnyOf(0, 1));
        EXPECT_TRUE(answer == 0 || faults.happened());
        EXPECT_EQ(document.GetNrTables(), answer == 0 ? 1 : 0);
        expectItCanBeAsked(document);
        if (document.GetNrTables() == 1)
            return;
        position = format;
        if (document.GetTmpHeader() == nullptr) {
            ASSERT_EQ(document.ReadTmpHeader(&position), 0);
        }
        position = samples;
        EXPECT_EQ(document.ReadTable(&position), 0);
        EXPECT_EQ(document.GetFieldNameIndex(0, "lab_b"), 5);
    });
}

// Editing.

TEST_F(cgatsFaults, tmpHeaderWithoutMemory_isNone) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        document.InitTmpHeader(2);
        faults.arm();
        const int answer = document.InitTmpHeader(3);
        faults.disarm();
        EXPECT_EQ(answer, 0);
        EXPECT_EQ(document.GetTmpHeader() == nullptr, faults.happened());
        document.InitTmpHeader(4);
        ASSERT_NE(document.GetTmpHeader(), nullptr);
        EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 4);
    });
}

TEST_F(cgatsFaults, insertTagWithoutMemory_answers1AndChangesNothing) {
    struct Place {
        int position;
        bool replace;
        int tags;
    };
    for (const Place place :
         {Place{-1, false, 3}, Place{0, false, 3}, Place{0, true, 2}, Place{7, false, 3}}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TCgats document("CREATED \"today\"\nORIGINATOR \"somebody\"\n", 0);
            ASSERT_EQ(document.GetNrTags(), 2);
            faults.arm();
            const int answer = document.InsertTag(-1, "NEW", 1, "2", "three", place.position, place.replace);
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? 1 : 0);
            if (faults.happened()) {
                EXPECT_EQ(document.GetNrTags(), 2);
                EXPECT_STREQ(document.GetTagAt(0)->GetKeyword(), "CREATED");
                EXPECT_STREQ(document.GetTagAt(1)->GetKeyword(), "ORIGINATOR");
                EXPECT_EQ(document.InsertTag(-1, "NEW", 1, "2", "three", place.position, place.replace), 0);
            }
            EXPECT_EQ(document.GetNrTags(), place.tags);
            ASSERT_NE(document.GetTag("NEW"), nullptr);
            EXPECT_STREQ(document.GetTag("NEW")->GetComment(), "three");
        });
    }
}

TEST_F(cgatsFaults, descriptionsWithoutMemory_answer1AndKeepTheOldOnes) {
    using Setter = int (TCgats::*)(const char*);
    using Getter = const char* (TCgats::*)() const;
    struct Keyword {
        Setter set;
        Getter get;
    };
    const Keyword keywords[] = {{&TCgats::SetOriginator, &TCgats::GetOriginator},
                                {&TCgats::SetFileDescriptor, &TCgats::GetFileDescriptor},
                                {&TCgats::SetCreated, &TCgats::GetCreated}};
    for (const Keyword& keyword : keywords) {
        for (const char* const text :
             {"", "ORIGINATOR \"old\"\nFILE_DESCRIPTOR \"old\"\nCREATED \"old\"\n"}) {
            const char* const old = *text == '\0' ? nullptr : "old";
            forEveryFailingAllocation([&](AllocationFaults& faults) {
                TCgats document(text, 0);
                faults.arm();
                const int answer = (document.*keyword.set)("new");
                faults.disarm();
                EXPECT_EQ(answer, faults.happened() ? 1 : 0);
                EXPECT_STREQ((document.*keyword.get)(), faults.happened() ? old : "new");
                EXPECT_EQ((document.*keyword.set)("newer"), 0);
                EXPECT_STREQ((document.*keyword.get)(), "newer");
            });
        }
    }
}

// Each of many names is declared or is not, and those that are declared are found.
TEST_F(cgatsFaults, customFieldsWithoutMemory_areDeclaredAndFoundOrNot) {
    constexpr int kNames = 40;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        const auto nameOf = [](int i) { return "A field with the number " + std::to_string(i); };
        std::vector<std::string> names;
        std::vector<int> answers;
        for (int i = 0; i < kNames; ++i)
            names.push_back(nameOf(i));
        answers.reserve(kNames);
        faults.arm();
        for (const std::string& name : names)
            answers.push_back(document.AddCustomField(name.c_str()));
        faults.disarm();
        int declared = 0;
        for (std::size_t i = 0; i < kNames; ++i) {
            int kind = -7, number = -7, dataType = -7;
            std::string canonicalName;
            ASSERT_THAT(answers[i], AnyOf(0, 1));
            const int found =
                document.MatchField(names[i].c_str(), &kind, &number, &dataType, &canonicalName);
            EXPECT_EQ(found, answers[i] == 0 ? declared : -1) << names[i];
            if (answers[i] == 0) {
                EXPECT_EQ(document.GetCustomField(declared++), names[i]);
            }
        }
        EXPECT_EQ(document.GetNrCustomFields(), declared);
        EXPECT_EQ(declared < kNames, faults.happened());
        for (const std::string& name : names)
            EXPECT_EQ(document.AddCustomField(name.c_str()), 0);
        EXPECT_EQ(document.GetNrCustomFields(), declared + kNames);
    });
}

TEST_F(cgatsFaults, matchFieldWithoutMemory_isUnknownOrRightAndIsKnownLater) {
    for (const char* const name :
         {"SPECTRAL_NM_000000400", "A_declared_name_of_a_field", "SampleName", "lab_l", "5CLR_00000000000001",
          "SPOT_00000000000001", "PC0_00000000000001"}) {
        SCOPED_TRACE(name);
        TCgats whole;
        int kind = -7, number = -7, dataType = -7;
        std::string expectedName;
        whole.AddCustomField("A_DECLARED_NAME_OF_A_FIELD");
        const int expected = whole.MatchField(name, &kind, &number, &dataType, &expectedName);
        ASSERT_GE(expected, 0);
        for (const bool once : {true, false}) {
            for (int allowed = 0;; ++allowed) {
                TCgats document;
                document.AddCustomField("A_DECLARED_NAME_OF_A_FIELD");
                std::string canonicalName;
                AllocationFaults faults(allowed, once);
                faults.arm();
                const int answer = document.MatchField(name, &kind, &number, &dataType, &canonicalName);
                faults.disarm();
                EXPECT_EQ(answer, faults.happened() ? -1 : expected);
                EXPECT_EQ(document.MatchField(name, &kind, &number, &dataType, &canonicalName), expected);
                EXPECT_EQ(canonicalName, expectedName);
                if (!faults.happened())
                    break;
            }
        }
    }
}

// Queries.

// A measurement is whole or null, and there later.
TEST_F(cgatsFaults, measurementWithoutMemory_isWholeOrNull) {
    const TCgats document(kDocument.c_str(), 0);
    ASSERT_EQ(document.GetErrorCode(), 0);
    const TSpectrum light = spectrumOf(kD65);
    TIlluminant lamp(&light, "lamp");
    const TMeasGeom geometry(3);
    for (const int table : {0, 1}) {
        TObserver observer(0);
        const std::unique_ptr<TOneMeasurement> whole(
            document.GetMeasurement(table, 0, &lamp, &observer, &geometry));
        double expected[3];
        ASSERT_NE(whole, nullptr);
        ASSERT_EQ(whole->GetXYZ(&lamp, &observer, expected), 0);
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            std::unique_ptr<TOneMeasurement> measurement(
                document.GetMeasurement(table, 0, &lamp, &observer, &geometry));
            faults.disarm();
            EXPECT_EQ(measurement == nullptr, faults.happened());
            if (measurement == nullptr)
                measurement.reset(document.GetMeasurement(table, 0, &lamp, &observer, &geometry));
            ASSERT_NE(measurement, nullptr);
            EXPECT_EQ(measurement->GetStatus(), 0);
            double xyz[3] = {7, 7, 7};
            EXPECT_EQ(measurement->GetXYZ(&lamp, &observer, xyz), 0);
            EXPECT_THAT(xyz, ElementsAreArray(expected));
            int count = -7, expectedCount = -7;
            whole->GetCoord(&expectedCount);
            measurement->GetCoord(&count);
            EXPECT_EQ(count, expectedCount);
            ASSERT_NE(measurement->GetGeometry(), nullptr);
            EXPECT_EQ(measurement->GetGeometry()->GetNumber(), 3u);
        });
    }
}

// Solids are all found or 1 is answered, and they are found later.
TEST_F(cgatsFaults, solidsWithoutMemory_answer1) {
    const TCgats document(kSolids.c_str(), 0);
    ASSERT_EQ(document.GetErrorCode(), 0);
    double colours[4][3];
    double* const result[4] = {colours[0], colours[1], colours[2], colours[3]};
    using Query = std::function<int()>;
    for (const Query& query : {Query([&] { return document.GetColorValues(0, result, true, true); }),
                               Query([&] { return document.GetProcessColorSpectra(0, result); }),
                               Query([&] { return document.GetProcessColorValues(0, result, false); }),
                               Query([&] { return document.GetProcessColorLab(0, result); })}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            const int answer = query();
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? 1 : 0);
            EXPECT_EQ(query(), 0);
        });
    }
}

} // namespace
} // namespace qxcms::tests
