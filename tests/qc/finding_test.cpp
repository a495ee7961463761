// What findings are called.
#include "qc/finding.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

using qc::Finding;

TEST(finding, everyKind_hasANameOfItsOwn) {
    std::set<std::string> names;
    for (int kind = 0; kind <= static_cast<int>(Finding::Kind::relativeToPaper); ++kind)
        names.insert(qc::nameOf(static_cast<Finding::Kind>(kind)));
    EXPECT_EQ(names.count(""), 0U);
    EXPECT_EQ(names.size(), static_cast<std::size_t>(Finding::Kind::relativeToPaper) + 1);
}

} // namespace
} // namespace qxcms::tests
