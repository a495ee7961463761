// The colour differences of CIELAB. The second triple is the standard.
#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::ReportCollector;
using Triple = std::array<double, 3>;

constexpr int kCie76 = 0;
constexpr int kCie94 = 1;
constexpr int kCiede2000 = 2;
constexpr int kCmc11 = 3;
constexpr int kCmc21 = 4;

constexpr double kPi = 3.1415926535;
constexpr double kTwoPi = 6.283185307;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

const Triple kWhite = {94.811, 100.0, 107.304};

// Keeps the compiler from working out transcendental functions itself, which would round them differently.
double opaque(double value) {
    volatile double copy = value;
    return copy;
}

double power(double base, double exponent) {
    return std::pow(opaque(base), opaque(exponent));
}
double cosine(double angle) {
    return std::cos(opaque(angle));
}
double sine(double angle) {
    return std::sin(opaque(angle));
}

double squareOf(const Triple& lab1, const Triple& lab2, int function) {
    return TLabSpace::CalcSquareDeltaEConvertedStatic(lab1.data(), lab2.data(), function);
}

double differenceOf(const Triple& lab1, const Triple& lab2, int function) {
    return std::sqrt(squareOf(lab1, lab2, function));
}

double hueOf(double a, double b) {
    const Triple lab = {0.0, a, b};
    return TLabSpace::CalculateHue(lab.data());
}

double chromaOf(double a, double b) {
    return std::sqrt(a * a + b * b);
}

// The formulas once more, in the order in which they are defined.

double statedCie94(const Triple& lab1, const Triple& lab2) {
    const double c1 = chromaOf(lab1[1], lab1[2]);
    const double c2 = chromaOf(lab2[1], lab2[2]);
    const double dC = c2 - c1;
    const double dL = lab2[0] - lab1[0];
    const double da = lab2[1] - lab1[1];
    const double db = lab2[2] - lab1[2];
    const double squareH = da * da + db * db - dC * dC;
    const double sC = 1.0 + 0.045 * c2;
    const double sH = 1.0 + 0.015 * c2;
    return dL * dL + squareH / (sH * sH) + (dC / sC) * (dC / sC);
}

double statedCiede2000(const Triple& lab1, const Triple& lab2) {
    const double c1 = chromaOf(lab1[1], lab1[2]);
    const double c2 = chromaOf(lab2[1], lab2[2]);
    const double cm = (c1 + c2) / 2.0;
    const double g = std::sqrt(power(cm, 7.0) / (power(cm, 7.0) + 6103515625.0));
    const double a1 = lab1[1] * (1.5 - 0.5 * g);
    const double a2 = lab2[1] * (1.5 - 0.5 * g);
    const double h1 = hueOf(a1, lab1[2]);
    const double h2 = hueOf(a2, lab2[2]);
    const double c1p = chromaOf(a1, lab1[2]);
    const double c2p = chromaOf(a2, lab2[2]);
    double hm = (h1 + h2) / 2.0;
    double dh = h1 - h2;
    if (std::fabs(dh) > kPi) {
        hm = hm + kPi;
        dh = dh <= 0.0 ? dh + kTwoPi : dh - kTwoPi;
    }
    const double dC = c1p - c2p;
    const double cmp = (c1p + c2p) / 2.0;
    const double dH = 2.0 * std::sqrt(c1p * c2p) * sine(dh / 2.0);
    const double t = 1.0 - 0.17 * cosine(hm - 0.5235987755833333) + 0.24 * cosine(2.0 * hm) +
                     0.32 * cosine(3.0 * hm + 0.10471975511666667) - 0.2 * cosine(4.0 * hm - 1.099557428725);
    const double lm = (lab1[0] + lab2[0]) / 2.0 - 50.0;
    const double sL = 1.0 + 0.015 * (lm * lm) / std::sqrt(20.0 + lm * lm);
    const double sC = 1.0 + 0.045 * cmp;
    const double sH = 1.0 + 0.015 * cmp * t;
    const double x = (hm * 180.0 / kPi - 275.0) / 25.0;
    const double theta = 30.0 * std::exp(opaque(-(x * x)));
    const double rC = 2.0 * g;
    const double l = (lab1[0] - lab2[0]) / sL;
    const double p = dH / sH;
    const double q = dC / sC;
    return l * l + p * p + q * q + sine(2.0 * theta * kPi / 180.0) * rC * p * q;
}

double cmcTInside(double h) {
    return 0.56 + std::fabs(0.2 * cosine(h + 2.932153143266667));
}
double cmcTOutside(double h) {
    return 0.36 + std::fabs(0.4 * cosine(h + 0.6108652381805555));
}

double statedCmcWithT(const Triple& lab1, const Triple& lab2, double l, double t) {
    const double c = chromaOf(lab2[1], lab2[2]);
    const double f = std::sqrt(power(c, 4.0) / (power(c, 4.0) + 1900.0));
    const double sL = std::max(0.511, 0.040975 * lab2[0] / (1.0 + 0.01765 * lab2[0]));
    const double sC = 0.0638 * c / (1.0 + 0.0131 * c) + 0.638;
    const double sH = sC * (f * t + 1.0 - f);
    const double dL = lab2[0] - lab1[0];
    const double dC = c - chromaOf(lab1[1], lab1[2]);
    const double da = lab2[1] - lab1[1];
    const double db = lab2[2] - lab1[2];
    const double squareH = da * da + db * db - dC * dC;
    const double lightness = dL / (l * sL);
    return lightness * lightness + squareH / (sH * sH) + (dC / sC) * (dC / sC);
}

double statedCmc(const Triple& lab1, const Triple& lab2, double l) {
    const double h = hueOf(lab2[1], lab2[2]);
    const bool inside = 2.862339973188889 <= h && h <= 6.021385919208333;
    return statedCmcWithT(lab1, lab2, l, inside ? cmcTInside(h) : cmcTOutside(h));
}

// Colours around the hue circle, neutral and dark ones among them.
std::vector<Triple> manyColors() {
    std::vector<Triple> colors = {{50.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {100.0, 0.0, 0.0}, {30.0, 0.0, -25.0}};
    for (const double l : {2.0, 15.9, 16.1, 48.5, 93.0}) {
        for (int i = 0; i < 12; ++i) {
            const double angle = 0.17 + i * 0.5236;
            for (const double c : {0.8, 24.3, 71.0})
                colors.push_back({l + 0.37 * i, c * std::cos(angle), c * std::sin(angle)});
        }
    }
    return colors;
}

// A colour of that lightness whose hue angle is exactly `hue`, which lies in the third or fourth quadrant or
// shortly before.
Triple colorAtHue(double l, double a, double hue) {
    double b = a * std::tan(hue);
    for (const double direction : {kInfinity, -kInfinity}) {
        double candidate = b;
        for (int i = 0; i < 200; ++i) {
            if (hueOf(a, candidate) == hue)
                return {l, a, candidate};
            candidate = std::nextafter(candidate, direction);
        }
    }
    // The ten-digit angles shift the slope by less than one part in a billion.
    double low = b * (1.0 - 1e-8);
    double high = b * (1.0 + 1e-8);
    if (hueOf(a, low) > hueOf(a, high))
        std::swap(low, high);
    for (int i = 0; i < 200; ++i) {
        b = low + (high - low) / 2.0;
        if (hueOf(a, b) == hue)
            return {l, a, b};
        (hueOf(a, b) < hue ? low : high) = b;
    }
    ADD_FAILURE() << "no colour at hue " << hue;
    return {l, a, b};
}

// The rows of a table of pairs: columns by position, the first line that is no comment names them.
std::vector<std::vector<std::string>> readPairs(const std::string& name, const std::string& columns) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream stream(std::string(QXCMS_SOURCE_DIR "/tests/golden/") + name);
    std::string line;
    bool named = false;
    while (std::getline(stream, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (!named) {
            EXPECT_EQ(line, columns);
            named = true;
            continue;
        }
        std::vector<std::string> cells;
        std::istringstream cellStream(line);
        for (std::string cell; std::getline(cellStream, cell, ',');)
            cells.push_back(cell);
        rows.push_back(cells);
    }
    return rows;
}

double number(const std::string& text) {
    double value = kNan;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    EXPECT_EQ(result.ptr, text.data() + text.size()) << text;
    return value;
}

Triple tripleAt(const std::vector<std::string>& row, std::size_t first) {
    return {number(row.at(first)), number(row.at(first + 1)), number(row.at(first + 2))};
}

struct SharmaPair {
    int number;
    Triple lab1;
    Triple lab2;
    double published;
    double here;
    bool guard;
};

std::vector<SharmaPair> sharmaPairs() {
    std::vector<SharmaPair> pairs;
    for (const std::vector<std::string>& row :
         readPairs("ciede2000_pairs.csv", "pair,L1,a1,b1,L2,a2,b2,published,here,role")) {
        EXPECT_TRUE(row.at(9) == "check" || row.at(9) == "guard") << row.at(9);
        pairs.push_back({static_cast<int>(number(row[0])), tripleAt(row, 1), tripleAt(row, 4), number(row[7]),
                         number(row[8]), row[9] == "guard"});
    }
    EXPECT_EQ(pairs.size(), 34U);
    return pairs;
}

struct LuoPair {
    int number;
    Triple xyz1, xyz2, lab1, lab2;
    double cie76;
    // Second colour the standard, first colour the standard.
    double cie94[2], cmc11[2], cmc21[2];
};

std::vector<LuoPair> luoPairs() {
    std::vector<LuoPair> pairs;
    for (const std::vector<std::string>& row :
         readPairs("cie94_cmc_pairs.csv", "pair,X1,Y1,Z1,X2,Y2,Z2,L1,a1,b1,L2,a2,b2,dE76,dE94_std2,dE94_std1,"
                                          "CMC11_std2,CMC21_std2,CMC11_std1,CMC21_std1,dE00_published")) {
        pairs.push_back({static_cast<int>(number(row.at(0))),
                         tripleAt(row, 1),
                         tripleAt(row, 4),
                         tripleAt(row, 7),
                         tripleAt(row, 10),
                         number(row.at(13)),
                         {number(row.at(14)), number(row.at(15))},
                         {number(row.at(16)), number(row.at(18))},
                         {number(row.at(17)), number(row.at(19))}});
    }
    EXPECT_EQ(pairs.size(), 10U);
    return pairs;
}

// The list of functions.

TEST(colorDifference, list_hasFiveNamesInIndexOrder) {
    ASSERT_EQ(TLabSpace::GetDifferenceFunctionListSize(), 5);
    const char* const* names = TLabSpace::GetDifferenceFunctionList();
    ASSERT_NE(names, nullptr);
    EXPECT_STREQ(names[0], "CIELAB Delta E (Classic)");
    EXPECT_STREQ(names[1], "Delta E 94");
    EXPECT_STREQ(names[2], "Delta E 2000");
    EXPECT_STREQ(names[3], "CMC(1:1)");
    EXPECT_STREQ(names[4], "CMC(2:1)");
}

TEST(colorDifference, name_leadsToItsIndex) {
    for (int i = 0; i < TLabSpace::GetDifferenceFunctionListSize(); ++i)
        EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex(TLabSpace::GetDifferenceFunctionList()[i]), i);
}

TEST(colorDifference, name_isComparedIgnoringCase) {
    EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex("delta e 94"), 1);
    EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex("delta e 2000"), 2);
    EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex("cmc(1:1)"), 3);
    EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex("cmc(2:1)"), 4);
    EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex("DELTA E 2000"), 2);
}

TEST(colorDifference, name_thatIsUnknownMeansTheClassicFormula) {
    for (const char* name : {"", "Delta E", "Delta E 2000 ", " Delta E 2000", "CMC(3:1)", "CIECAM02 Delta E"})
        EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex(name), 0) << name;
}

TEST(colorDifference, name_ofNullMeansTheClassicFormula) {
    EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex(nullptr), 0);
}

// What holds for every function.

TEST(colorDifference, equalColors_haveNone) {
    for (const Triple& lab : manyColors()) {
        for (int function = 0; function < 5; ++function)
            EXPECT_EQ(squareOf(lab, lab, function), 0.0) << function << ": " << lab[1] << ' ' << lab[2];
    }
}

TEST(colorDifference, unknownIndex_givesMinusOneFromEverySquaredDifference) {
    const TLabSpace space(kWhite.data());
    const Triple c1 = {50.0, 10.0, 20.0};
    const Triple c2 = {51.0, 11.0, 22.0};
    for (const int function : {5, -1, 6, 100, INT_MAX, INT_MIN}) {
        EXPECT_EQ(squareOf(c1, c2, function), -1.0) << function;
        EXPECT_EQ(space.CalcSquareDeltaEConverted(c1.data(), c2.data(), function), -1.0) << function;
        EXPECT_EQ(space.CalcSquareDeltaE(c1.data(), c2.data(), function), -1.0) << function;
    }
}

TEST(colorDifference, unknownIndex_givesMinusOneFromTheDifference) {
    const TLabSpace space(kWhite.data());
    const Triple xyz1 = {50.0, 10.0, 20.0};
    const Triple xyz2 = {51.0, 11.0, 22.0};
    for (const int function : {5, -1, INT_MAX, INT_MIN})
        EXPECT_EQ(space.CalcDeltaE(xyz1.data(), xyz2.data(), function), -1.0) << function;
}

TEST(colorDifference, unknownIndex_isNotReported) {
    const ReportCollector reports;
    const Triple lab = {50.0, 10.0, 20.0};
    squareOf(lab, lab, 5);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(colorDifference, nullTriples_giveMinusOne) {
    const TLabSpace space(kWhite.data());
    const Triple in = {50.0, 10.0, 20.0};
    for (int function = 0; function < 5; ++function) {
        EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedStatic(nullptr, in.data(), function), -1.0);
        EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedStatic(in.data(), nullptr, function), -1.0);
        EXPECT_EQ(space.CalcSquareDeltaEConverted(nullptr, nullptr, function), -1.0);
        EXPECT_EQ(space.CalcSquareDeltaE(nullptr, in.data(), function), -1.0);
        EXPECT_EQ(space.CalcSquareDeltaE(in.data(), nullptr, function), -1.0);
        EXPECT_EQ(space.CalcDeltaE(nullptr, in.data(), function), -1.0);
        EXPECT_EQ(space.CalcDeltaE(in.data(), nullptr, function), -1.0);
    }
}

// From XYZ.

TEST(colorDifference, convertedDifference_isTheStaticOne) {
    const TLabSpace space(kWhite.data());
    const Triple c1 = {50.0, 10.0, 20.0};
    const Triple c2 = {41.0, -11.0, 22.0};
    for (int function = 0; function < 5; ++function)
        EXPECT_EQ(space.CalcSquareDeltaEConverted(c1.data(), c2.data(), function),
                  squareOf(c1, c2, function));
}

TEST(colorDifference, differenceOfXyz_isThatOfTheLabOnTheSpacesWhite) {
    const TLabSpace space(kWhite.data());
    for (const LuoPair& pair : luoPairs()) {
        Triple lab1;
        Triple lab2;
        space.XYZToLab(pair.xyz1.data(), lab1.data());
        space.XYZToLab(pair.xyz2.data(), lab2.data());
        for (int function = 0; function < 5; ++function) {
            const double square = squareOf(lab1, lab2, function);
            ASSERT_GT(square, 0.0);
            EXPECT_EQ(space.CalcSquareDeltaE(pair.xyz1.data(), pair.xyz2.data(), function), square);
            EXPECT_EQ(space.CalcDeltaE(pair.xyz1.data(), pair.xyz2.data(), function), std::sqrt(square));
        }
    }
}

TEST(colorDifference, differenceOfXyz_countsNegativeComponentsAsZero) {
    const TLabSpace space(kWhite.data());
    const Triple negative = {-3.0, 20.0, -0.1};
    const Triple zero = {0.0, 20.0, 0.0};
    const Triple other = {20.0, 30.0, 10.0};
    for (int function = 0; function < 5; ++function) {
        EXPECT_EQ(space.CalcSquareDeltaE(negative.data(), zero.data(), function), 0.0);
        EXPECT_EQ(space.CalcSquareDeltaE(negative.data(), other.data(), function),
                  space.CalcSquareDeltaE(zero.data(), other.data(), function));
        EXPECT_EQ(space.CalcSquareDeltaE(other.data(), negative.data(), function),
                  space.CalcSquareDeltaE(other.data(), zero.data(), function));
    }
}

TEST(colorDifference, squareThatIsNotANumber_givesTheDifferenceMinusOne) {
    const TLabSpace space(kWhite.data());
    const Triple undefined = {20.0, kNan, 10.0};
    const Triple other = {20.0, 30.0, 10.0};
    EXPECT_TRUE(std::isnan(space.CalcSquareDeltaE(undefined.data(), other.data(), kCie76)));
    EXPECT_EQ(space.CalcDeltaE(undefined.data(), other.data(), kCie76), -1.0);
}

// A space whose squared difference of converted triples is given.
class FixedDifference : public TLabSpace {
public:
    explicit FixedDifference(double result) : TLabSpace(kWhite.data()), square(result) {}
    double CalcSquareDeltaEConverted(const double* c1, const double* c2, int function) const override {
        seen1 = {c1[0], c1[1], c1[2]};
        seen2 = {c2[0], c2[1], c2[2]};
        seenFunction = function;
        return square;
    }

    mutable Triple seen1 = {0.0, 0.0, 0.0};
    mutable Triple seen2 = {0.0, 0.0, 0.0};
    mutable int seenFunction = 0;

private:
    double square;
};

TEST(colorDifference, differenceOfXyz_goesThroughTheVirtualConvertedOne) {
    const FixedDifference space(49.0);
    const Triple xyz1 = {10.0, 20.0, 30.0};
    const Triple xyz2 = {30.0, 20.0, 10.0};
    EXPECT_EQ(space.CalcSquareDeltaE(xyz1.data(), xyz2.data(), 77), 49.0);
    EXPECT_EQ(space.CalcDeltaE(xyz1.data(), xyz2.data(), 78), 7.0);
    EXPECT_EQ(space.seenFunction, 78);
    Triple lab1;
    Triple lab2;
    space.XYZToLab(xyz1.data(), lab1.data());
    space.XYZToLab(xyz2.data(), lab2.data());
    EXPECT_EQ(space.seen1, lab1);
    EXPECT_EQ(space.seen2, lab2);
}

TEST(colorDifference, negativeSquare_givesTheDifferenceMinusOne) {
    const Triple xyz = {10.0, 20.0, 30.0};
    EXPECT_EQ(FixedDifference(-1e-300).CalcDeltaE(xyz.data(), xyz.data(), kCie76), -1.0);
    EXPECT_EQ(FixedDifference(-4.0).CalcDeltaE(xyz.data(), xyz.data(), kCie76), -1.0);
    EXPECT_EQ(FixedDifference(0.0).CalcDeltaE(xyz.data(), xyz.data(), kCie76), 0.0);
}

// CIE 1976.

TEST(colorDifference, cie76_isTheSquaredDistance) {
    EXPECT_EQ(squareOf({50.0, 10.0, 20.0}, {53.0, 14.0, 8.0}, kCie76), 169.0);
    EXPECT_EQ(squareOf({53.0, 14.0, 8.0}, {50.0, 10.0, 20.0}, kCie76), 169.0);
}

TEST(colorDifference, cie76_followsTheFormulaInItsOrder) {
    const std::vector<Triple> colors = manyColors();
    for (const Triple& p : colors) {
        for (const Triple& q : colors) {
            const double dL = p[0] - q[0];
            const double da = p[1] - q[1];
            const double db = p[2] - q[2];
            ASSERT_EQ(squareOf(p, q, kCie76), dL * dL + da * da + db * db);
        }
    }
}

TEST(colorDifference, cie76_ofThePairsOfLuo) {
    for (const LuoPair& pair : luoPairs())
        EXPECT_NEAR(differenceOf(pair.lab1, pair.lab2, kCie76), pair.cie76, 2e-9) << pair.number;
}

// CIE 1994.

TEST(colorDifference, cie94_takesTheChromaOfTheSecondColor) {
    const Triple neutral = {50.0, 0.0, 0.0};
    const Triple chromatic = {50.0, 30.0, 40.0};
    // C* = 50 and dC* = 50: SC is 1 + 0.045 * 50 = 3.25 with the chromatic standard, 1 with the neutral one.
    EXPECT_DOUBLE_EQ(squareOf(neutral, chromatic, kCie94), (50.0 / 3.25) * (50.0 / 3.25));
    EXPECT_EQ(squareOf(chromatic, neutral, kCie94), 2500.0);
}

TEST(colorDifference, cie94_weighsHueByTheSecondChroma) {
    // Equal chroma 5, dH^2 = 1 + 1 = 2, SH = 1.075.
    EXPECT_DOUBLE_EQ(squareOf({50.0, 3.0, 4.0}, {50.0, 4.0, 3.0}, kCie94), 2.0 / (1.075 * 1.075));
}

TEST(colorDifference, cie94_doesNotWeighLightness) {
    EXPECT_EQ(squareOf({50.0, 30.0, 40.0}, {57.0, 30.0, 40.0}, kCie94), 49.0);
}

TEST(colorDifference, cie94_followsTheFormulaInItsOrder) {
    const std::vector<Triple> colors = manyColors();
    for (const Triple& p : colors) {
        for (const Triple& q : colors)
            ASSERT_EQ(squareOf(p, q, kCie94), statedCie94(p, q)) << p[1] << ' ' << p[2] << ' ' << q[1];
    }
}

TEST(colorDifference, cie94_ofThePairsOfLuoWithTheSecondColorAsStandard) {
    for (const LuoPair& pair : luoPairs())
        EXPECT_NEAR(differenceOf(pair.lab1, pair.lab2, kCie94), pair.cie94[0], 2e-9) << pair.number;
}

TEST(colorDifference, cie94_ofThePairsOfLuoWithTheFirstColorAsStandardIsTheSwappedCall) {
    for (const LuoPair& pair : luoPairs()) {
        EXPECT_NEAR(differenceOf(pair.lab2, pair.lab1, kCie94), pair.cie94[1], 2e-9) << pair.number;
        EXPECT_GT(std::fabs(differenceOf(pair.lab1, pair.lab2, kCie94) - pair.cie94[1]), 5e-5) << pair.number;
    }
}

// CIEDE2000.

TEST(colorDifference, ciede2000_givesThePublishedDifferencesItShares) {
    int checks = 0;
    for (const SharmaPair& pair : sharmaPairs()) {
        if (pair.guard)
            continue;
        ++checks;
        EXPECT_NEAR(differenceOf(pair.lab1, pair.lab2, kCiede2000), pair.published, 0.0001) << pair.number;
        EXPECT_NEAR(differenceOf(pair.lab1, pair.lab2, kCiede2000), pair.here, 2e-9) << pair.number;
    }
    EXPECT_EQ(checks, 23);
}

TEST(colorDifference, ciede2000_departsFromThePublishedDifferencesWhereItMust) {
    std::set<int> guards;
    for (const SharmaPair& pair : sharmaPairs()) {
        if (!pair.guard)
            continue;
        guards.insert(pair.number);
        const double difference = differenceOf(pair.lab1, pair.lab2, kCiede2000);
        EXPECT_NEAR(difference, pair.here, 2e-9) << pair.number;
        EXPECT_GT(std::fabs(difference - pair.published), 0.0005) << pair.number;
    }
    EXPECT_EQ(guards, (std::set<int>{1, 2, 3, 4, 5, 6, 10, 17, 19, 27, 29}));
}

TEST(colorDifference, ciede2000_ofBluesAddsTheRotationTerm) {
    // Pairs 19 and 29, typed from an independent calculation.
    EXPECT_NEAR(differenceOf({50.0, 2.5, 0.0}, {56.0, -27.0, -3.0}, kCiede2000), 25.237792744, 2e-9);
    EXPECT_NEAR(differenceOf({22.7233, 20.0904, -46.6940}, {23.0331, 14.9730, -42.5619}, kCiede2000),
                3.987535476, 2e-9);
}

TEST(colorDifference, ciede2000_rotatesByTheUnprimedMeanChroma) {
    // The rotation factor from the primed mean chroma gives 13.9688513, a subtracted one 12.5339924.
    EXPECT_NEAR(differenceOf({50.0, 16.0, -18.0}, {55.0, 3.0, -15.0}, kCiede2000), 13.801378655, 2e-9);
}

TEST(colorDifference, ciede2000_ofHuesAround350And30DegreesHasAMeanHueOf370) {
    const Triple lab1 = {50.0, 20.0, -4.0};
    const Triple lab2 = {50.0, 12.0, 9.0};
    // A mean hue of 10 degrees in the exponential gives 11.252642712.
    EXPECT_NEAR(differenceOf(lab1, lab2, kCiede2000), 11.252642121544, 1e-10);
    EXPECT_NEAR(differenceOf(lab2, lab1, kCiede2000), 11.252642121544, 1e-10);
}

TEST(colorDifference, ciede2000_turnsOppositeHuesByTheTenDigitPi) {
    // Exactly 180 degrees are more than 3.1415926535, so that half a turn is added to the mean hue.
    EXPECT_NEAR(differenceOf({50.0, 2.49, -0.001}, {50.0, -2.49, 0.001}, kCiede2000), 7.219470093, 2e-9);
}

TEST(colorDifference, ciede2000_ofGreysIsTheWeightedLightness) {
    // Lm = 55 - 50 = 5: SL = 1 + 0.015 * 25 / sqrt(45).
    const double sL = 1.0 + 0.375 / std::sqrt(45.0);
    EXPECT_DOUBLE_EQ(differenceOf({50.0, 0.0, 0.0}, {60.0, 0.0, 0.0}, kCiede2000), 10.0 / sL);
}

TEST(colorDifference, ciede2000_followsTheFormulaInItsOrder) {
    const std::vector<Triple> colors = manyColors();
    for (const Triple& p : colors) {
        for (const Triple& q : colors)
            ASSERT_EQ(squareOf(p, q, kCiede2000), statedCiede2000(p, q))
                << p[0] << ' ' << p[1] << ' ' << p[2] << " - " << q[0] << ' ' << q[1] << ' ' << q[2];
    }
    for (const SharmaPair& pair : sharmaPairs())
        EXPECT_EQ(squareOf(pair.lab1, pair.lab2, kCiede2000), statedCiede2000(pair.lab1, pair.lab2))
            << pair.number;
}

TEST(colorDifference, ciede2000_isSymmetric) {
    for (const SharmaPair& pair : sharmaPairs())
        EXPECT_NEAR(differenceOf(pair.lab2, pair.lab1, kCiede2000), pair.here, 2e-9) << pair.number;
}

// CMC.

TEST(colorDifference, cmc_hasALightnessFloorOf0511) {
    // At L* = 10 the formula alone gives 0.348.
    EXPECT_DOUBLE_EQ(differenceOf({12.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, kCmc11), 2.0 / 0.511);
    EXPECT_DOUBLE_EQ(differenceOf({12.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, kCmc21), 1.0 / 0.511);
    EXPECT_DOUBLE_EQ(differenceOf({1.0, 0.0, 0.0}, {-0.000004, 0.0, 0.0}, kCmc11), 1.000004 / 0.511);
}

TEST(colorDifference, cmc_weighsLightnessByTheFormulaAboveTheFloor) {
    // 0.040975 * 50 / (1 + 0.01765 * 50) = 2.04875 / 1.8825 = 1.0883...
    EXPECT_DOUBLE_EQ(differenceOf({52.0, 0.0, 0.0}, {50.0, 0.0, 0.0}, kCmc11), 2.0 * 1.8825 / 2.04875);
    EXPECT_DOUBLE_EQ(differenceOf({52.0, 0.0, 0.0}, {50.0, 0.0, 0.0}, kCmc21), 1.8825 / 2.04875);
}

TEST(colorDifference, cmc_usesTheFloorRatherThanTheTestAt16) {
    // Between 15.99 and 16 the formula is above the floor already.
    const double sL = 0.040975 * 15.998 / (1.0 + 0.01765 * 15.998);
    ASSERT_GT(sL, 0.5111);
    EXPECT_DOUBLE_EQ(differenceOf({25.998, 0.0, 0.0}, {15.998, 0.0, 0.0}, kCmc11), 10.0 / sL);
}

TEST(colorDifference, cmc_takesLightnessFromTheSecondColor) {
    EXPECT_DOUBLE_EQ(differenceOf({50.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, kCmc11), 40.0 / 0.511);
    EXPECT_DOUBLE_EQ(differenceOf({10.0, 0.0, 0.0}, {50.0, 0.0, 0.0}, kCmc11), 40.0 * 1.8825 / 2.04875);
}

TEST(colorDifference, cmc_takesChromaFromTheSecondColor) {
    const Triple neutral = {50.0, 0.0, 0.0};
    const Triple chromatic = {50.0, 30.0, 40.0};
    // SC = 3.19 / 1.655 + 0.638 for C* = 50, 0.638 for 0.
    EXPECT_DOUBLE_EQ(differenceOf(neutral, chromatic, kCmc11), 50.0 / (3.19 / 1.655 + 0.638));
    EXPECT_DOUBLE_EQ(differenceOf(chromatic, neutral, kCmc11), 50.0 / 0.638);
}

TEST(colorDifference, cmc_lightnessFactorTouchesLightnessAlone) {
    const Triple lab1 = {50.0, 13.0, -21.0};
    const Triple lab2 = {50.0, 25.0, -11.0};
    EXPECT_EQ(squareOf(lab1, lab2, kCmc11), squareOf(lab1, lab2, kCmc21));
}

TEST(colorDifference, cmc_hueRangeIncludes164Degrees) {
    const double edge = 2.862339973188889;
    const Triple lab1 = {50.0, -30.0, -10.0};
    const Triple at = colorAtHue(50.0, -40.0, edge);
    const Triple before = colorAtHue(50.0, -40.0, std::nextafter(edge, 0.0));
    const double beforeHue = hueOf(before[1], before[2]);
    // T is 0.7366 inside and 0.7382 outside.
    ASSERT_GT(cmcTOutside(edge) - cmcTInside(edge), 0.001);
    EXPECT_EQ(squareOf(lab1, at, kCmc11), statedCmcWithT(lab1, at, 1.0, cmcTInside(edge)));
    EXPECT_EQ(squareOf(lab1, before, kCmc11), statedCmcWithT(lab1, before, 1.0, cmcTOutside(beforeHue)));
}

TEST(colorDifference, cmc_hueRangeIncludes345Degrees) {
    const double edge = 6.021385919208333;
    const Triple lab1 = {50.0, 30.0, 10.0};
    const Triple at = colorAtHue(50.0, 40.0, edge);
    const Triple behind = colorAtHue(50.0, 40.0, std::nextafter(edge, 7.0));
    const double behindHue = hueOf(behind[1], behind[2]);
    // T is 0.7382 inside and 0.7359 outside.
    ASSERT_GT(cmcTInside(edge) - cmcTOutside(edge), 0.002);
    EXPECT_EQ(squareOf(lab1, at, kCmc21), statedCmcWithT(lab1, at, 2.0, cmcTInside(edge)));
    EXPECT_EQ(squareOf(lab1, behind, kCmc21), statedCmcWithT(lab1, behind, 2.0, cmcTOutside(behindHue)));
}

TEST(colorDifference, cmc_followsTheFormulaInItsOrder) {
    const std::vector<Triple> colors = manyColors();
    for (const Triple& p : colors) {
        for (const Triple& q : colors) {
            ASSERT_EQ(squareOf(p, q, kCmc11), statedCmc(p, q, 1.0)) << p[1] << ' ' << p[2] << ' ' << q[1];
            ASSERT_EQ(squareOf(p, q, kCmc21), statedCmc(p, q, 2.0)) << p[1] << ' ' << p[2] << ' ' << q[1];
        }
    }
}

TEST(colorDifference, cmc_ofThePairsOfLuoWithTheSecondColorAsStandard) {
    for (const LuoPair& pair : luoPairs()) {
        EXPECT_NEAR(differenceOf(pair.lab1, pair.lab2, kCmc11), pair.cmc11[0], 2e-9) << pair.number;
        EXPECT_NEAR(differenceOf(pair.lab1, pair.lab2, kCmc21), pair.cmc21[0], 2e-9) << pair.number;
    }
}

TEST(colorDifference, cmc_ofThePairsOfLuoWithTheFirstColorAsStandardIsTheSwappedCall) {
    for (const LuoPair& pair : luoPairs()) {
        EXPECT_NEAR(differenceOf(pair.lab2, pair.lab1, kCmc11), pair.cmc11[1], 2e-9) << pair.number;
        EXPECT_NEAR(differenceOf(pair.lab2, pair.lab1, kCmc21), pair.cmc21[1], 2e-9) << pair.number;
        EXPECT_GT(std::fabs(differenceOf(pair.lab1, pair.lab2, kCmc11) - pair.cmc11[1]), 5e-4) << pair.number;
        EXPECT_GT(std::fabs(differenceOf(pair.lab1, pair.lab2, kCmc21) - pair.cmc21[1]), 5e-4) << pair.number;
    }
}

TEST(colorDifference, cie94AndCmc_changeWhenColorsOfUnequalChromaAreSwapped) {
    const Triple lab1 = {48.0, 12.0, -9.0};
    const Triple lab2 = {51.0, 40.0, -17.0};
    for (const int function : {kCie94, kCmc11, kCmc21})
        EXPECT_GT(std::fabs(squareOf(lab1, lab2, function) - squareOf(lab2, lab1, function)), 1.0)
            << function;
}

// The squared hue difference.

TEST(colorDifference, squareHueDifference_isHandCalculated) {
    const Triple lab1 = {50.0, 3.0, 4.0};
    const Triple sameChroma = {20.0, -3.0, 4.0};
    EXPECT_EQ(TLabSpace::CalcSquareDeltaHConvertedStatic(lab1.data(), sameChroma.data()), 36.0);
    // (12 - 3)^2 + (-5 - 4)^2 - (5 - 13)^2.
    const Triple other = {90.0, 12.0, -5.0};
    EXPECT_EQ(TLabSpace::CalcSquareDeltaHConvertedStatic(lab1.data(), other.data()), 98.0);
    EXPECT_EQ(TLabSpace::CalcSquareDeltaHConvertedStatic(other.data(), lab1.data()), 98.0);
}

TEST(colorDifference, squareHueDifference_mayComeOutNegativeThroughRounding) {
    double lowest = 0.0;
    for (int i = 1; i < 500; ++i) {
        const double factor = 1.0 + 0.01 * i;
        const Triple lab1 = {50.0, 7.1, 3.3};
        const Triple lab2 = {50.0, 7.1 * factor, 3.3 * factor};
        const double da = lab2[1] - lab1[1];
        const double db = lab2[2] - lab1[2];
        const double dC = chromaOf(lab1[1], lab1[2]) - chromaOf(lab2[1], lab2[2]);
        const double square = TLabSpace::CalcSquareDeltaHConvertedStatic(lab1.data(), lab2.data());
        ASSERT_EQ(square, da * da + db * db - dC * dC) << i;
        lowest = std::min(lowest, square);
    }
    EXPECT_LT(lowest, 0.0);
    EXPECT_GT(lowest, -1e-12);
}

TEST(colorDifference, squareHueDifference_ofNullIsNotANumber) {
    const Triple lab = {50.0, 3.0, 4.0};
    EXPECT_TRUE(std::isnan(TLabSpace::CalcSquareDeltaHConvertedStatic(nullptr, lab.data())));
    EXPECT_TRUE(std::isnan(TLabSpace::CalcSquareDeltaHConvertedStatic(lab.data(), nullptr)));
}

} // namespace
