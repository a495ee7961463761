/// @file
/// Tristimulus values relative to a white.
#pragma once

#include <cstdint>

#include "base/export.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// XYZR, each component of XYZ divided by the white's, and YR, the luminance relative to the white's.
///
/// Triples are arrays of three doubles; results may take the place of what they are made from. Operations
/// with a null argument write nothing.
class QXCMS_API TXYZRSpace {
public:
    /// @param white Xn, Yn, Zn, kept as they are. A component below 1e-6 gives error 2 without a report; so
    /// does null, which stands for 0, 0, 0.
    explicit TXYZRSpace(const double* white);
    TXYZRSpace(const TXYZRSpace&) = delete;
    TXYZRSpace& operator=(const TXYZRSpace&) = delete;
    virtual ~TXYZRSpace();

    /// xyzr[i] = xyz[i] / white[i]. @return 0.
    int XYZToXYZR(const double* xyz, double* xyzr) const;
    /// xyz[i] = xyzr[i] * white[i]. @return 0.
    int XYZRToXYZ(const double* xyzr, double* xyz) const;
    /// The neutral of one relative luminance: xyz[i] = white[i] * yr[0]. @return 0.
    int YRToXYZ(const double* yr, double* xyz) const;
    /// One relative luminance: yr[0] = Y / Yn. @return 0.
    int XYZToYR(const double* xyz, double* yr) const;

    /// 0, or 2 for a white that cannot be divided by.
    int ErrNo() const { return errorNumber; }

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t errorNumber;
    double white[3];
};
