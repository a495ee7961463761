/// @file
/// The appearance model CIECAM02.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/export.h"
#include "colorspace/tcolorspacerepresentation.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// CIECAM02 (CIE 159:2004) for one surround and one scene.
///
/// Coordinates: lightness J, chroma C, hue angle h in degrees, 0 to 360. XYZ on the scale of the white.
/// Surrounds: 0 average, 1 dim, 2 dark. Triples are arrays of three doubles, results may take the place of
/// what they are made from, and operations with a null triple write nothing. There is one difference
/// function, whose index is ignored.
///
/// Nothing is checked but the surround: a zero white component, a background of 0, negative cone responses
/// and J = 0 on the way back divide by zero or give what is not a number.
class QXCMS_API TColorSpace_CIECAM02 : public TColorSpaceRepresentation {
public:
    /// A scene of 1000 / pi cd/m^2 before a background of 20. @param surround any but 0, 1 and 2 gives error
    /// -1 (and c, Nc and F of 0), as does a null white.
    TColorSpace_CIECAM02(const double* white, int surround);
    ~TColorSpace_CIECAM02() override;

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
    /// Sets c, Nc and F; a scene is to be initialised afterwards. @return 0, or 1 for an unknown surround,
    /// which changes nothing.
    int InitializeViewingCondition(int surround);
    /// @param adaptingLuminance La in cd/m^2. @param background Yb on the scale of the white.
    /// @return 0, or 1 for a null white, which changes nothing.
    int InitializeScene(const double* white, double adaptingLuminance, double background);

    // The stages, each from one triple to the next. @return 0.

    /// XYZ to the sharpened RGB of CAT02.
    int ToCAT02(const double* xyz, double* rgb) const;
    /// RGB times Yw D / Rw + 1 - D, channel by channel.
    int ChromaticAdaptation(const double* rgb, double* adapted) const;
    /// Adapted RGB to cone responses.
    int ToHuntPointerEstevez(const double* rgb, double* cones) const;
    /// 400 p / (p + 27.13) + 0.1 with p = (FL x / 100)^0.42; not a number for a negative response.
    int NonlinearAdaptation(const double* cones, double* compressed) const;
    /// (A, a, b) to compressed cone responses.
    int AabToRGB(const double* aab, double* compressed) const;
    /// Compressed to cone responses, which are never negative.
    int InverseNonlinearAdaptation(const double* compressed, double* cones) const;
    /// Cone responses to XYZ.
    int FromHuntPointerEstevez(const double* cones, double* xyz) const;
    /// RGB divided by the factors of ChromaticAdaptation.
    int InverseChromaticAdaptation(const double* adapted, double* rgb) const;
    /// RGB of CAT02 to XYZ.
    int FromCAT02(const double* rgb, double* xyz) const;

    /// 1.
    static int GetDifferenceFunctionListSize();
    /// The name of the difference.
    static const char* const* GetDifferenceFunctionList();

private:
    friend struct qxcms::detail::LayoutProbe;

    double adaptationFactor(double channelOfWhite) const;
    void adaptationFactors(double* factors) const;
    double achromaticResponse(const double* compressed) const;
    double chromaScale() const;
    void forward(const double* xyz, const double* factors, double scale, double* jch) const;
    void opponents(const double* jch, double achromatic, double* aab) const;

    double white[3];
    std::int32_t errorNumber;
    double c;
    double Nc;
    double F;
    double La;
    double Yb;
    double Rw;
    double Gw;
    double Bw;
    double Aw;
    double D;
    double n;
    double Nbb;
    double z;
    double FL;
};
