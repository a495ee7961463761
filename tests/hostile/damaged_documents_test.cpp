// Documents that are cut off or damaged in one byte: every one of them is answered with a documented code,
// within the limits of memory, and all that can be asked of what is left agrees with itself.
#include <string>

#include <gtest/gtest.h>

#include "fuzz/document_questions.h"
#include "tests/hostile/measured.h"

namespace qxcms::tests {
namespace {

// A small document with every kind of section.
const std::string kSmall = "BEGIN_X\na\nEND_X\n"
                           "KEYWORD \"b\"#c\n"
                           "SPOT_ID d\n"
                           "NUMBER_OF_FIELDS 6\n"
                           "BEGIN_DATA_FORMAT\n"
                           "b SPOT_1 LAB_L LAB_A LAB_B nm4\n"
                           "END_DATA_FORMAT\n"
                           "NUMBER_OF_SETS 2\n"
                           "BEGIN_DATA\n"
                           "\"e f\" 0 1 2 3 .5 g 1,5 4 5 6 99\n"
                           "END_DATA\n";

void expectOneOfItsAnswers(const std::string& text) {
    const MeasuredReading reading(text);
    ASSERT_TRUE(fuzz::isReaderCode(reading.code())) << reading.code() << "\n" << text;
    ASSERT_TRUE(staysWithinMemory(reading)) << text;
    fuzz::askEverything(*reading.document);
}

TEST(damagedDocuments, wholeOne_isRead) {
    const MeasuredReading reading(kSmall);
    EXPECT_EQ(reading.code(), 0);
    EXPECT_EQ(reading.document->GetNrTables(), 1);
    EXPECT_TRUE(reading.document->ContainsLab(0));
}

TEST(damagedDocuments, everyPrefix_hasItsAnswer) {
    for (const std::string& text : {kSmall, everythingText()})
        for (std::size_t length = 0; length <= text.size(); ++length)
            ASSERT_NO_FATAL_FAILURE(expectOneOfItsAnswers(text.substr(0, length)));
}

TEST(damagedDocuments, everyMissingByte_hasItsAnswer) {
    const std::string text = everythingText();
    for (std::size_t place = 0; place < text.size(); ++place)
        ASSERT_NO_FATAL_FAILURE(expectOneOfItsAnswers(std::string(text).erase(place, 1)));
}

TEST(damagedDocuments, everyOtherByte_hasItsAnswer) {
    for (std::size_t place = 0; place < kSmall.size(); ++place)
        for (int byte = 1; byte < 256; ++byte) {
            std::string text = kSmall;
            text[place] = static_cast<char>(byte);
            ASSERT_NO_FATAL_FAILURE(expectOneOfItsAnswers(text));
        }
}

TEST(damagedDocuments, everyByteWithAMeaningAtEveryPlace_hasItsAnswer) {
    const std::string text = everythingText();
    for (std::size_t place = 0; place <= text.size(); ++place)
        for (const char byte : std::string("\n\r\t \"#,-09_")) {
            std::string damaged = text;
            damaged.insert(place, 1, byte);
            ASSERT_NO_FATAL_FAILURE(expectOneOfItsAnswers(damaged));
        }
}

TEST(damagedDocuments, everyTwoPartsSwapped_haveTheirAnswer) {
    const std::string text = everythingText();
    for (std::size_t first = 0; first < text.size(); first += 23)
        for (std::size_t second = first; second < text.size(); second += 23)
            ASSERT_NO_FATAL_FAILURE(expectOneOfItsAnswers(text.substr(0, first) + text.substr(second) +
                                                          text.substr(first, second - first)));
}

} // namespace
} // namespace qxcms::tests
