/// @file
/// One handle for every colour space.
#pragma once

#include <cstdint>
#include <memory>

#include "base/export.h"
#include "colorspace/tcolorspacerepresentation.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// A colour space chosen by its index in the list of names, on one reference white: 0 CIELAB, 1 CIECAM97s,
/// 2 CIECAM02, the appearance models for the average surround.
///
/// Triples are arrays of three doubles, XYZ on the scale of the white. `function` is the position in the
/// space's list of difference functions. White and space cannot be changed later. A handle whose space is
/// unknown converts nothing: the conversions return 1, the squared differences are -1.0.
class QXCMS_API TColorSpace {
public:
    /// @param white Xn, Yn, Zn. @param space an index of the list; ErrNo is 1 for any other (and where there
    /// is no memory).
    TColorSpace(const double* white, int space);
    TColorSpace(const TColorSpace&) = delete;
    TColorSpace& operator=(const TColorSpace&) = delete;
    ~TColorSpace();

    /// Coordinates of the space to XYZ. @return 0.
    int ToXYZ(const double* in, double* xyz) const;
    /// XYZ to coordinates of the space. @return 0.
    int FromXYZ(const double* xyz, double* out) const;

    /// The difference of two XYZ triples, the square root of CalcSquareDeltaE in every space; not a number
    /// for an unknown function, where the representation's own CalcDeltaE gives -1.0.
    double CalcDeltaE(const double* xyz1, const double* xyz2, int function) const;
    /// The squared difference of two XYZ triples.
    double CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const;
    /// The squared difference of two triples in coordinates of the space.
    double CalcSquareDeltaEConverted(const double* c1, const double* c2, int function) const;

    /// 0 usable, 1 unknown space, else what the representation finds (2 a white that CIELAB refuses).
    int ErrNo();

    /// 3.
    static int GetColorSpaceListSize();
    /// The names of the spaces, by index.
    static const char* const* GetColorSpaceList();

    /// The number of difference functions of this space; -1 for an unknown one.
    int GetDifferenceFunctionListSize() const;
    static int GetDifferenceFunctionListSize(int space);
    /// Their names, by index; null for an unknown space.
    const char* const* GetDifferenceFunctionList() const;
    static const char* const* GetDifferenceFunctionList(int space);

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t errorNumber;
    std::int32_t spaceIndex;
    std::unique_ptr<TColorSpaceRepresentation> representation;
};
