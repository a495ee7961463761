#include <string>

#include <gtest/gtest.h>

#include "platform/file_name_encoding.h"

namespace {

int converted(const std::string& in, std::string& out, int size = 256) {
    std::string buffer(256, '~');
    const int result = UTF8ToLocalEncoding(in.c_str(), buffer.data(), size);
    out = buffer.c_str();
    return result;
}

TEST(fileNameEncoding, utf8_isWhatTheFileSystemTakes) {
    std::string out;
    for (const std::string name :
         {"", "a",
          "Gr\xC3\xB6\xC3\x9F"
          "e",
          "\xE4\xB8\xAD.txt", "\xF0\x9F\x8E\xA8", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF4\x8F\xBF\xBF",
          "\xE0\xA0\x80", "\xF0\x90\x80\x80", "\xC2\x80", "\xDF\xBF"}) {
        EXPECT_EQ(converted(name, out), 0) << name;
        EXPECT_EQ(out, name);
    }
}

TEST(fileNameEncoding, otherBytes_areRefusedWithAnEmptyName) {
    std::string out;
    for (const std::string name :
         {"\xFF", "\x80", "\xC3", "\xC3(", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xE4\xB8", "\xED\xA0\x80",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF0\x9F\x8E", "\xE4\xB8\xAD\xFF",
          "\xF0\x9F\x8E\xA8\xFF",
          "a\xE4"
          "b"}) {
        EXPECT_NE(converted(name, out), 0) << name;
        EXPECT_EQ(out, "");
    }
}

TEST(fileNameEncoding, name_mustFitWithItsTerminator) {
    std::string out;
    EXPECT_EQ(converted("abc", out, 4), 0);
    EXPECT_EQ(out, "abc");
    EXPECT_NE(converted("abc", out, 3), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(converted("", out, 1), 0);
}

TEST(fileNameEncoding, withoutRoomOrName_nothingIsConverted) {
    char out[] = "x";
    EXPECT_NE(UTF8ToLocalEncoding("a", out, 0), 0);
    EXPECT_STREQ(out, "x");
    EXPECT_NE(UTF8ToLocalEncoding("a", nullptr, 5), 0);
    EXPECT_NE(UTF8ToLocalEncoding(nullptr, out, 2), 0);
    EXPECT_STREQ(out, "");
}

} // namespace
