// Figures of the colour space that show at the edges of what it takes.
#include "colorspace/tlabspace.h"

#include <array>

#include <gtest/gtest.h>

namespace {

using Triple = std::array<double, 3>;

TEST(labSpace, white_ofNullIsNoLightAtAll) {
    const TLabSpace space(nullptr);
    const Triple lab = {50.0, 20.0, -30.0};
    Triple xyz = {1.0, 1.0, 1.0};
    EXPECT_EQ(space.LabToXYZ(lab.data(), xyz.data()), 0);
    EXPECT_EQ(xyz, (Triple{0.0, 0.0, 0.0}));
}

} // namespace
