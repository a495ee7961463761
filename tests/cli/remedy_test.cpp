#include "tools/qxcms/remedy.h"

#include <gmock/gmock.h>

using qxcms::command::remedyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr int kLastCode = 24;

TEST(remedy, everyCode_hasOne) {
    for (int code = -1; code <= kLastCode; ++code) {
        if (code != 0) {
            EXPECT_THAT(remedyOf(code, "", ""), Not(IsEmpty())) << code;
        }
    }
}

TEST(remedy, noError_needsNone) {
    EXPECT_EQ(remedyOf(0, "", ""), "");
    EXPECT_EQ(remedyOf(kLastCode + 1, "", ""), "");
}

TEST(remedy, memory_isThoughtOfWhereNothingIsSaidOfTheText) {
    EXPECT_THAT(remedyOf(1, "", ""), HasSubstr("memory"));
    EXPECT_THAT(remedyOf(1, "", "a further sample value"), Not(HasSubstr("memory")));
}

TEST(remedy, columnsOfOneWavelength_areNotToBeRenamed) {
    EXPECT_EQ(remedyOf(11, "SPEC_380.4", "a wavelength of its own: two columns round to 380 nm"),
              "leave one of the two columns out");
}

} // namespace
