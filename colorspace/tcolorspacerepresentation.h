/// @file
/// The abstract base of the colour spaces.
#pragma once

#include "base/export.h"

/// One colour space on one reference white. Triples are arrays of three doubles; XYZ is on the scale of the
/// white.
class QXCMS_API TColorSpaceRepresentation {
public:
    TColorSpaceRepresentation() = default;
    TColorSpaceRepresentation(const TColorSpaceRepresentation&) = delete;
    TColorSpaceRepresentation& operator=(const TColorSpaceRepresentation&) = delete;
    virtual ~TColorSpaceRepresentation();

    /// Space coordinates to XYZ. @return 0 on success.
    virtual int ToXYZ(const double* in, double* xyz) const = 0;
    /// XYZ to space coordinates. @return 0 on success.
    virtual int FromXYZ(const double* xyz, double* out) const = 0;
    /// The difference of two XYZ triples; the second is the standard.
    virtual double CalcDeltaE(const double* xyz1, const double* xyz2, int function) const = 0;
    /// The squared difference of two XYZ triples; the second is the standard.
    virtual double CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const = 0;
    /// The squared difference of two triples in the space's coordinates; the second is the standard.
    virtual double CalcSquareDeltaEConverted(const double* c1, const double* c2, int function) const = 0;
    /// The error number; 0 means usable.
    virtual int ErrNo() = 0;
};
