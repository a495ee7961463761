/// @file
/// What texts say of measurements of light. Internal.
#pragma once

#include <optional>
#include <vector>

#include "qc/text_words.h"

namespace qxcms::qc {

/// Whether a text about anything says that light sources or displays were measured.
bool saysEmission(const std::vector<Word>& words);

/// The same for a text that tells what was measured: false when it says that samples were.
std::optional<bool> emissionOf(const std::vector<Word>& words);

} // namespace qxcms::qc
