#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/logical_names.h"
#include "platform/utility.h"
#include "tests/support/scratch.h"

namespace {

namespace fs = std::filesystem;
using qxcms::tests::ScratchFolder;

FILE* openForWriting(const std::string& path) {
    return open_resolved_file(path.c_str(), "w");
}

/// Writes a whole file. @return the result of closing it, or -2 when it could not be opened.
int writeFile(const std::string& path, const std::string& bytes) {
    FILE* const file = openForWriting(path);
    if (file == nullptr)
        return -2;
    fputm(file, bytes.data(), static_cast<long>(bytes.size()));
    return close_resolved_file(file);
}

std::size_t entries(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

mode_t modeBits(const std::string& path) {
    struct stat state = {};
    EXPECT_EQ(stat(path.c_str(), &state), 0);
    return state.st_mode & 07777;
}

ino_t inode(const std::string& path) {
    struct stat state = {};
    EXPECT_EQ(stat(path.c_str(), &state), 0);
    return state.st_ino;
}

constexpr int kUnreachable = 77;

/// The result of `action` in a process of its own.
int resultInAChild(const std::function<int()>& action) {
    const pid_t child = fork();
    if (child == 0)
        _exit(action());
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

/// The result of `action` under a user without privileges, kUnreachable when that one cannot look into
/// `folder`.
int resultAsAnOrdinaryUser(const std::string& folder, const std::function<int()>& action) {
    constexpr uid_t kNobody = 65534;
    return resultInAChild([&] {
        if (geteuid() == 0 && (setegid(kNobody) != 0 || seteuid(kNobody) != 0))
            return kUnreachable;
        if (faccessat(AT_FDCWD, folder.c_str(), R_OK | X_OK, AT_EACCESS) != 0)
            return kUnreachable;
        return action();
    });
}

constexpr char kNoDevice[] = "no device can be made here, and those of the system could come to harm";

/// A memory device (major number 1), empty when there is none. Whoever may write to /dev gets one in
/// `folder`: a mistake in what is tested here must not replace a device of the system by a file.
std::string device(const ScratchFolder& folder, const std::string& name, unsigned minorNumber) {
    const std::string own = folder.path(name);
    if (mknod(own.c_str(), S_IFCHR | 0666, makedev(1, minorNumber)) == 0) {
        const int descriptor = open(own.c_str(), O_WRONLY);
        if (descriptor >= 0) {
            close(descriptor);
            return own;
        }
    }
    return access("/dev", W_OK) != 0 ? "/dev/" + name : std::string();
}

/// The mask for new files for one test.
class Umask {
public:
    explicit Umask(mode_t mask) : old(umask(mask)) {}
    ~Umask() { umask(old); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t old;
};

TEST(resolvedFile, reading_givesTheBytesAsTheyStand) {
    const ScratchFolder folder;
    const std::string bytes("a\r\nb\0c\x1A\n", 8);
    FILE* const file = open_resolved_file(folder.write("file", bytes).c_str(), "r");
    ASSERT_NE(file, nullptr);
    char read[16];
    const long count = fgetm(file, read, sizeof read);
    EXPECT_EQ(std::string(read, static_cast<std::size_t>(count)), bytes);
    EXPECT_EQ(close_resolved_file(file), 0);
}

TEST(resolvedFile, writing_putsTheBytesAsTheyStand) {
    const ScratchFolder folder;
    const std::string bytes("a\r\nb\0c\x1A\n", 8);
    EXPECT_EQ(writeFile(folder.path("file"), bytes), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("file")), bytes);
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, name_mayBeALogicalOne) {
    const ScratchFolder folder;
    fs::create_directories(folder.path("w/ill"));
    ASSERT_EQ(deflognam("QX_TEST", folder.path().c_str()), 0);
    EXPECT_EQ(writeFile("QX_TEST:[w.ill]d65.ill", "content"), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("w/ill/d65.ill")), "content");
    FILE* const file = open_resolved_file("QX_TEST:[w.ill]d65.ill", "r");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::fgetc(file), 'c');
    EXPECT_EQ(close_resolved_file(file), 0);
    deflognam("QX_TEST", nullptr);
    EXPECT_EQ(open_resolved_file("QX_TEST:[w.ill]d65.ill", "r"), nullptr);
}

TEST(resolvedFile, modes_areReadingAndWritingOnly) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "content");
    for (const char* const mode : {"", "a", "rb", "wb", "r+", "w+", "R", "x", "rw"})
        EXPECT_EQ(open_resolved_file(path.c_str(), mode), nullptr) << mode;
    EXPECT_EQ(ScratchFolder::read(path), "content");
}

TEST(resolvedFile, nullArguments_openNothing) {
    const ScratchFolder folder;
    EXPECT_EQ(open_resolved_file(nullptr, "r"), nullptr);
    EXPECT_EQ(open_resolved_file(nullptr, "w"), nullptr);
    EXPECT_EQ(open_resolved_file(folder.path("file").c_str(), nullptr), nullptr);
    EXPECT_NE(close_resolved_file(nullptr), 0);
    EXPECT_EQ(entries(folder.path()), 0u);
}

TEST(resolvedFile, whatIsNotThere_cannotBeRead) {
    const ScratchFolder folder;
    EXPECT_EQ(open_resolved_file(folder.path("missing").c_str(), "r"), nullptr);
    EXPECT_EQ(open_resolved_file("", "r"), nullptr);
}

TEST(resolvedFile, directory_isNoFile) {
    const ScratchFolder folder;
    EXPECT_EQ(open_resolved_file(folder.path().c_str(), "r"), nullptr);
    EXPECT_EQ(open_resolved_file(folder.path().c_str(), "w"), nullptr);
    EXPECT_EQ(open_resolved_file((folder.path() + "/new/").c_str(), "w"), nullptr);
    EXPECT_EQ(entries(folder.path()), 0u);
}

TEST(resolvedFile, whereNothingCanBeCreated_nothingIsOpened) {
    const ScratchFolder folder;
    const std::string file = folder.write("file", "content");
    EXPECT_EQ(openForWriting(file + "/below"), nullptr);
    EXPECT_EQ(openForWriting(folder.path("missing/file")), nullptr);
    EXPECT_EQ(openForWriting(""), nullptr);
    EXPECT_EQ(ScratchFolder::read(file), "content");
}

TEST(resolvedFile, oldFile_staysAsItWasUntilTheNewOneIsClosed) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "old content");
    FILE* const file = openForWriting(path);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ScratchFolder::read(path), "old content");
    fputm(file, "new", 3);
    std::fflush(file);
    EXPECT_EQ(ScratchFolder::read(path), "old content");
    EXPECT_EQ(close_resolved_file(file), 0);
    EXPECT_EQ(ScratchFolder::read(path), "new");
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, newFile_appearsWhenItIsClosed) {
    const ScratchFolder folder;
    FILE* const file = openForWriting(folder.path("file"));
    ASSERT_NE(file, nullptr);
    std::fflush(file);
    EXPECT_FALSE(fs::exists(folder.path("file")));
    EXPECT_EQ(close_resolved_file(file), 0);
    EXPECT_TRUE(fs::exists(folder.path("file")));
}

TEST(resolvedFile, processThatDies_leavesTheOldFile) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "old content");
    EXPECT_EQ(resultInAChild([&] {
                  FILE* const file = openForWriting(path);
                  fputm(file, "half", 4);
                  std::fflush(file);
                  return 5;
              }),
              5);
    EXPECT_EQ(ScratchFolder::read(path), "old content");
}

TEST(resolvedFile, rewriting_keepsTheModeBits) {
    const ScratchFolder folder;
    for (const mode_t mode : {0600u, 0644u, 0666u, 0751u}) {
        const std::string path = folder.write("file", "old");
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(writeFile(path, "new"), 0);
        EXPECT_EQ(modeBits(path), mode);
        EXPECT_EQ(ScratchFolder::read(path), "new");
    }
}

TEST(resolvedFile, newFile_hasTheUsualModeBits) {
    const ScratchFolder folder;
    const Umask mask(027);
    EXPECT_EQ(writeFile(folder.path("file"), "new"), 0);
    EXPECT_EQ(modeBits(folder.path("file")), 0640u);
}

TEST(resolvedFile, rewritingByThePrivilegedUser_keepsTheOwner) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only the privileged user gives files away";
    const ScratchFolder folder;
    const std::string path = folder.write("file", "old");
    ASSERT_EQ(chown(path.c_str(), 12345, 23456), 0);
    EXPECT_EQ(writeFile(path, "new"), 0);
    struct stat state = {};
    ASSERT_EQ(stat(path.c_str(), &state), 0);
    EXPECT_EQ(state.st_uid, 12345u);
    EXPECT_EQ(state.st_gid, 23456u);
}

TEST(resolvedFile, symbolicLink_isFollowed) {
    const ScratchFolder folder;
    const ScratchFolder elsewhere;
    const std::string path = elsewhere.write("file", "old");
    fs::create_symlink(path, folder.path("second"));
    fs::create_symlink("second", folder.path("first"));
    EXPECT_EQ(writeFile(folder.path("first"), "new"), 0);
    EXPECT_TRUE(fs::is_symlink(folder.path("first")));
    EXPECT_TRUE(fs::is_symlink(folder.path("second")));
    EXPECT_FALSE(fs::is_symlink(path));
    EXPECT_EQ(ScratchFolder::read(path), "new");
    EXPECT_EQ(entries(folder.path()), 2u);
    EXPECT_EQ(entries(elsewhere.path()), 1u);
}

TEST(resolvedFile, linkThroughALinkedFolder_isFollowed) {
    const ScratchFolder folder;
    fs::create_directories(folder.path("deep/inner"));
    fs::create_symlink("deep/inner", folder.path("inner"));
    fs::create_symlink("../file", folder.path("deep/inner/link"));
    EXPECT_EQ(writeFile(folder.path("inner/link"), "new"), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("deep/file")), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path("deep/inner/link")));
}

TEST(resolvedFile, linkToNothing_isFollowedAndItsEndCreated) {
    const ScratchFolder folder;
    fs::create_symlink("missing", folder.path("link"));
    EXPECT_EQ(writeFile(folder.path("link"), "new"), 0);
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_EQ(ScratchFolder::read(folder.path("missing")), "new");
}

TEST(resolvedFile, linkInACircle_cannotBeOpened) {
    const ScratchFolder folder;
    fs::create_symlink("b", folder.path("a"));
    fs::create_symlink("a", folder.path("b"));
    EXPECT_EQ(openForWriting(folder.path("a")), nullptr);
    EXPECT_EQ(open_resolved_file(folder.path("a").c_str(), "r"), nullptr);
    EXPECT_EQ(entries(folder.path()), 2u);
}

TEST(resolvedFile, relativePath_staysWithTheFolderItWasOpenedIn) {
    const ScratchFolder folder;
    const ScratchFolder elsewhere;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    FILE* const file = openForWriting("file");
    fs::current_path(elsewhere.path());
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(close_resolved_file(file), 0);
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(folder.path("file")));
    EXPECT_EQ(entries(elsewhere.path()), 0u);
}

TEST(resolvedFile, longestFileName_isWrittenBeside) {
    const ScratchFolder folder;
    const std::string path = folder.write(std::string(255, 'x'), "old");
    FILE* const file = openForWriting(path);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ScratchFolder::read(path), "old");
    EXPECT_EQ(close_resolved_file(file), 0);
    EXPECT_EQ(ScratchFolder::read(path), "");
}

TEST(resolvedFile, lostWriteToADevice_isReported) {
    const ScratchFolder folder;
    const std::string full = device(folder, "full", 7);
    if (full.empty())
        GTEST_SKIP() << kNoDevice;
    FILE* const file = openForWriting(full);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(fputm(file, "abc", 3), 3);
    EXPECT_NE(close_resolved_file(file), 0);
    EXPECT_TRUE(fs::is_character_file(full));
}

// The write that failed lies long behind when the file is closed with an empty buffer.
TEST(resolvedFile, lostWriteBeforeTheLastOne_isReported) {
    const ScratchFolder folder;
    const std::string full = device(folder, "full", 7);
    if (full.empty())
        GTEST_SKIP() << kNoDevice;
    FILE* const file = openForWriting(full);
    ASSERT_NE(file, nullptr);
    std::setvbuf(file, nullptr, _IONBF, 0);
    EXPECT_EQ(fputm(file, "abc", 3), 0);
    EXPECT_NE(close_resolved_file(file), 0);
}

// Room for 1000 bytes of the 5000.
TEST(resolvedFile, lostWrite_leavesTheOldFileAndNothingElse) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "old content");
    const int result = resultInAChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1000, 1000};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 5;
        return writeFile(path, std::string(5000, 'x')) == -1 ? 0 : 6;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(ScratchFolder::read(path), "old content");
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, targetThatCannotBeReplaced_isReportedAndStays) {
    const ScratchFolder folder;
    FILE* const file = openForWriting(folder.path("target"));
    ASSERT_NE(file, nullptr);
    fs::create_directory(folder.path("target"));
    EXPECT_NE(close_resolved_file(file), 0);
    EXPECT_TRUE(fs::is_directory(folder.path("target")));
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, pipe_isWrittenDirectly) {
    const ScratchFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reading = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reading, 0);
    EXPECT_EQ(writeFile(path, "content"), 0);
    char bytes[16];
    EXPECT_EQ(read(reading, bytes, sizeof bytes), 7);
    EXPECT_EQ(std::string(bytes, 7), "content");
    close(reading);
    EXPECT_TRUE(fs::is_fifo(path));
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, device_isWrittenDirectly) {
    const ScratchFolder folder;
    const std::string null = device(folder, "null", 3);
    if (null.empty())
        GTEST_SKIP() << kNoDevice;
    EXPECT_EQ(writeFile(null, "content"), 0);
    EXPECT_TRUE(fs::is_character_file(null));
}

TEST(resolvedFile, openDescriptor_isWrittenDirectly) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "");
    const ino_t before = inode(path);
    const int descriptor = open(path.c_str(), O_WRONLY);
    ASSERT_GE(descriptor, 0);
    EXPECT_EQ(writeFile("/dev/fd/" + std::to_string(descriptor), "content"), 0);
    close(descriptor);
    EXPECT_EQ(inode(path), before);
    EXPECT_EQ(ScratchFolder::read(path), "content");
}

TEST(resolvedFile, fileInAFolderWithoutWritePermission_isWrittenDirectly) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "a longer old content");
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const ino_t before = inode(path);
    const int result =
        resultAsAnOrdinaryUser(folder.path(), [&] { return writeFile(path, "new") == 0 ? 0 : 5; });
    chmod(folder.path().c_str(), 0755);
    if (result == kUnreachable)
        GTEST_SKIP() << "an ordinary user cannot look into " << folder.path();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(inode(path), before);
    EXPECT_EQ(ScratchFolder::read(path), "new");
}

TEST(resolvedFile, newFileInAFolderWithoutWritePermission_cannotBeOpened) {
    const ScratchFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const int result = resultAsAnOrdinaryUser(
        folder.path(), [&] { return openForWriting(folder.path("file")) == nullptr ? 0 : 5; });
    chmod(folder.path().c_str(), 0755);
    if (result == kUnreachable)
        GTEST_SKIP() << "an ordinary user cannot look into " << folder.path();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(entries(folder.path()), 0u);
}

// The folder would allow to put another file in its place.
TEST(resolvedFile, writeProtectedFile_isNotReplaced) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "old content");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const int result =
        resultAsAnOrdinaryUser(folder.path(), [&] { return openForWriting(path) == nullptr ? 0 : 5; });
    if (result == kUnreachable)
        GTEST_SKIP() << "an ordinary user cannot look into " << folder.path();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(ScratchFolder::read(path), "old content");
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, severalFiles_areKeptApart) {
    const ScratchFolder folder;
    FILE* const a = openForWriting(folder.path("a"));
    FILE* const b = openForWriting(folder.path("b"));
    FILE* const c = openForWriting(folder.path("c"));
    ASSERT_TRUE(a != nullptr && b != nullptr && c != nullptr);
    std::fputs("content of c", c);
    std::fputs("content of a", a);
    std::fputs("content of b", b);
    EXPECT_EQ(close_resolved_file(b), 0);
    EXPECT_EQ(close_resolved_file(a), 0);
    EXPECT_EQ(close_resolved_file(c), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("a")), "content of a");
    EXPECT_EQ(ScratchFolder::read(folder.path("b")), "content of b");
    EXPECT_EQ(ScratchFolder::read(folder.path("c")), "content of c");
}

TEST(resolvedFile, twoWritersOfOneFile_leaveTheOneThatClosedLast) {
    const ScratchFolder folder;
    FILE* const first = openForWriting(folder.path("file"));
    FILE* const second = openForWriting(folder.path("file"));
    ASSERT_TRUE(first != nullptr && second != nullptr);
    std::fputs("first", first);
    std::fputs("second", second);
    EXPECT_EQ(close_resolved_file(second), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("file")), "second");
    EXPECT_EQ(close_resolved_file(first), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("file")), "first");
    EXPECT_EQ(entries(folder.path()), 1u);
}

TEST(resolvedFile, readerOfTheOldFile_keepsReadingIt) {
    const ScratchFolder folder;
    const std::string path = folder.write("file", "old");
    FILE* const reading = open_resolved_file(path.c_str(), "r");
    ASSERT_NE(reading, nullptr);
    EXPECT_EQ(writeFile(path, "new"), 0);
    EXPECT_EQ(std::fgetc(reading), 'o');
    EXPECT_EQ(close_resolved_file(reading), 0);
    EXPECT_EQ(ScratchFolder::read(path), "new");
}

TEST(resolvedFile, leftoversOfADeadProcess_arePassedOver) {
    const ScratchFolder folder;
    // The name of the temporary file ends with a number that counts up: ".qxcms-<process>-<number>.tmp".
    FILE* const first = openForWriting(folder.path("first"));
    ASSERT_NE(first, nullptr);
    const std::string name = fs::directory_iterator(folder.path())->path().stem().string();
    ASSERT_EQ(close_resolved_file(first), 0);
    const std::size_t numberAt = name.rfind('-') + 1;
    const int number = std::stoi(name.substr(numberAt));
    for (int leftover = number + 1; leftover <= number + 100; ++leftover)
        folder.write(name.substr(0, numberAt) + std::to_string(leftover) + ".tmp", "leftover");
    EXPECT_EQ(writeFile(folder.path("second"), "new"), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("second")), "new");
    EXPECT_EQ(entries(folder.path()), 102u);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.path())) {
        if (entry.path().extension() == ".tmp") {
            EXPECT_EQ(ScratchFolder::read(entry.path()), "leftover");
        }
    }
}

TEST(resolvedFile, files_mayBeWrittenFromSeveralThreads) {
    const ScratchFolder folder;
    std::vector<std::thread> threads;
    std::vector<int> failures(4, 0);
    for (std::size_t number = 0; number < failures.size(); ++number)
        threads.emplace_back([number, &failures, &folder] {
            const std::string path = folder.path(std::to_string(number));
            for (int round = 0; round < 200; ++round) {
                const std::string content = std::to_string(number) + "/" + std::to_string(round);
                if (writeFile(path, content) != 0 || ScratchFolder::read(path) != content)
                    ++failures[number];
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, std::vector<int>(4, 0));
    EXPECT_EQ(entries(folder.path()), 4u);
}

TEST(resolvedFile, newFile_isOpenToAllWhereTheMaskAllowsIt) {
    const ScratchFolder folder;
    const mode_t mask = umask(0);
    EXPECT_EQ(writeFile(folder.path("a"), "new"), 0);
    umask(mask);
    EXPECT_EQ(modeBits(folder.path("a")), 0666U);
}

TEST(resolvedFile, fileOfOneLetterInTheCurrentFolder_isFound) {
    const ScratchFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const int result = writeFile("x", "new");
    fs::current_path(before);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("x")), "new");
}

TEST(resolvedFile, linkToANameOfOneLetter_isFollowed) {
    const ScratchFolder folder;
    folder.write("x", "old");
    fs::create_symlink("x", folder.path("link"));
    EXPECT_EQ(writeFile(folder.path("link"), "new"), 0);
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_EQ(ScratchFolder::read(folder.path("x")), "new");
}

TEST(resolvedFile, chainOfFortyLinks_isFollowedToItsEnd) {
    const ScratchFolder folder;
    folder.write("0", "old");
    for (int i = 1; i <= 40; ++i)
        fs::create_symlink(std::to_string(i - 1), folder.path(std::to_string(i)));
    EXPECT_EQ(writeFile(folder.path("40"), "new"), 0);
    EXPECT_TRUE(fs::is_symlink(folder.path("1")));
    EXPECT_EQ(ScratchFolder::read(folder.path("0")), "new");
}

// Descriptor 0 is as good as any other: a process may have closed its standard input.
TEST(resolvedFile, withoutStandardInput_writesBesideAsUsual) {
    const ScratchFolder folder;
    folder.write("a", "old");
    const int input = dup(0);
    close(0);
    FILE* const file = openForWriting(folder.path("a"));
    const std::size_t open = entries(folder.path());
    const int result = file == nullptr ? -2 : close_resolved_file(file);
    if (input >= 0) {
        dup2(input, 0);
        close(input);
    }
    EXPECT_EQ(open, 2U);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(entries(folder.path()), 1U);
}

} // namespace
