// The two vocabularies: 43 keywords of header lines, 40 names of standard fields.
#include <cctype>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

const std::vector<std::string>& keywords() {
    static const std::vector<std::string> list = {"ORIGINATOR",
                                                  "FILE_DESCRIPTOR",
                                                  "CREATED",
                                                  "NUMBER_OF_FIELDS",
                                                  "BEGIN_DATA_FORMAT",
                                                  "END_DATA_FORMAT",
                                                  "INSTRUMENTATION",
                                                  "MEASUREMENT_GEOMETRY",
                                                  "MEASUREMENT_SOURCE",
                                                  "FILTER",
                                                  "POLARIZATION",
                                                  "WEIGHTING_FUNCTION",
                                                  "COMPUTATIONAL_PARAMETER",
                                                  "SAMPLE_BACKING",
                                                  "MANUFACTURER",
                                                  "MATERIAL",
                                                  "TARGET_TYPE",
                                                  "COLORANT",
                                                  "PROD_DATE",
                                                  "PRINT_CONDITIONS",
                                                  "SERIAL",
                                                  "PROCESSCOLOR_ID",
                                                  "SPOT_ID",
                                                  "NUMBER_OF_SETS",
                                                  "BEGIN_DATA",
                                                  "END_DATA",
                                                  "DATA_FORMAT_IDENTIFIER",
                                                  "TABLE_DESCRIPTOR",
                                                  "TABLE_NAME",
                                                  "KEYWORD",
                                                  "NumberOfStrips",
                                                  "LGOROWLENGTH",
                                                  "NUMBER_OF_STRIPS",
                                                  "NUMBER_OF_COLS",
                                                  "BORDER_PATCHES",
                                                  "DEVICE",
                                                  "PATCH_HEIGHT",
                                                  "PATCH_WIDTH",
                                                  "GAP_SIZE_X",
                                                  "GAP_SIZE_Y",
                                                  "MIRROR_X",
                                                  "INKSET",
                                                  "LAYOUT_TYPE"};
    return list;
}

const std::vector<std::string>& fieldNames() {
    static const std::vector<std::string> list = {
        "SAMPLE_ID",   "STRING",       "CMYK_C",       "CMYK_M",         "CMYK_Y",     "CMYK_K",  "D_RED",
        "D_GREEN",     "D_BLUE",       "D_VIS",        "D_MAJOR_FILTER", "RGB_R",      "RGB_G",   "RGB_B",
        "SPECTRAL_NM", "SPECTRAL_PCT", "SPECTRAL_DEC", "XYZ_X",          "XYZ_Y",      "XYZ_Z",   "XYY_X",
        "XYY_Y",       "XYY_GAPY",     "LAB_L",        "LAB_A",          "LAB_B",      "LAB_C",   "LAB_H",
        "LAB_DE",      "LAB_DE_94",    "LAB_DE_CMC",   "LAB_DE_2000",    "MEAN_DE",    "STDEV_X", "STDEV_Y",
        "STDEV_Z",     "STDEV_L",      "STDEV_A",      "STDEV_B",        "CHI_SQD_PAR"};
    return list;
}

std::string lowered(std::string text) {
    for (char& character : text)
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    return text;
}

std::string raised(std::string text) {
    for (char& character : text)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

// ---- Keywords

TEST(cgatsVocabulary, keywords_haveTheirCodes) {
    ASSERT_EQ(keywords().size(), 43u);
    const TCgats document;
    for (std::size_t code = 0; code < keywords().size(); ++code)
        EXPECT_EQ(document.MatchTag(keywords()[code].c_str()), static_cast<int>(code)) << keywords()[code];
}

TEST(cgatsVocabulary, keywords_countTheirCase) {
    const TCgats document;
    for (const std::string& keyword : keywords())
        EXPECT_EQ(document.MatchTag(lowered(keyword).c_str()), -1) << keyword;
    EXPECT_EQ(document.MatchTag("NUMBEROFSTRIPS"), -1);
    EXPECT_EQ(document.MatchTag("Created"), -1);
}

TEST(cgatsVocabulary, keywords_areWholeWords) {
    const TCgats document;
    for (const std::string& keyword : keywords()) {
        EXPECT_EQ(document.MatchTag((keyword + "_").c_str()), -1) << keyword;
        EXPECT_EQ(document.MatchTag((keyword + " ").c_str()), -1) << keyword;
        EXPECT_EQ(document.MatchTag((" " + keyword).c_str()), -1) << keyword;
        EXPECT_EQ(document.MatchTag(keyword.substr(1).c_str()), -1) << keyword;
    }
    EXPECT_EQ(document.MatchTag("END_DAT"), -1);
    EXPECT_EQ(document.MatchTag(""), -1);
    EXPECT_EQ(document.MatchTag("CGATS.17"), -1);
}

TEST(cgatsVocabulary, eachKeywordAlone_isStoredWithItsCodeUnlessItOpensASection) {
    for (std::size_t code = 0; code < keywords().size(); ++code) {
        for (const char* lineEnd : {"", "\n", "\r", "\r\n"}) {
            const std::string& keyword = keywords()[code];
            const Reading reading(keyword + lineEnd);
            if (keyword == "BEGIN_DATA_FORMAT") {
                EXPECT_EQ(reading.code, 9);
                EXPECT_EQ(reading.document.GetNrTags(), 0);
            } else if (keyword == "BEGIN_DATA") {
                EXPECT_EQ(reading.code, 6);
                EXPECT_EQ(reading.document.GetNrTags(), 0);
            } else {
                EXPECT_EQ(reading.code, 0) << keyword;
                ASSERT_EQ(reading.document.GetNrTags(), 1) << keyword;
                EXPECT_EQ(reading.document.GetTagAt(0)->GetCode(), static_cast<int>(code));
                EXPECT_EQ(reading.document.GetTagAt(0)->GetKeyword(), keyword);
            }
        }
    }
}

TEST(cgatsVocabulary, eachKeywordWithAValue_isStoredWithItsCode) {
    for (std::size_t code = 0; code < keywords().size(); ++code) {
        const std::string& keyword = keywords()[code];
        if (keyword.rfind("BEGIN_", 0) == 0)
            continue;
        const Reading reading(keyword + " \"7\"\n");
        EXPECT_EQ(reading.code, 0);
        ASSERT_EQ(reading.document.GetNrTags(), 1);
        EXPECT_EQ(reading.document.GetTagAt(0)->GetCode(), static_cast<int>(code));
        EXPECT_STREQ(reading.document.GetTagAt(0)->GetValue(), "7");
    }
}

// ---- Field names

TEST(cgatsVocabulary, fieldNames_haveTheirIndexTypeAndSpelling) {
    ASSERT_EQ(fieldNames().size(), 40u);
    for (std::size_t index = 0; index < fieldNames().size(); ++index) {
        const std::string& name = fieldNames()[index];
        for (const std::string& given : {name, lowered(name), raised(name)}) {
            TCgats document;
            int kind = -9;
            int number = -9;
            int dataType = -9;
            std::string canonicalName;
            EXPECT_EQ(document.MatchField(given.c_str(), &kind, &number, &dataType, &canonicalName),
                      static_cast<int>(index))
                << given;
            EXPECT_EQ(kind, TCgatsField::kStandard) << given;
            EXPECT_EQ(number, 0) << given;
            EXPECT_EQ(dataType, index < 2 ? TCgatsField::kString : TCgatsField::kFloat) << given;
            EXPECT_EQ(canonicalName, name);
            EXPECT_EQ(document.GetNrCustomFields(), 0);
        }
    }
}

TEST(cgatsVocabulary, fieldNames_areWholeWords) {
    TCgats document;
    int kind = 0;
    int number = 0;
    int dataType = 0;
    std::string canonicalName;
    for (const std::string& name : fieldNames()) {
        EXPECT_EQ(document.MatchField((name + "_").c_str(), &kind, &number, &dataType, &canonicalName), -1)
            << name;
        EXPECT_EQ(document.MatchField(name.substr(1).c_str(), &kind, &number, &dataType, &canonicalName), -1)
            << name;
    }
}

TEST(cgatsVocabulary, everyFieldName_makesAColumn) {
    std::string names;
    for (const std::string& name : fieldNames())
        names += lowered(name) + "\n";
    const Reading reading(formatText(names));
    EXPECT_EQ(reading.code, 0);
    ASSERT_NE(reading.document.GetTmpHeader(), nullptr);
    EXPECT_EQ(namesOf(*reading.document.GetTmpHeader()), fieldNames());
    for (int i = 0; i < 40; ++i) {
        const TCgatsField& field = *reading.document.GetTmpHeader()->GetField(i);
        EXPECT_EQ(field.GetFieldId(), i);
        EXPECT_EQ(field.GetKind(), 0);
        EXPECT_EQ(field.GetNumber(), 0);
        EXPECT_EQ(field.GetDataType(), i < 2 ? 0 : 2);
        EXPECT_EQ(field.GetBad(), 0);
    }
}

} // namespace
} // namespace qxcms::tests
