// CIECAM02 forward beside Little CMS.
#include "colorspace/tcolorspace_ciecam02.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "tests/peer/random_colors.h"

namespace qxcms::tests {
namespace {

using Model = TColorSpace_CIECAM02;

struct Scene {
    Triple white;
    int surround;
    double adaptingLuminance, background;
};

const Scene kScenes[] = {
    {{95.05, 100.0, 108.88}, 0, 318.30988618379, 20.0},
    {{95.05, 100.0, 108.88}, 1, 31.83, 20.0},
    {{109.85, 100.0, 35.58}, 0, 31.83, 20.0},
    {{109.85, 100.0, 35.58}, 2, 4.0, 5.0},
    {{98.88, 90.0, 32.03}, 0, 200.0, 18.0},
    {{98.88, 90.0, 32.03}, 1, 20.0, 60.0},
    {{96.42, 100.0, 82.49}, 2, 318.31, 60.0},
    {{96.42, 100.0, 82.49}, 0, 4.0, 20.0},
};

constexpr double kDegreesOfF[] = {1.0, 0.9, 0.8};
constexpr double kExponents[] = {0.69, 0.59, 0.525};

// Their model of a scene. The degree of adaptation is handed over, because Little CMS works it out as
// F - exp(...) / 3.6 where CIE 159:2004 has F (1 - exp(...) / 3.6); in the average surround it is the same.
class TheirModel {
public:
    explicit TheirModel(const Scene& scene) {
        const double F = kDegreesOfF[scene.surround];
        cmsViewingConditions conditions;
        conditions.whitePoint = theirXyz(scene.white);
        conditions.Yb = scene.background;
        conditions.La = scene.adaptingLuminance;
        conditions.surround = static_cast<cmsUInt32Number>(AVG_SURROUND + scene.surround);
        conditions.D_value = scene.surround == 0
                                 ? D_CALCULATE
                                 : F * (1.0 - std::exp((-42.0 - scene.adaptingLuminance) / 92.0) / 3.6);
        model = cmsCIECAM02Init(nullptr, &conditions);
    }
    ~TheirModel() { cmsCIECAM02Done(model); }
    TheirModel(const TheirModel&) = delete;
    TheirModel& operator=(const TheirModel&) = delete;

    Triple operator()(const Triple& xyz) const {
        const cmsCIEXYZ color = theirXyz(xyz);
        cmsJCh jch;
        cmsCIECAM02Forward(model, &color, &jch);
        return {jch.J, jch.C, jch.h};
    }

private:
    cmsHANDLE model;
};

// Compressed responses and what they may differ by. The matrix from adapted RGB to cone responses has seven
// decimals here and is the product of its two factors there: half a unit of the seventh decimal for each
// channel, which counts most where a response is near 0 and the compression is steep.
struct Responses {
    Responses(const Model& model, const Triple& xyz) {
        Triple rgb, cones, lower, upper, compressedLower, compressedUpper;
        model.ToCAT02(xyz.data(), rgb.data());
        model.ChromaticAdaptation(rgb.data(), rgb.data());
        model.ToHuntPointerEstevez(rgb.data(), cones.data());
        const double reach = 5e-8 * (std::fabs(rgb[0]) + std::fabs(rgb[1]) + std::fabs(rgb[2])) + 1e-12;
        for (std::size_t i = 0; i < 3; ++i) {
            lower[i] = cones[i] - reach;
            upper[i] = cones[i] + reach;
            arePositive = arePositive && lower[i] > 0.0;
        }
        model.NonlinearAdaptation(cones.data(), value.data());
        model.NonlinearAdaptation(lower.data(), compressedLower.data());
        model.NonlinearAdaptation(upper.data(), compressedUpper.data());
        for (std::size_t i = 0; i < 3; ++i)
            error[i] = std::max(value[i] - compressedLower[i], compressedUpper[i] - value[i]);
    }

    double relativeErrorOfA() const {
        return (2.0 * error[0] + error[1] + 0.05 * error[2]) /
               (2.0 * value[0] + value[1] + 0.05 * value[2] - 0.305);
    }

    Triple value, error;
    bool arePositive = true;
};

struct Tolerance {
    double ofJ, ofChroma;
};

// To first order, doubled: J goes with (A / Aw)^(c z), C with J^0.5 and t^0.9, t with the length of (a, b),
// with the reciprocal of R'a + G'a + 1.05 B'a, and with et, which the hue changes by no more than 0.25 / 0.7
// of itself a radian. What is left, 1e-9, is for the digits of pi and rounding.
Tolerance toleranceOf(const Responses& color, double relativeErrorOfWhite, double exponent,
                      const Triple& jch) {
    const Triple& v = color.value;
    const Triple& e = color.error;
    const double a = v[0] - 12.0 * v[1] / 11.0 + v[2] / 11.0;
    const double b = (v[0] + v[1] - 2.0 * v[2]) / 9.0;
    const double ofOpponents =
        std::hypot(e[0] + 12.0 * e[1] / 11.0 + e[2] / 11.0, (e[0] + e[1] + 2.0 * e[2]) / 9.0) /
        std::hypot(a, b);
    const double ofSum = (e[0] + e[1] + 1.05 * e[2]) / (v[0] + v[1] + 1.05 * v[2]);
    const double ofJ = exponent * (color.relativeErrorOfA() + relativeErrorOfWhite);
    const double ofC = 0.5 * ofJ + 0.9 * (ofOpponents * (1.0 + 0.25 / 0.7) + ofSum);
    return {2.0 * ofJ * jch[0] + 1e-9, 2.0 * (ofC + ofOpponents) * jch[1] + 1e-9 * (1.0 + jch[1])};
}

double distanceInChroma(const Triple& jch1, const Triple& jch2) {
    constexpr double kRadian = 3.14159265358979323846 / 180.0;
    return std::hypot(jch1[1] * std::cos(jch1[2] * kRadian) - jch2[1] * std::cos(jch2[2] * kRadian),
                      jch1[1] * std::sin(jch1[2] * kRadian) - jch2[1] * std::sin(jch2[2] * kRadian));
}

TEST(peer, givesTheSameCiecam02) {
    RandomColors colors;
    constexpr int kPerScene = kColors / 8;
    for (const Scene& scene : kScenes) {
        Model model(scene.white.data(), scene.surround);
        model.InitializeScene(scene.white.data(), scene.adaptingLuminance, scene.background);
        const TheirModel theirModel(scene);
        const double ofWhite = Responses(model, scene.white).relativeErrorOfA();
        const double exponent =
            kExponents[scene.surround] * (1.48 + std::sqrt(scene.background / scene.white[1]));
        int nearlyTheSame = 0;
        for (int compared = 0; compared < kPerScene;) {
            const Triple xyz = colors.xyz(scene.white);
            const Responses responses(model, xyz);
            // A negative response is not a number here, and compressed with its sign there.
            if (!responses.arePositive)
                continue;
            ++compared;
            Triple ours;
            model.FromXYZ(xyz.data(), ours.data());
            const Triple theirs = theirModel(xyz);
            const Tolerance tolerance = toleranceOf(responses, ofWhite, exponent, ours);
            const double inChroma = distanceInChroma(ours, theirs);
            ASSERT_NEAR(ours[0], theirs[0], tolerance.ofJ) << xyz[0] << ' ' << xyz[1] << ' ' << xyz[2];
            ASSERT_LE(inChroma, tolerance.ofChroma) << xyz[0] << ' ' << xyz[1] << ' ' << xyz[2];
            nearlyTheSame += tolerance.ofJ < 1e-3 && tolerance.ofChroma < 0.01;
        }
        // The tolerance is a narrow one for nearly all.
        EXPECT_GT(nearlyTheSame, kPerScene - kPerScene / 50);
    }
}

} // namespace
} // namespace qxcms::tests
