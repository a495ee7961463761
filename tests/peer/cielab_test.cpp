// CIELAB and back beside Little CMS, which has the exact fractions of CIE 15:2004 where six digits stand
// here.
#include "colorspace/tlabspace.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "tests/peer/random_colors.h"

namespace qxcms::tests {
namespace {

const Triple kWhites[] = {
    {95.047, 100.0, 108.883}, {96.422, 100.0, 82.521}, {109.85, 100.0, 35.585}, {98.88, 90.0, 32.03}};

// What f(t) may differ by.
double differenceOfF(double t) {
    // Both take the cube root: 1/3 and 0.33333333333333 give 3.4e-15 |ln t| f, |ln t| < 4.8.
    if (t > 0.00886)
        return 2e-14;
    // Both are linear, but for t between 0.008856 and (24/116)^3, where the two branches meet to 1e-9:
    // |7.787079 - 841/108| * 0.00886 + |0.137931 - 16/116| = 3.72e-7 + 0.35e-7.
    return 4.1e-7;
}

// What its inverse may differ by.
double differenceOfInverse(double u) {
    // Both are cubes, of arguments that are rounded differently.
    if (u > 0.2069)
        return 1e-14 * std::max(1.0, u * u * u);
    // (u - 0.137931) / 7.787079 beside (u - 16/116) * 108/841 down to where both are negative, which is 0
    // here: |1/7.787079 - 108/841| * 0.069 + |0.137931 - 16/116| / 7.787 = 4.8e-8 + 0.45e-8; at the
    // thresholds 1e-9.
    return 5.5e-8;
}

TEST(peer, givesTheSameLab) {
    RandomColors colors;
    int linear = 0;
    for (const Triple& white : kWhites) {
        const TLabSpace space(white.data());
        const cmsCIEXYZ theirWhite = theirXyz(white);
        for (int i = 0; i < kColors / 4; ++i) {
            const Triple xyz = colors.xyz(white);
            Triple ours;
            space.XYZToLab(xyz.data(), ours.data());
            cmsCIELab theirs;
            const cmsCIEXYZ color = theirXyz(xyz);
            cmsXYZ2Lab(&theirWhite, &theirs, &color);
            Triple f;
            for (std::size_t k = 0; k < 3; ++k) {
                f[k] = differenceOfF(xyz[k] / white[k]);
                linear += f[k] > 1e-12;
            }
            ASSERT_NEAR(ours[0], theirs.L, 116.0 * f[1]) << xyz[1];
            ASSERT_NEAR(ours[1], theirs.a, 500.0 * (f[0] + f[1])) << xyz[0] << ' ' << xyz[1];
            ASSERT_NEAR(ours[2], theirs.b, 200.0 * (f[1] + f[2])) << xyz[1] << ' ' << xyz[2];
        }
    }
    EXPECT_GT(linear, kColors / 10);
}

TEST(peer, givesTheSameXyz) {
    RandomColors colors;
    int clamped = 0;
    for (const Triple& white : kWhites) {
        const TLabSpace space(white.data());
        const cmsCIEXYZ theirWhite = theirXyz(white);
        for (int i = 0; i < kColors / 4; ++i) {
            const Triple lab = colors.lab();
            Triple ours;
            space.LabToXYZ(lab.data(), ours.data());
            cmsCIEXYZ theirs;
            const cmsCIELab color = theirLab(lab);
            cmsLab2XYZ(&theirWhite, &theirs, &color);
            const double fy = (lab[0] + 16.0) / 116.0;
            const Triple u = {fy + lab[1] / 500.0, fy, fy - lab[2] / 200.0};
            const Triple expected = {theirs.X, theirs.Y, theirs.Z};
            for (std::size_t k = 0; k < 3; ++k) {
                clamped += expected[k] < 0.0;
                // Negative components are 0 here.
                ASSERT_NEAR(ours[k], std::max(expected[k], 0.0), white[k] * differenceOfInverse(u[k]))
                    << u[k];
            }
        }
    }
    EXPECT_GT(clamped, kColors / 10);
}

} // namespace
} // namespace qxcms::tests
