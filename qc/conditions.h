/// @file
/// The conditions of a comparison: illuminant, observer, white and formula.
#pragma once

#include <array>
#include <string>

#include "colorspace/tlabspace.h"
#include "qc/difference.h"
#include "qc/formulas.h"
#include "spectral/tilluminant.h"
#include "spectral/tilluminantandobserver.h"
#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"

namespace qxcms::qc {

/// Turns spectra and tristimulus values into Lab on the white of one illuminant and one observer.
class Conditions {
public:
    /// @param illuminant not owned.
    /// @throws Refusal (usage) for F2, F7 and F11 with the 10 degree observer, which their weights do not
    /// cover; Refusal (unreadable) for an illuminant that gives no white.
    Conditions(const TIlluminant& illuminant, const TObserver& observer, const Formula& formula);
    Conditions(const Conditions&) = delete;
    Conditions& operator=(const Conditions&) = delete;

    const std::string& illuminant() const { return illuminantName; }
    const std::string& observer() const { return observerName; }
    const Formula& formula() const { return chosenFormula; }
    /// X, Y, Z with Y = 100.
    const std::array<double, 3>& white() const { return whiteXyz; }

    /// Lab of a reflectance factor (0..1 scale).
    Lab labOf(const TSpectrum& spectrum) const;
    /// Lab of X, Y, Z on the scale of the white.
    Lab labOf(const std::array<double, 3>& xyz) const;

private:
    std::string illuminantName;
    std::string observerName;
    Formula chosenFormula;
    TIlluminantAndObserver weighting;
    std::array<double, 3> whiteXyz;
    TLabSpace space;
};

} // namespace qxcms::qc
