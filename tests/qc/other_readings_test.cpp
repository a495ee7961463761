// What one side would have to be read as to agree with the other.
#include "qc/other_readings.h"

#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/conditions.h"
#include "qc/illuminants.h"

namespace qxcms::tests {
namespace {

using qc::ColorSource;
using qc::Lab;
using testing::HasSubstr;
using testing::IsEmpty;

// Offset print on coated paper, in round numbers (ISO 12647-2).
const std::vector<Lab>& print() {
    static const std::vector<Lab> rows = {{55, -37, -50}, {48, 74, -3},  {89, -5, 93}, {47, 68, 48},
                                          {50, -68, 33},  {24, 22, -46}, {16, 0, 0},   {95, 0, -2}};
    return rows;
}

double deltaE76(const Lab& left, const Lab& right) {
    return std::hypot(left[0] - right[0], left[1] - right[1], left[2] - right[2]);
}

using Change = Lab (*)(const Lab&);

std::vector<Lab> changed(Change change) {
    std::vector<Lab> rows;
    for (const Lab& lab : print())
        rows.push_back(change(lab));
    return rows;
}

class otherReadings : public testing::Test {
protected:
    // What is told of two charts whose n-th rows belong together.
    std::string told(ColorSource source, const std::vector<Lab>& measured,
                     const std::vector<Lab>& reference = print(), bool areLight = false) const {
        std::vector<qc::RowPair> pairs;
        for (int row = 0; row < static_cast<int>(measured.size()); ++row)
            pairs.push_back({row, {row}});
        const qc::Chart one{"m.txt", nullptr, 0};
        const qc::Chart other{"r.txt", nullptr, 0};
        const std::vector<qc::Finding> findings =
            qc::otherReadings({one, source, measured, &conditions},
                              {other, ColorSource::lab, reference, &conditions}, pairs, areLight, deltaE76);
        return findings.empty() ? "" : findings[0].text;
    }

private:
    qc::Illuminants illuminants;
    TObserver observer{"2 degree"};
    qc::Conditions conditions{*illuminants.find("D50"), observer};
};

TEST_F(otherReadings, axesWith128Added_areTold) {
    EXPECT_THAT(
        told(ColorSource::lab, changed([](const Lab& v) {
                 return Lab{v[0], v[1] + 128, v[2] + 128};
             })),
        HasSubstr("if the Lab values of m.txt had 128 added to a* and b*, the median difference would be 0 "
                  "instead of 181"));
}

TEST_F(otherReadings, labOfEightBits_isTold) {
    EXPECT_THAT(told(ColorSource::lab, changed([](const Lab& v) {
                         return Lab{v[0] * 2.55, v[1] + 128, v[2] + 128};
                     })),
                HasSubstr("Lab of 8 bits"));
}

TEST_F(otherReadings, labOfSixteenBits_isTold) {
    EXPECT_THAT(told(ColorSource::lab, changed([](const Lab& v) {
                         return Lab{v[0] * 655.35, (v[1] + 128) * 257, (v[2] + 128) * 257};
                     })),
                HasSubstr("Lab of 16 bits (0 to 65535)"));
}

TEST_F(otherReadings, fractionsOfLab_areToldOfTheSideThatHoldsThem) {
    EXPECT_THAT(told(ColorSource::lab, print(), changed([](const Lab& v) {
                         return Lab{v[0] / 100, v[1] / 100, v[2] / 100};
                     })),
                HasSubstr("Lab values of r.txt were Lab divided by 100"));
}

TEST_F(otherReadings, lighterPrint_isNothingOfTheKind) {
    EXPECT_EQ(told(ColorSource::lab, changed([](const Lab& v) { return Lab{v[0] + 5, v[1], v[2]}; })), "");
}

// Paper and tints of a print on brightened paper lie as far towards blue.
TEST_F(otherReadings, bluerPaper_isNoOtherWhite) {
    EXPECT_EQ(told(ColorSource::xyz, changed([](const Lab& v) {
                       return Lab{v[0], v[1] + 2, v[2] - 11 * v[0] / 95};
                   })),
              "");
}

std::vector<Lab> onTheWhiteOfE(const std::vector<Lab>& colors) {
    constexpr double kD50[] = {96.422, 100.0, 82.521};
    std::vector<Lab> rows;
    for (const Lab& lab : colors) { // all of them far from black, where CIELAB has cube roots
        const double y = (lab[0] + 16) / 116;
        const double x = (y + lab[1] / 500) / std::cbrt(kD50[0] / 100);
        const double z = (y - lab[2] / 200) / std::cbrt(kD50[2] / 100);
        rows.push_back({lab[0], 500 * (x - y), 200 * (y - z)});
    }
    return rows;
}

// Colours of one hue are off alike for many reasons.
TEST_F(otherReadings, coloursOfOneHue_showNoOtherWhite) {
    std::vector<Lab> rows = {{78, 21, 9},  {34, 20, 13}, {63, 17, 13}, {60, 18, 10},
                             {52, 17, 13}, {80, 21, 12}, {52, 17, 9},  {49, 20, 12}};
    EXPECT_EQ(told(ColorSource::lab, rows, onTheWhiteOfE(rows)), "");
    EXPECT_EQ(told(ColorSource::lab, onTheWhiteOfE(rows), rows), "");
    for (std::size_t i = 0; i < rows.size(); i += 2)
        rows[i] = {rows[i][0], -rows[i][1], -rows[i][2]};
    EXPECT_THAT(told(ColorSource::lab, rows, onTheWhiteOfE(rows)), HasSubstr("on the white of "));
}

TEST_F(otherReadings, greys_showAnotherWhite) {
    std::vector<Lab> rows;
    for (int lightness = 30; lightness < 100; lightness += 8)
        rows.push_back({static_cast<double>(lightness), 0.5, 1.0});
    EXPECT_THAT(told(ColorSource::lab, onTheWhiteOfE(rows), rows), HasSubstr("on the white of "));
}

// Y of L* 100 is 100, of L* 50 18.4187 (CIE 15).
TEST_F(otherReadings, lightThatDiffersByAFactor_isToldWithIt) {
    const std::vector<Lab> bright(8, Lab{100, 0, 0});
    const std::vector<Lab> dim(8, Lab{50, 0, 0});
    EXPECT_THAT(told(ColorSource::lab, dim, bright, true),
                HasSubstr("had 5.429 times the luminance, as that of the two whites differs, the median "
                          "difference would be "));
    EXPECT_EQ(told(ColorSource::lab, dim, bright, false), "");
}

} // namespace
} // namespace qxcms::tests
