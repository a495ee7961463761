// A value, or why there is none.
#include "qc/result.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

using qxcms::qc::Refusal;
using qxcms::qc::Result;

namespace {

using Texts = Result<std::string>;

Texts refused() {
    return Refusal(Refusal::Kind::usage, "no such thing");
}

TEST(result, value_isThere) {
    Texts result = std::string("here");
    ASSERT_TRUE(result);
    EXPECT_TRUE(result.hasValue());
    EXPECT_EQ(*result, "here");
    EXPECT_EQ(result->size(), 4u);
    result.value() = "there";
    EXPECT_EQ(result.value(), "there");
}

TEST(result, refusal_tellsWhyThereIsNoValue) {
    const Texts result = refused();
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.hasValue());
    EXPECT_EQ(result.refusal().kind(), Refusal::Kind::usage);
    EXPECT_STREQ(result.refusal().what(), "no such thing");
}

TEST(result, valueThatIsNotThere_isThrownAsItsRefusal) {
    try {
        (void)refused().value();
        FAIL();
    } catch (const Refusal& refusal) {
        EXPECT_STREQ(refusal.what(), "no such thing");
    }
}

TEST(result, temporary_givesItsValueAway) {
    using Owner = std::unique_ptr<int>;
    EXPECT_EQ(*Owner(*Result<Owner>(std::make_unique<int>(7))), 7);
    EXPECT_EQ(*Owner(Result<Owner>(std::make_unique<int>(8)).value()), 8);
}

#ifndef NDEBUG
TEST(result, valueThatWasNotAskedFor_isAsserted) {
    const Texts result = refused();
    EXPECT_DEATH((void)*result, "it was refused");
    EXPECT_DEATH((void)result->size(), "it was refused");
    EXPECT_DEATH((void)Texts(std::string("here")).refusal(), "there is a value");
}
#endif

} // namespace
