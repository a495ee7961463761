// The abstract base of the colour spaces: what it carries and how its operations are reached.
#include "colorspace/tcolorspacerepresentation.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"

namespace {

// A space whose coordinates are twice the XYZ values; it tells when it goes.
class DoubledSpace : public TColorSpaceRepresentation {
public:
    explicit DoubledSpace(bool* flag) : gone(flag) {}
    ~DoubledSpace() override { *gone = true; }

    int ToXYZ(const double* in, double* xyz) const override {
        for (int i = 0; i < 3; ++i)
            xyz[i] = in[i] / 2.0;
        return 11;
    }
    int FromXYZ(const double* xyz, double* out) const override {
        for (int i = 0; i < 3; ++i)
            out[i] = xyz[i] * 2.0;
        return 12;
    }
    double CalcDeltaE(const double* xyz1, const double* xyz2, int function) const override {
        return std::sqrt(CalcSquareDeltaE(xyz1, xyz2, function));
    }
    double CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const override {
        double c1[3];
        double c2[3];
        FromXYZ(xyz1, c1);
        FromXYZ(xyz2, c2);
        return CalcSquareDeltaEConverted(c1, c2, function);
    }
    double CalcSquareDeltaEConverted(const double* c1, const double* c2, int) const override {
        return (c1[0] - c2[0]) * (c1[0] - c2[0]);
    }
    int ErrNo() override { return 13; }

private:
    bool* gone;
};

TEST(colorSpaceRepresentation, base_carriesNoDataMember) {
    EXPECT_EQ(sizeof(TColorSpaceRepresentation), sizeof(void*));
}

TEST(colorSpaceRepresentation, base_isAbstractAndDestroyedVirtually) {
    EXPECT_TRUE(std::is_abstract_v<TColorSpaceRepresentation>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TColorSpaceRepresentation>);
}

TEST(colorSpaceRepresentation, spaces_areNeitherCopiedNorAssigned) {
    EXPECT_FALSE(std::is_copy_constructible_v<TColorSpaceRepresentation>);
    EXPECT_FALSE(std::is_copy_assignable_v<TColorSpaceRepresentation>);
    EXPECT_FALSE(std::is_copy_constructible_v<TLabSpace>);
    EXPECT_FALSE(std::is_copy_assignable_v<TLabSpace>);
}

TEST(colorSpaceRepresentation, labSpace_isARepresentation) {
    EXPECT_TRUE((std::is_base_of_v<TColorSpaceRepresentation, TLabSpace>));
    EXPECT_FALSE(std::is_abstract_v<TLabSpace>);
}

TEST(colorSpaceRepresentation, labSpace_addsAWhiteAndAnErrorNumberAlone) {
#if defined(__x86_64__)
    // The table pointer, three doubles, a 32-bit number and its padding.
    EXPECT_EQ(sizeof(TLabSpace), 40U);
#else
    GTEST_SKIP() << "sizes are fixed on x86-64";
#endif
}

#if defined(__x86_64__) && defined(__GNUC__)
// The slot of a virtual operation: pointers to virtual members hold its byte offset in the table, plus 1.
template <class Member>
std::ptrdiff_t slotOf(Member member) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(colorSpaceRepresentation, operations_standBehindTheTwoDestructorsInOrder) {
    EXPECT_EQ(slotOf(&TColorSpaceRepresentation::ToXYZ), 2);
    EXPECT_EQ(slotOf(&TColorSpaceRepresentation::FromXYZ), 3);
    EXPECT_EQ(slotOf(&TColorSpaceRepresentation::CalcDeltaE), 4);
    EXPECT_EQ(slotOf(&TColorSpaceRepresentation::CalcSquareDeltaE), 5);
    EXPECT_EQ(slotOf(&TColorSpaceRepresentation::CalcSquareDeltaEConverted), 6);
    EXPECT_EQ(slotOf(&TColorSpaceRepresentation::ErrNo), 7);
}
#endif

TEST(colorSpaceRepresentation, anotherSpace_isReachedThroughTheBase) {
    bool gone = false;
    const std::unique_ptr<TColorSpaceRepresentation> space = std::make_unique<DoubledSpace>(&gone);
    const double xyz1[3] = {1.0, 2.0, 3.0};
    const double xyz2[3] = {3.0, 2.0, 1.0};
    double out[3] = {0.0, 0.0, 0.0};
    EXPECT_EQ(space->FromXYZ(xyz1, out), 12);
    EXPECT_EQ(out[2], 6.0);
    EXPECT_EQ(space->ToXYZ(xyz1, out), 11);
    EXPECT_EQ(out[0], 0.5);
    EXPECT_EQ(space->CalcSquareDeltaE(xyz1, xyz2, 0), 16.0);
    EXPECT_EQ(space->CalcDeltaE(xyz1, xyz2, 0), 4.0);
    EXPECT_EQ(space->CalcSquareDeltaEConverted(xyz1, xyz2, 0), 4.0);
    EXPECT_EQ(space->ErrNo(), 13);
}

TEST(colorSpaceRepresentation, deletionThroughTheBase_destroysTheWholeObject) {
    bool gone = false;
    std::unique_ptr<TColorSpaceRepresentation> space = std::make_unique<DoubledSpace>(&gone);
    space.reset();
    EXPECT_TRUE(gone);
}

TEST(colorSpaceRepresentation, labSpace_convertsThroughTheBase) {
    const double white[3] = {96.422, 100.0, 82.521};
    const TLabSpace lab(white);
    const TColorSpaceRepresentation& space = lab;
    const double xyz[3] = {20.0, 30.0, 10.0};
    double direct[3];
    double throughBase[3];
    EXPECT_EQ(lab.XYZToLab(xyz, direct), 0);
    EXPECT_EQ(space.FromXYZ(xyz, throughBase), 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(throughBase[i], direct[i]) << i;
    double back[3];
    double backThroughBase[3];
    EXPECT_EQ(lab.LabToXYZ(direct, back), 0);
    EXPECT_EQ(space.ToXYZ(direct, backThroughBase), 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(backThroughBase[i], back[i]) << i;
}

TEST(colorSpaceRepresentation, labSpace_answersItsErrorThroughTheBase) {
    const double white[3] = {96.422, 100.0, 82.521};
    TLabSpace good(white);
    TLabSpace bad(nullptr);
    TColorSpaceRepresentation* space = &good;
    EXPECT_EQ(space->ErrNo(), 0);
    space = &bad;
    EXPECT_EQ(space->ErrNo(), 2);
}

} // namespace
