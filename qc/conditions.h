/// @file
/// The conditions that colours are computed for: illuminant, observer and their white. Internal.
#pragma once

#include <array>
#include <string>

#include "colorspace/tlabspace.h"
#include "qc/difference.h"
#include "spectral/tilluminant.h"
#include "spectral/tilluminantandobserver.h"
#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"

namespace qxcms::qc {

/// Turns spectra and tristimulus values into Lab, each on the white of one illuminant and one observer that
/// belongs to it: spectra on the white that the same weights give, tristimulus values, which others computed,
/// on the published one. (Neutrals would be off by some hundredths of a unit on the other white.)
class Conditions {
public:
    /// @param illuminant not owned.
    /// @throws Refusal (usage) for F2, F7 and F11 with the 10 degree observer, which their weights do not
    /// cover; Refusal (unreadable) for an illuminant that gives no white.
    Conditions(const TIlluminant& illuminant, const TObserver& observer);
    Conditions(const Conditions&) = delete;
    Conditions& operator=(const Conditions&) = delete;

    const std::string& illuminant() const { return illuminantName; }
    const std::string& observer() const { return observerName; }
    /// X, Y, Z with Y = 100, as the weights give it: the white of spectra.
    const std::array<double, 3>& white() const { return whiteXyz; }
    /// X, Y, Z with Y = 100, as published: the white of tristimulus values. The other one where none is
    /// published.
    const std::array<double, 3>& publishedWhite() const { return publishedXyz; }

    /// Lab of a reflectance factor (0..1 scale).
    Lab labOf(const TSpectrum& spectrum) const;
    /// Lab of X, Y, Z on the scale where white has Y = 100.
    Lab labOf(const std::array<double, 3>& xyz) const;

private:
    std::string illuminantName;
    std::string observerName;
    TIlluminantAndObserver weighting;
    std::array<double, 3> whiteXyz;
    std::array<double, 3> publishedXyz;
    TLabSpace spectralSpace;
    TLabSpace publishedSpace;
};

} // namespace qxcms::qc
