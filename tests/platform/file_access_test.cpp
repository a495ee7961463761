#include <cstdio>
#include <memory>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/logical_names.h"
#include "tests/support/scratch.h"

namespace {

using qxcms::tests::ScratchFolder;

struct Closer {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, Closer>;

File open(const std::string& path, const char* mode) {
    return File(std::fopen(path.c_str(), mode));
}

TEST(fileAccess, end_isTheSizeOfTheFile) {
    const ScratchFolder folder;
    EXPECT_EQ(fgeteof(open(folder.write("a", "12345"), "rb").get()), 5);
    EXPECT_EQ(fgeteof(open(folder.write("b", ""), "rb").get()), 0);
}

TEST(fileAccess, askingForTheEnd_leavesThePosition) {
    const ScratchFolder folder;
    const File file = open(folder.write("a", "12345"), "rb");
    EXPECT_EQ(std::fgetc(file.get()), '1');
    EXPECT_EQ(fgeteof(file.get()), 5);
    EXPECT_EQ(std::fgetc(file.get()), '2');
}

TEST(fileAccess, end_countsWhatIsStillBuffered) {
    const ScratchFolder folder;
    const File file = open(folder.path("a"), "wb");
    std::fputs("abc", file.get());
    EXPECT_EQ(fgeteof(file.get()), 3);
    std::fputs("d", file.get());
    EXPECT_EQ(fgeteof(file.get()), 4);
}

TEST(fileAccess, endOfAPipe_cannotBeTold) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const File reading(fdopen(ends[0], "rb"));
    close(ends[1]);
    EXPECT_EQ(fgeteof(reading.get()), -1);
}

TEST(fileAccess, endOfNoFile_cannotBeTold) {
    EXPECT_EQ(fgeteof(nullptr), -1);
}

TEST(fileAccess, reading_givesTheNumberOfBytesThatWereThere) {
    const ScratchFolder folder;
    const File file = open(folder.write("a", std::string("a\0\r\n\x1A", 5)), "rb");
    char bytes[8] = "#######";
    EXPECT_EQ(fgetm(file.get(), bytes, 2), 2);
    EXPECT_EQ(std::string(bytes, 3), std::string("a\0#", 3));
    EXPECT_EQ(fgetm(file.get(), bytes, 8), 3);
    EXPECT_EQ(std::string(bytes, 4), "\r\n\x1A#");
    EXPECT_EQ(fgetm(file.get(), bytes, 8), 0);
}

TEST(fileAccess, writing_givesTheNumberOfBytesWritten) {
    const ScratchFolder folder;
    File file = open(folder.path("a"), "wb");
    EXPECT_EQ(fputm(file.get(), "x\0\n", 3), 3);
    file.reset();
    EXPECT_EQ(ScratchFolder::read(folder.path("a")), std::string("x\0\n", 3));
}

TEST(fileAccess, writingIntoAFileForReading_writesNothing) {
    const ScratchFolder folder;
    EXPECT_EQ(fputm(open(folder.write("a", "12345"), "rb").get(), "abc", 3), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("a")), "12345");
}

TEST(fileAccess, nothingToTransfer_transfersNothing) {
    const ScratchFolder folder;
    const File file = open(folder.write("a", "12345"), "r+b");
    char byte = '#';
    EXPECT_EQ(fgetm(file.get(), &byte, 0), 0);
    EXPECT_EQ(fgetm(file.get(), &byte, -1), 0);
    EXPECT_EQ(fgetm(file.get(), nullptr, 1), 0);
    EXPECT_EQ(fgetm(nullptr, &byte, 1), 0);
    EXPECT_EQ(fputm(file.get(), &byte, 0), 0);
    EXPECT_EQ(fputm(file.get(), &byte, -1), 0);
    EXPECT_EQ(fputm(file.get(), nullptr, 1), 0);
    EXPECT_EQ(fputm(nullptr, &byte, 1), 0);
    EXPECT_EQ(byte, '#');
    EXPECT_EQ(ScratchFolder::read(folder.path("a")), "12345");
}

TEST(fileAccess, oneByte_isTransferred) {
    const ScratchFolder folder;
    const std::string path = folder.path("a");
    EXPECT_EQ(fputm(open(path, "wb").get(), "x", 1), 1);
    char byte = 0;
    EXPECT_EQ(fgetm(open(path, "rb").get(), &byte, 1), 1);
    EXPECT_EQ(byte, 'x');
}

} // namespace
