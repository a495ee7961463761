#include "qc/conditions.h"

#include <algorithm>
#include <cmath>

#include "qc/illuminants.h"
#include "qc/printable_text.h"
#include "qc/published_whites.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

constexpr unsigned kTenDegree = 1;

std::array<double, 3> whiteOf(const TIlluminantAndObserver& weighting) {
    std::array<double, 3> white;
    weighting.GetXYZWhite(white.data());
    return white;
}

bool isWhite(const std::array<double, 3>& xyz) {
    return std::all_of(xyz.begin(), xyz.end(),
                       [](double value) { return std::isfinite(value) && value > 0.0; });
}

} // namespace

Conditions::Conditions(const TIlluminant& illuminant, const TObserver& observer)
    : illuminantName(illuminant.GetName()), observerName(observer.GetName()),
      weighting(&illuminant, &observer, TIlluminantAndObserver::kMaxPoints), whiteXyz(whiteOf(weighting)),
      publishedXyz(qc::publishedWhite(shortIlluminant(illuminantName), observer.GetNumber() == kTenDegree)
                       .value_or(whiteXyz)),
      spectralSpace(whiteXyz.data()), publishedSpace(publishedXyz.data()) {
    if (weighting.IlluminantNeedsASTM308Tables(nullptr) == 1 && observer.GetNumber() == kTenDegree)
        throw Refusal(
            Refusal::Kind::usage,
            "the weights of " + quoted(illuminantName) +
                " are those of the 2 degree observer; use --observer \"2 degree\" or another illuminant");
    if (weighting.GetStatus() != 0 || !isWhite(whiteXyz))
        throw Refusal(Refusal::Kind::unreadable, "the illuminant " + quoted(illuminantName) +
                                                     " gives no white; its file holds no usable spectrum");
}

Lab Conditions::labOf(const TSpectrum& spectrum) const {
    std::array<double, 3> xyz;
    weighting.GetXYZ(&spectrum, xyz.data(), TIlluminantAndObserver::kMaxPoints);
    Lab lab;
    spectralSpace.XYZToLab(xyz.data(), lab.data());
    return lab;
}

Lab Conditions::labOf(const std::array<double, 3>& xyz) const {
    Lab lab;
    publishedSpace.XYZToLab(xyz.data(), lab.data());
    return lab;
}

} // namespace qxcms::qc
