/// @file
/// Everything that can be asked of a spectrum.
#pragma once

#include "spectral/tspectrum.h"

namespace qxcms::fuzz {

/// Ends the process unless both hold the same samples and standard values, bit by bit.
void mustEqual(const TSpectrum& a, const TSpectrum& b);

/// Asks a spectrum that was read from anything, writes it in all forms and reads these back; ends the process
/// when answers contradict each other.
void askSpectrum(TSpectrum& spectrum);

} // namespace qxcms::fuzz
