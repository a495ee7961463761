/// @file
/// The appearance model CIECAM97s.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/export.h"
#include "colorspace/tcolorspacerepresentation.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// CIECAM97s (CIE 131:1998) for one surround and one scene.
///
/// Coordinates: lightness J, chroma C, hue angle h in degrees, 0 to 360. XYZ on the scale of the white.
/// Surrounds: 0 average, 1 dim, 2 dark. Triples are arrays of three doubles, results may take the place of
/// what they are made from, and operations with a null triple write nothing. There is one difference
/// function, whose index is ignored.
///
/// Nothing is checked but the surround: a sample's Y of 0, a background of 0, negative cone or blue responses
/// and J = 0 on the way back divide by zero or give what is not a number.
class QXCMS_API TColorSpace_CIECAM97s : public TColorSpaceRepresentation {
public:
    /// A scene of 1000 / pi cd/m^2 before a background of 20. @param surround any but 0, 1 and 2 gives error
    /// -1 (and c, Nc, FLL and F of 0), as does a null white.
    TColorSpace_CIECAM97s(const double* white, int surround);
    ~TColorSpace_CIECAM97s() override;

    /// JCh to XYZ. @return 0.
    int ToXYZ(const double* jch, double* xyz) const override;
    /// XYZ to JCh. @return 0.
    int FromXYZ(const double* xyz, double* jch) const override;
    /// FromXYZ of `count` consecutive triples, with the same bits. @return 0.
    int FromXYZBatch(const double* xyz, double* jch, std::size_t count) const;
    /// The squared difference of two XYZ triples, without a root (TColorSpace::CalcDeltaE takes it); -1.0 for
    /// null.
    double CalcDeltaE(const double* xyz1, const double* xyz2, int function) const override;
    /// The squared difference of two XYZ triples; -1.0 for null.
    double CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const override;
    /// dJ^2 + da^2 + db^2 of two JCh triples, (a, b) = (C cos h, C sin h); -1.0 for null.
    double CalcSquareDeltaEConverted(const double* jch1, const double* jch2, int function) const override;
    /// 0, or -1 for an unknown surround.
    int ErrNo() override;

    /// White, error number, surround and scene become 0. @return 0.
    int SetToZero();
    /// Sets c, Nc, FLL and F; a scene is to be initialised afterwards. @return 0, or 1 for an unknown
    /// surround, which changes nothing.
    int InitializeViewingCondition(int surround);
    /// @param adaptingLuminance La in cd/m^2. @param background Yb on the scale of the white.
    /// @return 0, or 1 for a null white, which changes nothing.
    int InitializeScene(const double* white, double adaptingLuminance, double background);

    // The stages, each from one triple to the next. @return 0.

    /// XYZ, divided by its Y, to the sharpened RGB of Bradford.
    int MultiplyByMb(const double* xyz, double* rgb) const;
    /// RGB to adapted RGB, blue through its power p.
    int MultiplyByDp(const double* rgb, double* adapted) const;
    /// Adapted RGB, times the sample's Y, to cone responses.
    int MultiplyByMhMbInv(const double* adapted, double* cones, double Y) const;
    /// 40 q / (q + 2) + 1 with q = (FL x / 100)^0.73; not a number for a negative response.
    int MultiplyPostAdaption(const double* cones, double* compressed) const;
    /// Cone responses times `FL` to adapted RGB times Y.
    int MultiplyByMbMhInv(const double* cones, double* adapted, double FL) const;
    /// Adapted RGB times Y to XYZ.
    int MultiplyByMbInv(const double* adapted, double* xyz) const;
    /// The eccentricity of a hue in degrees; below 0 and above 360 the first and the last line go on.
    double CalculateE(double h) const;
    /// A compressed response to the cone response times FL.
    double CalculatePrime(double x) const;
    /// 1.0, or -1.0 below 0.
    double sgn(double x) const;

    /// 1.
    static int GetDifferenceFunctionListSize();
    /// The name of the difference.
    static const char* const* GetDifferenceFunctionList();

private:
    friend struct qxcms::detail::LayoutProbe;

    double adaptationFactor(double channelOfWhite) const;
    void adaptationFactors(double* factors) const;
    void adapt(const double* rgb, const double* factors, double* adapted) const;
    double achromaticResponse(const double* compressed) const;
    double backgroundChroma() const;
    double chromaScale(double J) const;
    void forward(const double* xyz, const double* factors, double background, double* jch) const;
    void opponents(const double* jch, double* aab) const;

    double white[3];
    std::int32_t errorNumber;
    double c;
    double Nc;
    double FLL;
    double F;
    double La;
    double Yb;
    double Rw;
    double Gw;
    double Bw;
    double D;
    double p;
    double n;
    double Nbb;
    double z;
    double FL;
    double Aw;
};
