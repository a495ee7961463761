// What a view takes, and what it does not.
#include "qc/span.h"

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using qxcms::qc::Span;

namespace {

using Numbers = Span<const double>;

// Whatever somebody keeps.
static_assert(std::is_convertible_v<std::vector<double>&, Numbers>);
static_assert(std::is_convertible_v<const std::vector<double>&, Numbers>);
static_assert(std::is_convertible_v<std::array<double, 3>&, Numbers>);
static_assert(std::is_convertible_v<const double (&)[3], Numbers>);
static_assert(std::is_convertible_v<std::vector<double>&, Span<double>>);
static_assert(std::is_convertible_v<Span<double>, Numbers>);

// A temporary would be gone.
static_assert(!std::is_convertible_v<std::vector<double>, Numbers>);
static_assert(!std::is_convertible_v<const std::vector<double>, Numbers>);
static_assert(!std::is_convertible_v<std::array<double, 3>, Numbers>);
static_assert(!std::is_convertible_v<std::initializer_list<double>, Numbers>);

// What may not be changed, other values, and what holds none.
static_assert(!std::is_convertible_v<const std::vector<double>&, Span<double>>);
static_assert(!std::is_convertible_v<Numbers, Span<double>>);
static_assert(!std::is_convertible_v<std::vector<int>&, Numbers>);
static_assert(!std::is_convertible_v<std::string&, Numbers>);
static_assert(!std::is_convertible_v<int&, Numbers>);

struct Base {
    double value;
};
struct Longer : Base {
    double another;
};
static_assert(!std::is_convertible_v<std::vector<Longer>&, Span<const Base>>, "the step would be wrong");

static_assert(std::is_trivially_copyable_v<Numbers>);

TEST(span, showsWhatItWasMadeFrom) {
    double values[] = {1.0, 2.0, 3.0};
    const Span<double> changing = values;
    changing[1] = 5.0;
    const Numbers shown = changing;
    EXPECT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown.data(), values);
    EXPECT_EQ(std::vector<double>(shown.begin(), shown.end()), (std::vector<double>{1.0, 5.0, 3.0}));
}

TEST(span, ofNothing_isEmpty) {
    EXPECT_TRUE(Numbers().empty());
    const std::vector<double> none;
    EXPECT_TRUE(Numbers(none).empty());
}

} // namespace
