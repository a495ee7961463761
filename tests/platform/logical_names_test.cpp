#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "platform/logical_names.h"
#include "tests/support/scratch.h"
#include "tests/support/tested_build.h"

namespace {

namespace fs = std::filesystem;
using qxcms::tests::ScratchFolder;
using qxcms::tests::testedBuild;

constexpr std::size_t kLongestTranslation = QXCMS_LOGNAM_SIZE - 1;

/// A variable of the environment for one test; null takes it away.
class Variable {
public:
    Variable(const char* variable, const char* value) : name(variable) {
        if (const char* const before = std::getenv(variable))
            old = before;
        set(value);
    }
    ~Variable() { set(old ? old->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const char* value) {
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }

    const char* name;
    std::optional<std::string> old;
};

/// A definition for one test.
class Definition {
public:
    Definition(const char* logical, const std::string& value) : name(logical) {
        EXPECT_EQ(deflognam(logical, value.c_str()), 0);
    }
    ~Definition() { deflognam(name, nullptr); }
    Definition(const Definition&) = delete;
    Definition& operator=(const Definition&) = delete;

private:
    const char* name;
};

/// The translation of a name, "-1" when there is none.
std::string translated(const char* name) {
    char out[QXCMS_LOGNAM_SIZE] = "before";
    if (lognam(name, out) == 0)
        return out;
    EXPECT_STREQ(out, "");
    return "-1";
}

/// The path of a specification, "-1" when it has none.
std::string path(const char* specification) {
    char out[QXCMS_LOGNAM_SIZE] = "before";
    if (fport(out, sizeof out, specification) == 0)
        return out;
    EXPECT_STREQ(out, "");
    return "-1";
}

TEST(logicalNames, definition_isTheTranslation) {
    const Definition root("QX_TEST", "/data/root");
    EXPECT_EQ(translated("QX_TEST"), "/data/root");
}

TEST(logicalNames, laterDefinition_replacesTheEarlierOne) {
    const Definition earlier("QX_TEST", "/one");
    const Definition later("QX_TEST", "/two");
    EXPECT_EQ(translated("QX_TEST"), "/two");
}

TEST(logicalNames, names_areComparedExactly) {
    const Definition root("QX_TEST", "/data/root");
    EXPECT_EQ(translated("qx_test"), "-1");
    EXPECT_EQ(translated("QX_TES"), "-1");
    EXPECT_EQ(translated("QX_TEST2"), "-1");
}

TEST(logicalNames, nullOrEmptyValue_removesTheDefinition) {
    for (const char* const nothing : {static_cast<const char*>(nullptr), ""}) {
        ASSERT_EQ(deflognam("QX_TEST", "/data/root"), 0);
        EXPECT_EQ(deflognam("QX_TEST", nothing), 0);
        EXPECT_EQ(translated("QX_TEST"), "-1");
        EXPECT_EQ(deflognam("QX_TEST", nothing), 0);
    }
}

TEST(logicalNames, definition_isKeptApartFromTheCallersBuffers) {
    char name[] = "QX_TEST";
    char value[] = "/data";
    ASSERT_EQ(deflognam(name, value), 0);
    name[0] = value[1] = '#';
    EXPECT_EQ(translated("QX_TEST"), "/data");
    deflognam("QX_TEST", nullptr);
}

TEST(logicalNames, definitionWithoutAName_isRefused) {
    EXPECT_EQ(deflognam(nullptr, "/data"), -1);
    EXPECT_EQ(deflognam("", "/data"), -1);
}

TEST(logicalNames, longestDefinition_isKeptAndALongerOneRefused) {
    const std::string longest(kLongestTranslation, 'x');
    const Definition root("QX_TEST", longest);
    EXPECT_EQ(translated("QX_TEST"), longest);
    EXPECT_EQ(deflognam("QX_TEST", (longest + "x").c_str()), -1);
    EXPECT_EQ(translated("QX_TEST"), longest);
}

TEST(logicalNames, environment_translatesWhatIsNotDefined) {
    const Variable variable("QX_TEST", "/from/environment");
    EXPECT_EQ(translated("QX_TEST"), "/from/environment");
}

TEST(logicalNames, definition_comesBeforeTheEnvironment) {
    const Variable variable("QX_TEST", "/from/environment");
    {
        const Definition root("QX_TEST", "/defined");
        EXPECT_EQ(translated("QX_TEST"), "/defined");
    }
    EXPECT_EQ(translated("QX_TEST"), "/from/environment");
}

TEST(logicalNames, emptyVariable_isNoTranslation) {
    const Variable variable("QX_TEST", "");
    EXPECT_EQ(translated("QX_TEST"), "-1");
}

TEST(logicalNames, longestVariable_isDeliveredAndALongerOneNot) {
    const std::string longest(kLongestTranslation, 'x');
    const Variable fitting("QX_TEST", longest.c_str());
    EXPECT_EQ(translated("QX_TEST"), longest);
    const Variable tooLong("QX_TEST", (longest + "x").c_str());
    EXPECT_EQ(translated("QX_TEST"), "-1");
}

TEST(logicalNames, unknownName_hasNoTranslation) {
    const Variable variable("QX_TEST", nullptr);
    EXPECT_EQ(translated("QX_TEST"), "-1");
    EXPECT_EQ(translated(""), "-1");
    EXPECT_EQ(translated(nullptr), "-1");
    EXPECT_EQ(lognam("QX_TEST", nullptr), -1);
}

TEST(logicalNames, dataOfTheLibrary_areFoundWithoutAnySetting) {
    const Variable variable("QX_CMS", nullptr);
    EXPECT_EQ(translated("QX_CMS"), (testedBuild() / "share" / "qxcms").string());
    EXPECT_TRUE(fs::is_directory(path("QX_CMS:[r]")));
}

TEST(logicalNames, dataOfTheLibrary_yieldToTheEnvironmentAndThatToADefinition) {
    const Variable variable("QX_CMS", "/from/environment");
    EXPECT_EQ(translated("QX_CMS"), "/from/environment");
    const Definition root("QX_CMS", "/defined");
    EXPECT_EQ(translated("QX_CMS"), "/defined");
}

TEST(logicalNames, emptyVariable_leavesTheDataOfTheLibrary) {
    const Variable variable("QX_CMS", "");
    EXPECT_EQ(translated("QX_CMS"), (testedBuild() / "share" / "qxcms").string());
}

/// The file that the platform layer was loaded from.
fs::path loadedFrom() {
    Dl_info info;
    return dladdr(reinterpret_cast<void*>(&lognam), &info) != 0 ? fs::canonical(info.dli_fname) : fs::path();
}

/// What a copy of the library, placed in `folder`, takes for the directory of its data; "-1" without one.
std::string dataOfACopyIn(const fs::path& folder) {
    fs::create_directories(folder);
    const fs::path copy = folder / "libcopy.so";
    fs::copy_file(loadedFrom(), copy);
    void* const library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return dlerror();
    char out[QXCMS_LOGNAM_SIZE];
    const auto lognamOfTheCopy = reinterpret_cast<int (*)(const char*, char*)>(dlsym(library, "lognam"));
    const int result = lognamOfTheCopy("QX_CMS", out);
    dlclose(library);
    return result == 0 ? out : "-1";
}

TEST(logicalNames, dataOfTheLibrary_areLookedForInTheLibrarysFolderAndFourAbove) {
    if (loadedFrom() == fs::canonical("/proc/self/exe"))
        GTEST_SKIP() << "the platform layer is part of this program";
    const Variable variable("QX_CMS", nullptr);
    const ScratchFolder scratch;
    const fs::path prefix = fs::canonical(scratch.path());
    const std::string data = (prefix / "share" / "qxcms").string();
    fs::create_directories(prefix / "share" / "qxcms" / "r");
    EXPECT_EQ(dataOfACopyIn(prefix), data);
    EXPECT_EQ(dataOfACopyIn(prefix / "lib"), data);
    EXPECT_EQ(dataOfACopyIn(prefix / "a" / "b" / "c" / "d"), data);
    EXPECT_EQ(dataOfACopyIn(prefix / "a" / "b" / "c" / "d" / "e"), "-1");
}

TEST(logicalNames, dataFolderWithoutItsTree_isNotTaken) {
    if (loadedFrom() == fs::canonical("/proc/self/exe"))
        GTEST_SKIP() << "the platform layer is part of this program";
    const Variable variable("QX_CMS", nullptr);
    const ScratchFolder scratch;
    const fs::path prefix = fs::canonical(scratch.path());
    fs::create_directories(prefix / "usr" / "share" / "qxcms");
    scratch.write("usr/share/qxcms/r", "a file");
    fs::create_directories(prefix / "share" / "qxcms" / "r");
    EXPECT_EQ(dataOfACopyIn(prefix / "usr" / "lib"), (prefix / "share" / "qxcms").string());
}

TEST(logicalNames, names_mayBeDefinedAndTranslatedFromSeveralThreads) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (std::size_t number = 0; number < wrong.size(); ++number)
        threads.emplace_back([number, &wrong] {
            const std::string name = "QX_THREAD" + std::to_string(number);
            for (int round = 0; round < 1000; ++round) {
                const std::string value = "/" + std::to_string(round);
                char out[QXCMS_LOGNAM_SIZE];
                if (deflognam(name.c_str(), value.c_str()) != 0 || lognam(name.c_str(), out) != 0 ||
                    value != out)
                    ++wrong[number];
            }
            deflognam(name.c_str(), nullptr);
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

TEST(logicalPaths, directories_areSeparatedByPoints) {
    const Definition root("QX_TEST", "/data");
    EXPECT_EQ(path("QX_TEST:[a.b]name.ext"), "/data/a/b/name.ext");
    EXPECT_EQ(path("QX_TEST:[r]d65.ill"), "/data/r/d65.ill");
    EXPECT_EQ(path("QX_TEST:[a.b.c.d]x"), "/data/a/b/c/d/x");
}

TEST(logicalPaths, name_isTakenAsItStands) {
    const Definition root("QX_TEST", "/data");
    EXPECT_EQ(path("QX_TEST:[r]a.b [1].ext"), "/data/r/a.b [1].ext");
}

TEST(logicalPaths, emptyDirectory_isTheRootItself) {
    const Definition root("QX_TEST", "/data");
    EXPECT_EQ(path("QX_TEST:[]name"), "/data/name");
    EXPECT_EQ(path("QX_TEST:[]"), "/data/");
}

TEST(logicalPaths, withoutAName_theDirectoryEndsWithASeparator) {
    const Definition root("QX_TEST", "/data");
    EXPECT_EQ(path("QX_TEST:[a.b]"), "/data/a/b/");
}

TEST(logicalPaths, separatorOfTheRoot_isNotDoubled) {
    const Definition root("QX_TEST", "/data/");
    EXPECT_EQ(path("QX_TEST:[a]x"), "/data/a/x");
    EXPECT_EQ(path("QX_TEST:[]x"), "/data/x");
    const Definition top("QX_TEST", "/");
    EXPECT_EQ(path("QX_TEST:[a]x"), "/a/x");
}

TEST(logicalPaths, root_mayComeFromTheEnvironment) {
    const Variable variable("QX_TEST", "/from/environment");
    EXPECT_EQ(path("QX_TEST:[r]x"), "/from/environment/r/x");
}

TEST(logicalPaths, unknownRoot_hasNoPath) {
    const Variable variable("QX_TEST", nullptr);
    EXPECT_EQ(path("QX_TEST:[r]x"), "-1");
    EXPECT_EQ(path("QX_TEST:[]"), "-1");
}

TEST(logicalPaths, plainPath_isCopied) {
    for (const char* const plain : {"measured.txt", "/tmp/a.txt", "../a b/c", "C:name", "a:b[1]", "", "[a]b"})
        EXPECT_EQ(path(plain), plain);
}

TEST(logicalPaths, textOfAnotherForm_isAPlainPath) {
    const Definition root("QX_TEST", "/data");
    for (const char* const plain :
         {"QX_TEST:name", "QX_TEST:[a", "QX_TEST:[a.b", "QX_TEST", "QX_TEST[a]b", ":[a]b", "QX_TEST:[.a]b",
          "QX_TEST:[a..]b", "QX_TEST:[a..b]c", "QX_TEST:[.]b", "QX_TEST: [a]b"})
        EXPECT_EQ(path(plain), plain);
}

TEST(logicalPaths, pointBehindTheLastDirectory_countsForNothing) {
    const Definition root("QX_TEST", "/data");
    EXPECT_EQ(path("QX_TEST:[a.]b"), "/data/a/b");
    EXPECT_EQ(path("QX_TEST:[a.b.]"), "/data/a/b/");
}

TEST(logicalPaths, textWithAPathSeparator_isAPlainPath) {
    const Definition root("QX_TEST", "/data");
    for (const char* const plain :
         {"./QX_TEST:[a]b", "/tmp/QX_TEST:[a]b", "QX_TEST:[a/b]c", "QX_TEST:[a]b/c"})
        EXPECT_EQ(path(plain), plain);
}

TEST(logicalPaths, pathThatJustFits_isDelivered) {
    const Definition root("QX_TEST", "/data");
    char out[16] = "###############";
    EXPECT_EQ(fport(out, 10, "QX_TEST:[a]b"), 0);
    EXPECT_EQ(std::string(out, 16), std::string("/data/a/b\0#####\0", 16));
    EXPECT_EQ(fport(out, 4, "abc"), 0);
    EXPECT_STREQ(out, "abc");
}

TEST(logicalPaths, pathThatDoesNotFit_leavesAnEmptyText) {
    const Definition root("QX_TEST", "/data");
    for (int size = 1; size < 10; ++size) {
        char out[16] = "###############";
        EXPECT_EQ(fport(out, size, "QX_TEST:[a]b"), -1);
        EXPECT_EQ(std::string(out, 16), std::string("\0##############\0", 16));
        EXPECT_EQ(fport(out, size, "plain/pat"), -1);
        EXPECT_EQ(std::string(out, 16), std::string("\0##############\0", 16));
    }
}

TEST(logicalPaths, withoutRoom_nothingIsTouched) {
    char out[] = "before";
    EXPECT_EQ(fport(out, 0, "x"), -1);
    EXPECT_EQ(fport(out, -1, "x"), -1);
    EXPECT_EQ(fport(nullptr, 100, "x"), -1);
    EXPECT_STREQ(out, "before");
}

TEST(logicalPaths, nullSpecification_hasNoPath) {
    EXPECT_EQ(path(nullptr), "-1");
}

TEST(logicalPaths, outputBuffer_mayHoldTheSpecification) {
    const Definition root("QX_TEST", "/a/rather/long/root");
    char text[64] = "QX_TEST:[a.b]name.ext";
    EXPECT_EQ(fport(text, sizeof text, text), 0);
    EXPECT_STREQ(text, "/a/rather/long/root/a/b/name.ext");
}

TEST(logicalNames, nameAndTranslation_mayBeOneLetter) {
    char out[QXCMS_LOGNAM_SIZE];
    const Variable variable("QXCMS_TEST_LETTER", "x");
    EXPECT_EQ(lognam("QXCMS_TEST_LETTER", out), 0);
    EXPECT_STREQ(out, "x");
    ASSERT_EQ(deflognam("q", "y"), 0);
    EXPECT_EQ(lognam("q", out), 0);
    EXPECT_STREQ(out, "y");
    deflognam("q", nullptr);
}

} // namespace
