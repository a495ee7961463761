/// @file
/// CIELAB, its conversions and its colour differences.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/export.h"
#include "colorspace/tcolorspacerepresentation.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// CIELAB on one reference white.
///
/// Triples: XYZ on the scale of the white; Lab = (L*, a*, b*); LHC = (L*, hue in radians, C*). Operations
/// with a null triple write nothing. Difference functions: 0 CIE 1976, 1 CIE 1994, 2 CIEDE2000, 3 CMC(1:1),
/// 4 CMC(2:1); the second triple is the standard. Batches take arrays of triples, one after the other,
/// allocate nothing and may be called from many threads at once.
class QXCMS_API TLabSpace : public TColorSpaceRepresentation {
public:
    /// @param white Xn, Yn, Zn. The first component below 0 is set to 0, reported, and gives error 2; null
    /// gives error 2 without a report.
    explicit TLabSpace(const double* white);
    ~TLabSpace() override;

    int ToXYZ(const double* lab, double* xyz) const override;
    int FromXYZ(const double* xyz, double* lab) const override;
    double CalcDeltaE(const double* xyz1, const double* xyz2, int function) const override;
    double CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const override;
    double CalcSquareDeltaEConverted(const double* lab1, const double* lab2, int function) const override;
    int ErrNo() override;

    /// The function f of CIELAB: t * 7.787079 + 0.137931 up to 0.008856, the cube root above.
    static double FLab(double t);
    /// Its inverse, with its threshold at 0.206893.
    static double Fm1Lab(double u);

    /// XYZ to Lab; negative components count as 0. @return 0.
    int XYZToLab(const double* xyz, double* lab) const;
    /// XYZ to Lab for `count` triples in a row, in single precision: the reciprocals of the white once, each
    /// ratio rounded to float, t * 7.787079f + 0.137931f or pow(t, 0.3333333432674408) rounded to float, the
    /// differences of f in float. The arrays are the same or apart. @return 0.
    int FastXYZToLab(const double* xyz, double* lab, int count) const;
    /// XYZToLab of `count` consecutive triples, with the same bits; lab may be xyz. @return 0.
    int XYZToLabBatch(const double* xyz, double* lab, std::size_t count) const;
    /// Lab to XYZ; components that come out negative become 0. @return 0.
    int LabToXYZ(const double* lab, double* xyz) const;
    /// LabToXYZ of `count` consecutive triples, with the same bits; xyz may be lab. @return 0.
    int LabToXYZBatch(const double* lab, double* xyz, std::size_t count) const;
    /// Lab on this white to Lab on `newWhite`, without going through XYZ. @return 0.
    int LabToLab(const double* lab, double* labOut, const double* newWhite) const;

    /// The hue angle of (a*, b*) in radians, 0 to 6.283185307; -1.57079632675 for a* = 0 and b* < 0. Not a
    /// number for null.
    static double CalculateHue(const double* lab);
    /// Lab to LHC. @return 0.
    static int LabToLHC(const double* lab, double* lhc);
    /// LabToLHC of `count` consecutive triples, with the same bits; lhc may be lab. @return 0.
    static int LabToLHCBatch(const double* lab, double* lhc, std::size_t count);
    /// LHC to Lab; hues outside 0 to 2 pi are not reduced. @return 0.
    static int LHCToLab(const double* lhc, double* lab);
    /// XYZ to LHC. @return 0.
    int XYZToLHC(const double* xyz, double* lhc) const;
    /// LHC to XYZ. @return 0.
    int LHCToXYZ(const double* lhc, double* xyz) const;
    /// The squared chroma of an XYZ triple. @return 0.
    int GetSqSat(const double* xyz, double* sqSat) const;
    /// Re-expresses xyz, in place, from one white to another through Lab. @return 0.
    static int XYZToLabToXYZ(const double* whiteFrom, const double* whiteTo, double* xyz);

    /// The squared difference of two Lab triples; -1.0 for an unknown function or null.
    static double CalcSquareDeltaEConvertedStatic(const double* lab1, const double* lab2, int function);
    /// CalcSquareDeltaEConvertedStatic of `count` consecutive pairs of triples, with the same bits. @return
    /// 0.
    static int CalcSquareDeltaEConvertedBatch(const double* lab1, const double* lab2, int function,
                                              double* squares, std::size_t count);
    /// CalcSquareDeltaE of `count` consecutive pairs of XYZ triples, with the same bits. @return 0.
    int CalcSquareDeltaEBatch(const double* xyz1, const double* xyz2, int function, double* squares,
                              std::size_t count) const;
    /// The squared hue difference of two Lab triples; rounding may leave it slightly negative. Not a number
    /// for null.
    static double CalcSquareDeltaHConvertedStatic(const double* lab1, const double* lab2);
    /// The index of a function name, ignoring case; 0 for a name that is not in the list.
    static int DifferenceFunctionNameToIndex(const char* name);
    /// 5.
    static int GetDifferenceFunctionListSize();
    /// The names of the difference functions, by index.
    static const char* const* GetDifferenceFunctionList();

private:
    friend struct qxcms::detail::LayoutProbe;

    double white[3];
    std::int32_t errorNumber;
};
