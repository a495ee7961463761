// The bundled platform layer when the memory fails.
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/default/host.h"
#include "platform/logical_names.h"
#include "platform/object_factory.h"
#include "platform/utility.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;

std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

// Interpolation tables.

using Table = std::unique_ptr<lin_interp_double, decltype(&lin_interp_double_kill)>;

Table tableFor(int count) {
    return {lin_interp_double_new(count), &lin_interp_double_kill};
}

TEST(platformMemory, interpolationTableWithoutMemory_isNull) {
    for (const int count : {0, 1, 81, 1024}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            const Table table = tableFor(count);
            faults.disarm();
            EXPECT_EQ(table == nullptr, faults.happened());
        });
    }
}

// Whoever has a table has room for the points that he announced, and for the two anchors of a spectrum.
TEST(platformMemory, pointsThatWereAnnounced_needNoMemoryInAnyOrder) {
    for (const int count : {1, 2, 81, 1024}) {
        for (const int step : {1, -1}) {
            const Table table = tableFor(count);
            ASSERT_NE(table, nullptr);
            expectNoAllocation([&] {
                int refused = 0;
                for (int i = 0; i < count; ++i)
                    refused += lin_interp_double_insert(table.get(), step * (400.0 + i), i);
                refused += lin_interp_double_insert(table.get(), 0.0, 0.0);
                refused += lin_interp_double_insert(table.get(), step * 10000.0, count);
                EXPECT_EQ(refused, 0);
                EXPECT_EQ(lin_interp_double_insert(table.get(), step * 400.0, 7.0), 1);
                EXPECT_EQ(lin_interp_double_inter(table.get(), step * (400.0 + count - 1)), count - 1);
            });
        }
    }
}

TEST(platformMemory, furtherPointsWithoutMemory_areRefusedAndTheOthersStay) {
    constexpr int kPoints = 200;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const Table table = tableFor(1);
        ASSERT_NE(table, nullptr);
        bool isThere[kPoints];
        int refused = 0;
        faults.arm();
        for (int i = 0; i < kPoints; ++i) {
            isThere[i] = lin_interp_double_insert(table.get(), i, 2.0 * i) == 0;
            refused += isThere[i] ? 0 : 1;
        }
        faults.disarm();
        EXPECT_EQ(refused > 0, faults.happened());
        for (int i = 0; i < kPoints; ++i) {
            const bool isTaken = lin_interp_double_insert(table.get(), i, 2.0 * i) == 0;
            EXPECT_EQ(isTaken, !isThere[i]) << i;
        }
        EXPECT_EQ(lin_interp_double_inter(table.get(), 150.5), 301.0);
    });
}

// Logical names.

class Definition {
public:
    Definition(const char* definedName, const char* value) : name(definedName) { deflognam(name, value); }
    ~Definition() { deflognam(name, nullptr); }
    Definition(const Definition&) = delete;
    Definition& operator=(const Definition&) = delete;

private:
    const char* name;
};

constexpr const char* kName = "a logical name that is long enough";
constexpr const char* kValue = "/some/folder/that/is/long/enough";
constexpr const char* kOtherValue = "/a/longer/folder/than/the/one/that/was/there/before/it";

TEST(platformMemory, definitionWithoutMemory_isNotKeptAndIsKeptLater) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        char translation[QXCMS_LOGNAM_SIZE];
        faults.arm();
        const int answer = deflognam(kName, kValue);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? -1 : 0);
        EXPECT_EQ(lognam(kName, translation), answer);
        EXPECT_STREQ(translation, answer == 0 ? kValue : "");
        const Definition later(kName, kValue);
        EXPECT_EQ(lognam(kName, translation), 0);
        EXPECT_STREQ(translation, kValue);
    });
}

TEST(platformMemory, redefinitionWithoutMemory_keepsTheOldOne) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const Definition old(kName, kValue);
        char translation[QXCMS_LOGNAM_SIZE];
        faults.arm();
        const int answer = deflognam(kName, kOtherValue);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? -1 : 0);
        EXPECT_EQ(lognam(kName, translation), 0);
        EXPECT_STREQ(translation, faults.happened() ? kValue : kOtherValue);
    });
}

TEST(platformMemory, removalOfADefinition_needsNoMemory) {
    const Definition defined(kName, kValue);
    expectNoAllocation([] { EXPECT_EQ(deflognam(kName, nullptr), 0); });
}

// The name of the data is found beside the program.
TEST(platformMemory, translationWithoutMemory_isNoneAndIsThereLater) {
    const Definition defined(kName, kValue);
    for (const char* name : {kName, "QX_CMS"}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            char translation[QXCMS_LOGNAM_SIZE] = "x";
            faults.arm();
            const int answer = lognam(name, translation);
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? -1 : 0);
            EXPECT_EQ(*translation == '\0', faults.happened());
            EXPECT_EQ(lognam(name, translation), 0);
        });
    }
}

TEST(platformMemory, pathWithoutMemory_isNoneAndIsThereLater) {
    const Definition defined(kName, kValue);
    const std::string specification =
        std::string(kName) + ":[first folder.second folder]the name of a file.ill";
    for (const std::string& text : {specification, std::string("a/plain/path/that/is/long/enough.ill")}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            char path[4096] = "x";
            faults.arm();
            const int answer = fport(path, sizeof path, text.c_str());
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? -1 : 0);
            EXPECT_EQ(*path == '\0', faults.happened());
            EXPECT_EQ(fport(path, sizeof path, text.c_str()), 0);
        });
    }
}

// Searches.

TEST(platformMemory, searchWithoutMemory_isNullOrFindsEverything) {
    const ScratchFolder folder;
    const std::vector<std::string> names = {"a file with a long name.ill", "b",
                                            "another file with a long name.ill"};
    for (const std::string& name : names)
        folder.write(name, "x");
    std::filesystem::create_directory(folder.path("a folder with a long name.ill"));
    const unsigned char option = 2;
    const std::string path = folder.path();
    const std::ptrdiff_t descriptors = openDescriptors();
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        fsearch_state* search = fsinit(path.c_str(), &option);
        faults.disarm();
        EXPECT_TRUE(search != nullptr || faults.happened());
        if (search == nullptr)
            search = fsinit(path.c_str(), &option);
        ASSERT_NE(search, nullptr);
        char found[4096];
        for (const std::size_t next : {0u, 2u, 1u}) {
            EXPECT_EQ(fsearch(search, found, sizeof found), 0);
            EXPECT_EQ(found, path + '/' + names[next]);
        }
        EXPECT_EQ(fsearch(search, found, sizeof found), -1);
        fsfree(search);
        EXPECT_EQ(openDescriptors(), descriptors);
    });
}

TEST(platformMemory, stepsAndEndOfASearch_needNoMemory) {
    const ScratchFolder folder;
    folder.write("a file with a long name.ill", "x");
    const unsigned char option = 2;
    fsearch_state* const search = fsinit(folder.path().c_str(), &option);
    ASSERT_NE(search, nullptr);
    expectNoAllocation([&] {
        char found[4096];
        EXPECT_EQ(fsearch(search, found, sizeof found), 0);
        EXPECT_EQ(fsearch(search, found, sizeof found), -1);
        fsfree(search);
    });
}

// Files.

class FileMemory : public testing::Test {
protected:
    std::ptrdiff_t filesInFolder() const {
        const std::filesystem::directory_iterator files(folder.path());
        return std::distance(begin(files), end(files));
    }

    // Writes without memory: the file is written or it is as before, and nothing else is there.
    void expectWrittenOrAsBefore(const std::string& name, const std::string& target) {
        const std::string old = std::filesystem::exists(target) ? "old" : "";
        const std::ptrdiff_t descriptors = openDescriptors();
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            old.empty() ? std::filesystem::remove(target)
                        : !std::filesystem::path(folder.write("target", old)).empty();
            const std::ptrdiff_t before = filesInFolder();
            const std::string bytes(5000, 'n');
            faults.arm();
            FILE* const file = open_resolved_file(name.c_str(), "w");
            const long written = file == nullptr ? 0 : fputm(file, bytes.data(), 5000);
            const int closed = file == nullptr ? -1 : close_resolved_file(file);
            faults.disarm();
            EXPECT_TRUE(closed == 0 || faults.happened());
            if (closed == 0) {
                EXPECT_EQ(written, 5000);
                EXPECT_EQ(ScratchFolder::read(target), bytes);
            } else {
                EXPECT_EQ(std::filesystem::exists(target), !old.empty());
                EXPECT_EQ(ScratchFolder::read(target), old);
                EXPECT_EQ(filesInFolder(), before);
            }
            EXPECT_EQ(openDescriptors(), descriptors);
        });
    }

    ScratchFolder folder;
};

using fileMemory = FileMemory;

TEST_F(fileMemory, fileReadWithoutMemory_isNullOrGivesEverything) {
    const std::string bytes(10000, 'x');
    const std::string name = folder.write("file", bytes);
    const std::ptrdiff_t descriptors = openDescriptors();
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        std::string read(bytes.size(), '\0');
        faults.arm();
        FILE* const file = open_resolved_file(name.c_str(), "r");
        const long size = file == nullptr ? 0 : fgeteof(file);
        const long got = file == nullptr ? 0 : fgetm(file, read.data(), 10000);
        const int closed = file == nullptr ? 0 : close_resolved_file(file);
        faults.disarm();
        EXPECT_EQ(closed, 0);
        EXPECT_TRUE(file != nullptr || faults.happened());
        if (file != nullptr) {
            EXPECT_EQ(size, 10000);
            EXPECT_EQ(got, 10000);
            EXPECT_EQ(read, bytes);
        }
        EXPECT_EQ(openDescriptors(), descriptors);
    });
}

TEST_F(fileMemory, newFileWithoutMemory_isWrittenOrIsNotThere) {
    expectWrittenOrAsBefore(folder.path("target"), folder.path("target"));
}

TEST_F(fileMemory, replacedFileWithoutMemory_isWrittenOrAsItWas) {
    const std::string target = folder.write("target", "old");
    expectWrittenOrAsBefore(target, target);
}

TEST_F(fileMemory, fileBehindALinkWithoutMemory_isWrittenOrAsItWas) {
    const std::string target = folder.write("target", "old");
    std::filesystem::create_symlink("target", folder.path("a link with a name that is long enough"));
    expectWrittenOrAsBefore(folder.path("a link with a name that is long enough"), target);
}

TEST_F(fileMemory, fileByALogicalNameWithoutMemory_isWrittenOrAsItWas) {
    const std::string target = folder.write("target", "old");
    const Definition defined(kName, folder.path().c_str());
    expectWrittenOrAsBefore(std::string(kName) + ":[]target", target);
}

// Reports.

int reports = 0;

TEST(platformMemory, reports_needNoMemory) {
    const qxcms_report_handler counting = {[](void*, const char*, const char*, int) { ++reports; },
                                           [](void*, int, const char*) { ++reports; }, nullptr};
    const std::string text(10000, 'x');
    testing::internal::CaptureStderr();
    expectNoAllocation([&] {
        error_mess_fl(text.c_str(), "module", 7);
        report_warning(6, text.c_str());
        qxcms_set_report_handler(&counting);
        error_mess_fl(nullptr, nullptr, 7);
        report_warning(6, nullptr);
        qxcms_set_report_handler(nullptr);
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "module:7: " + text + "\nwarning: " + text + '\n');
    EXPECT_EQ(reports, 2);
}

// A handler that runs out of memory while it keeps a report loses it, and no more.
TEST(platformMemory, handlerWithoutMemory_isNotTheReportersConcern) {
    static std::string kept;
    const qxcms_report_handler keeping = {
        [](void*, const char* message, const char*, int) { kept = message; },
        [](void*, int, const char* message) { kept = message; }, nullptr};
    const std::string text(1000, 'x');
    qxcms_set_report_handler(&keeping);
    for (const bool isError : {true, false})
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            isError ? error_mess_fl(text.c_str(), "module", 7) : report_warning(6, text.c_str());
            faults.disarm();
            EXPECT_EQ(kept.empty(), faults.happened());
            std::string().swap(kept);
        });
    qxcms_set_report_handler(nullptr);
}

// Texts, vectors and lists.

TEST(platformMemory, textsNumbersAndVectors_needNoMemory) {
    const double a[] = {1.0, 2.0}, b[] = {4.0, 6.0};
    expectNoAllocation([&] {
        unsigned char bytes[4];
        fltoffl(2.5, bytes);
        EXPECT_EQ(ffltofl(bytes), 2.5);
        int whole = 0;
        double number = 0.0;
        char text[8];
        EXPECT_EQ(str_int_from_itemstr("12, 0.5, \"a b\"", 0, &whole), 0);
        EXPECT_EQ(str_double_from_itemstr("12, 0.5, \"a b\"", 1, &number), 0);
        EXPECT_EQ(str_str("12, 0.5, \"a b\"", 2, text, sizeof text), 0);
        EXPECT_EQ(whole, 12);
        EXPECT_EQ(number, 0.5);
        EXPECT_STREQ(text, "a b");
        EXPECT_EQ(strcmp_ci("Name", "nAME"), 0);
        EXPECT_EQ(strncmp_ci("Name", "nAMEs", 4), 0);
        EXPECT_EQ(vect_distance(a, b, 2), 5.0);
    });
}

class Element : public TObjEl {
public:
    using TObjEl::TObjEl;
};

class Factory : public TObjFac {
public:
    TObjEl* TObjFacCreateEl(void* object) override { return new Element(object); }
    using TObjFac::GetFirstElement;
    using TObjFac::Register;
    using TObjFac::Scan;
};

TEST(platformMemory, elementOfAFactoryWithoutMemory_isNotRegisteredAndIsLater) {
    int object = 7;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        Factory factory;
        faults.arm();
        const void* const registered = factory.Register(&object);
        faults.disarm();
        EXPECT_EQ(registered == nullptr, faults.happened());
        EXPECT_EQ(factory.GetNrElements(), faults.happened() ? 0 : 1);
        EXPECT_EQ(factory.Register(&object), &object);
    });
}

TEST(platformMemory, listsAndScans_needNoMemory) {
    int object = 7;
    auto element = std::make_unique<Element>(&object);
    auto factory = std::make_unique<Factory>();
    ASSERT_NE(factory->Register(&object), nullptr);
    auto list = std::make_unique<TList>();
    expectNoAllocation([&] {
        element->AddReference();
        EXPECT_EQ(element->GetReferences(), 1u);
        EXPECT_EQ(element->GetObject(), &object);
        EXPECT_EQ(element->GetNext(), nullptr);
        list->Append(element.get());
        list->Append(nullptr);
        EXPECT_EQ(list->GetFirst(), element.release());
        list.reset();
        EXPECT_EQ(factory->Scan(1), &object);
        EXPECT_EQ(factory->Scan(0), nullptr);
        EXPECT_EQ(factory->GetNrElements(), 1);
        EXPECT_NE(factory->GetFirstElement(), nullptr);
        factory.reset();
        const Factory empty;
        const TElement alone;
    });
}

} // namespace
} // namespace qxcms::tests
