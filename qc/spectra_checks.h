/// @file
/// The bands and values of spectra. Internal.
#pragma once

#include <vector>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// narrowSpectra, coarseSpectra, negativeReflectance and spectralScale, where spectra are the source.
/// @param isLight that of light sources, which are not held to the scale of reflectances.
std::vector<Finding> findInSpectra(const Inspected& inspected, bool isLight);

} // namespace qxcms::qc
