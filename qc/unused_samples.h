/// @file
/// What a pairing leaves out. Internal.
#pragma once

#include <functional>
#include <string>

#include "qc/pairing.h"

namespace qxcms::qc {

/// Adds a finding about rows without a counterpart where there are some: a warning where measured rows are
/// among them, else a note. @param nameOf what tells a measured row from others, for the first one.
void addUnusedSamples(const Chart& measured, const Chart& reference,
                      const std::function<std::string(int row)>& nameOf, Pairing& pairing);

} // namespace qxcms::qc
