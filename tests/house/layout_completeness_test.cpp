// The layout of what tests/spectral/layout_test.cpp leaves out (the platform layer's classes, plain structs),
// and that no public class is left out by both.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <regex>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "cgats/cgats_diagnostics.h"
#include "cgats/tcgatsnormalizer.h"
#include "cgats/tcgatsvaluelist.h"
#include "platform/default/host.h"
#include "platform/object_factory.h"
#include "spectral/tilluminantfactoryholder.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

namespace fs = std::filesystem;

TEST(layoutCompleteness, everyPublicClass_hasItsSizeAsserted) {
    const fs::path root = QXCMS_SOURCE_DIR;
    const std::string asserted =
        ScratchFolder::read((root / "tests/spectral/layout_test.cpp").string()) +
        ScratchFolder::read((root / "tests/house/layout_completeness_test.cpp").string());
    const std::regex include("#include \"([^\"]+)\"");
    const std::regex definition("(?:^|\n)(?:class|struct)(?: QXCMS_API)? (\\w+)(?: : public \\w+)? \\{");
    const std::string headers = ScratchFolder::read((root / "qxcms.h").string());
    int classes = 0;
    for (std::sregex_iterator header(headers.begin(), headers.end(), include), last; header != last;
         ++header) {
        const std::string text = ScratchFolder::read((root / (*header)[1].str()).string());
        for (std::sregex_iterator found(text.begin(), text.end(), definition); found != last;
             ++found, ++classes)
            EXPECT_NE(asserted.find("sizeof(" + (*found)[1].str() + ") =="), std::string::npos)
                << (*found)[1] << " of " << (*header)[1];
    }
    EXPECT_GT(classes, 30);
}

#if defined(__x86_64__) && defined(__linux__)

static_assert(sizeof(TIlluminantFactoryHolder) == 48 && sizeof(TIlluminantFactory) == 48 &&
              sizeof(TIllEl) == 40);

static_assert(sizeof(TCgatsValueList) == 16);

static_assert(std::is_standard_layout_v<qxcms_report_handler> && sizeof(qxcms_report_handler) == 24);
static_assert(offsetof(qxcms_report_handler, error) == 0);
static_assert(offsetof(qxcms_report_handler, warning) == 8);
static_assert(offsetof(qxcms_report_handler, context) == 16);

static_assert(std::is_standard_layout_v<TCgatsDiagnostic> && sizeof(TCgatsDiagnostic) == 48);
static_assert(offsetof(TCgatsDiagnostic, code) == 0);
static_assert(offsetof(TCgatsDiagnostic, offset) == 8);
static_assert(offsetof(TCgatsDiagnostic, line) == 16);
static_assert(offsetof(TCgatsDiagnostic, column) == 20);
static_assert(offsetof(TCgatsDiagnostic, token) == 24);
static_assert(offsetof(TCgatsDiagnostic, tokenLength) == 32);
static_assert(offsetof(TCgatsDiagnostic, expected) == 40);

static_assert(std::is_standard_layout_v<TCgatsDoubtfulValue> && sizeof(TCgatsDoubtfulValue) == 24);
static_assert(offsetof(TCgatsDoubtfulValue, table) == 0);
static_assert(offsetof(TCgatsDoubtfulValue, row) == 4);
static_assert(offsetof(TCgatsDoubtfulValue, column) == 8);
static_assert(offsetof(TCgatsDoubtfulValue, text) == 16);

static_assert(sizeof(TCgatsLiberty) == 80 && sizeof(TCgatsRefusal) == 80);
static_assert(sizeof(TCgatsNormalizer) == 40);

static_assert(std::is_abstract_v<TCgatsDiagnosticSink> && sizeof(TCgatsDiagnosticSink) == 8,
              "no data member");

// What stands at an offset of an object.
template <class Member>
Member at(const void* object, std::size_t offset) {
    Member value;
    std::memcpy(&value, static_cast<const unsigned char*>(object) + offset, sizeof value);
    return value;
}

TEST(layoutCompleteness, lists_holdFirstAndLast_elementsTheNext) {
    static_assert(sizeof(TElement) == 16 && sizeof(TList) == 24);
    auto* const first = new TElement;
    auto* const second = new TElement;
    TList list;
    list.Append(first);
    list.Append(second);
    EXPECT_EQ(at<TElement*>(&list, 8), first);
    EXPECT_EQ(at<TElement*>(&list, 16), second);
    EXPECT_EQ(at<TElement*>(first, 8), second);
    EXPECT_EQ(at<TElement*>(second, 8), nullptr);
}

TEST(layoutCompleteness, objectElements_holdTheObjectAndItsReferences) {
    static_assert(std::is_base_of_v<TElement, TObjEl> && sizeof(TObjEl) == 32);
    int object = 0;
    TObjEl element(&object);
    for (int references = 0; references < 3; ++references)
        element.AddReference();
    EXPECT_EQ(at<void*>(&element, 16), &object);
    EXPECT_EQ(at<std::uint32_t>(&element, 24), element.GetReferences());
    EXPECT_GE(element.GetReferences(), 3u);
}

class Registry : public TObjFac {
public:
    TObjEl* TObjFacCreateEl(void* object) override { return new TObjEl(object); }
    using TObjFac::GetFirstElement;
    using TObjFac::Register;
    using TObjFac::Scan;
};

TEST(layoutCompleteness, factories_holdTheListTheCountAndTheCursor) {
    static_assert(sizeof(TObjFac) == 48);
    int first = 0, second = 0;
    Registry registry;
    ASSERT_EQ(registry.Register(&first), &first);
    ASSERT_EQ(registry.Register(&second), &second);
    EXPECT_EQ(at<TElement*>(&registry, 8 + 8), registry.GetFirstElement());
    EXPECT_EQ(at<std::int32_t>(&registry, 32), 2);
    ASSERT_EQ(registry.Scan(1), &first);
    EXPECT_EQ(at<TElement*>(&registry, 40), registry.GetFirstElement());
}

// The slots of virtual operations, as the calls through them see it: 0 and 1 are the destructors.
TEST(layoutCompleteness, diagnosticSinks_haveTheirOperationsInSlotOrder) {
    static_assert(std::has_virtual_destructor_v<TCgatsDiagnosticSink>);
    const auto slot = [](auto member) {
        static_assert(sizeof member == 2 * sizeof(std::ptrdiff_t));
        return (at<std::ptrdiff_t>(&member, 0) - 1) / 8;
    };
    EXPECT_EQ(slot(&TCgatsDiagnosticSink::Refused), 2);
    EXPECT_EQ(slot(&TCgatsDiagnosticSink::Doubted), 3);
}

#endif

} // namespace
} // namespace qxcms::tests
