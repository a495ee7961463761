// What an honest document costs to read: its text, its values, and little besides.
#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "fuzz/memory_meter.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

constexpr std::size_t kRows = 5000;
constexpr std::size_t kColumns = 40;

std::string chart() {
    std::string text = "NUMBER_OF_FIELDS 40\nBEGIN_DATA_FORMAT\n";
    for (std::size_t i = 0; i < kColumns; ++i)
        text += "nm" + std::to_string(380 + 10 * i) + '\n';
    text += "END_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(kRows) + "\nBEGIN_DATA\n";
    for (std::size_t i = 0; i < kRows * kColumns; ++i)
        text += "0.1234" + std::to_string(i % 10) + '\n';
    return text + "END_DATA\n";
}

constexpr double kValues = 8.0 * kRows * kColumns;

TEST(readingMemory, ofAText_isThatOfItsValues) {
    const std::string text = chart();
    const fuzz::MemoryMeter meter;
    const TCgats document(text.c_str(), 0);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_LE(static_cast<double>(meter.peak()), 1.2 * kValues);
    EXPECT_GE(static_cast<double>(meter.peak()), kValues);
}

TEST(readingMemory, ofAFile_isThatOfItsTextAndValues) {
    const ScratchFolder folder;
    const std::string text = chart();
    const std::string path = folder.write("chart.txt", text);
    const fuzz::MemoryMeter meter;
    const TCgats document(path.c_str());
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_LE(static_cast<double>(meter.peak()), static_cast<double>(text.size()) + 1.2 * kValues);
}

} // namespace
} // namespace qxcms::tests
