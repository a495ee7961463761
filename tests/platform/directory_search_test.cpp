#include <climits>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/logical_names.h"
#include "tests/support/scratch.h"

namespace {

namespace fs = std::filesystem;
using qxcms::tests::ScratchFolder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned char kRegularFiles = 2;

struct Freer {
    void operator()(fsearch_state* search) const { fsfree(search); }
};
using Search = std::unique_ptr<fsearch_state, Freer>;

Search search(const std::string& directory, const unsigned char* option = &kRegularFiles) {
    return Search(fsinit(directory.c_str(), option));
}

std::vector<std::string> found(const Search& search, int size = PATH_MAX) {
    std::vector<std::string> paths;
    std::vector<char> path(static_cast<std::size_t>(size));
    while (fsearch(search.get(), path.data(), size) == 0)
        paths.emplace_back(path.data());
    return paths;
}

TEST(directorySearch, files_comeWithTheirPath) {
    const ScratchFolder folder;
    const std::string file = folder.write("D50.ill", "");
    EXPECT_THAT(found(search(folder.path())), ElementsAre(file));
}

TEST(directorySearch, names_comeInAscendingByteOrder) {
    const ScratchFolder folder;
    for (const char* name : {"b", "a", "B", "\xC3\xA4", "_", "a b", "F10", "F2", ".hidden", "ab"})
        folder.write(name, "");
    std::vector<std::string> expected;
    for (const char* name : {".hidden", "B", "F10", "F2", "_", "a", "a b", "ab", "b", "\xC3\xA4"})
        expected.push_back(folder.path(name));
    EXPECT_EQ(found(search(folder.path())), expected);
}

TEST(directorySearch, onlyRegularFiles_areFound) {
    const ScratchFolder folder;
    const std::string file = folder.write("file", "");
    fs::create_directory(folder.path("folder"));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_THAT(found(search(folder.path())), ElementsAre(file));
}

TEST(directorySearch, symbolicLinks_areFollowed) {
    const ScratchFolder folder;
    const ScratchFolder elsewhere;
    fs::create_symlink(elsewhere.write("file", ""), folder.path("link"));
    fs::create_symlink(elsewhere.path(), folder.path("toFolder"));
    fs::create_symlink(elsewhere.path("missing"), folder.path("toNothing"));
    fs::create_symlink("toItself", folder.path("toItself"));
    EXPECT_THAT(found(search(folder.path())), ElementsAre(folder.path("link")));
}

TEST(directorySearch, subdirectories_areNotSearched) {
    const ScratchFolder folder;
    fs::create_directory(folder.path("inner"));
    folder.write("inner/file", "");
    EXPECT_THAT(found(search(folder.path())), IsEmpty());
}

TEST(directorySearch, separatorAtTheEnd_isNotDoubled) {
    const ScratchFolder folder;
    const std::string file = folder.write("file", "");
    EXPECT_THAT(found(search(folder.path() + "/")), ElementsAre(file));
}

TEST(directorySearch, logicalDirectory_isTranslated) {
    const ScratchFolder folder;
    fs::create_directories(folder.path("r/ill"));
    const std::string file = folder.write("r/ill/D50.ill", "");
    ASSERT_EQ(deflognam("SEARCH_ROOT", folder.path().c_str()), 0);
    EXPECT_THAT(found(search("SEARCH_ROOT:[r.ill]")), ElementsAre(file));
    deflognam("SEARCH_ROOT", nullptr);
    EXPECT_EQ(search("SEARCH_ROOT:[r.ill]"), nullptr);
}

TEST(directorySearch, whatCannotBeSearched_startsNoSearch) {
    const ScratchFolder folder;
    EXPECT_EQ(search(folder.path("missing")), nullptr);
    EXPECT_EQ(search(folder.write("file", "")), nullptr);
    EXPECT_EQ(search(""), nullptr);
    EXPECT_EQ(fsinit(nullptr, &kRegularFiles), nullptr);
}

TEST(directorySearch, option_isTwoOrLeftOut) {
    const ScratchFolder folder;
    const std::string file = folder.write("file", "");
    EXPECT_THAT(found(search(folder.path(), nullptr)), ElementsAre(file));
    const unsigned char other = 1;
    EXPECT_EQ(search(folder.path(), &other), nullptr);
}

TEST(directorySearch, emptyDirectory_yieldsNothing) {
    const ScratchFolder folder;
    const Search empty = search(folder.path());
    ASSERT_NE(empty, nullptr);
    char path[] = "before";
    EXPECT_EQ(fsearch(empty.get(), path, sizeof path), -1);
    EXPECT_STREQ(path, "");
}

TEST(directorySearch, end_isReportedAgainAndAgain) {
    const ScratchFolder folder;
    folder.write("file", "");
    const Search all = search(folder.path());
    EXPECT_EQ(found(all).size(), 1u);
    EXPECT_THAT(found(all), IsEmpty());
}

TEST(directorySearch, pathThatDoesNotFit_isLeftOut) {
    const ScratchFolder folder;
    folder.write("a-longer-name", "");
    const std::string shorter = folder.write("b-short", "");
    folder.write("c-longer-name", "");
    const int fitting = static_cast<int>(shorter.size()) + 1;
    EXPECT_THAT(found(search(folder.path()), fitting), ElementsAre(shorter));
    EXPECT_THAT(found(search(folder.path()), fitting - 1), IsEmpty());
}

TEST(directorySearch, withoutRoomOrSearch_nothingIsTouched) {
    const ScratchFolder folder;
    const std::string file = folder.write("file", "");
    const Search all = search(folder.path());
    char path[] = "before";
    EXPECT_EQ(fsearch(all.get(), path, 0), -1);
    EXPECT_EQ(fsearch(all.get(), path, -1), -1);
    EXPECT_EQ(fsearch(all.get(), nullptr, 100), -1);
    EXPECT_EQ(fsearch(nullptr, path, sizeof path), -1);
    EXPECT_STREQ(path, "before");
    EXPECT_THAT(found(all), ElementsAre(file));
}

TEST(directorySearch, searches_areIndependent) {
    const ScratchFolder folder;
    const std::string a = folder.write("a", "");
    const std::string b = folder.write("b", "");
    const Search one = search(folder.path());
    char path[PATH_MAX];
    ASSERT_EQ(fsearch(one.get(), path, sizeof path), 0);
    EXPECT_THAT(found(search(folder.path())), ElementsAre(a, b));
    EXPECT_THAT(found(one), ElementsAre(b));
}

TEST(directorySearch, endOfNoSearch_isAccepted) {
    fsfree(nullptr);
}

TEST(directorySearch, pathThatJustFits_writesNothingBehindIt) {
    const ScratchFolder folder;
    const std::string path = folder.write("a", "");
    std::vector<char> out(path.size() + 2, '~');
    const Search files = search(folder.path());
    EXPECT_EQ(fsearch(files.get(), out.data(), static_cast<int>(path.size()) + 1), 0);
    EXPECT_STREQ(out.data(), path.c_str());
    EXPECT_EQ(out.back(), '~');
}

TEST(directorySearch, roomForTheTerminatorAlone_takesIt) {
    const ScratchFolder folder;
    folder.write("a", "");
    char out[] = "x";
    EXPECT_EQ(fsearch(search(folder.path()).get(), out, 1), -1);
    EXPECT_EQ(out[0], '\0');
}

} // namespace
