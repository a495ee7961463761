/// @file
/// Values relative to the paper against values of a perfect white. Internal.
#pragma once

#include <string>
#include <vector>

#include "qc/compared_row.h"
#include "qc/finding.h"

namespace qxcms::qc {

/// Warns where the lightest sample of one side is as a perfect white (L* 100, no chroma), which no paper is,
/// while the same sample is a paper (light, without much chroma, L* below 98) on the other side: such values
/// are relative to the paper. Nothing is told of fewer than eight samples, which may be tiles.
/// @param rows row by row what was measured, and what is expected. @param measured the name of the file of
/// the one, @param reference that of the other. @param areRgb whether RGB pairs them, so that they may be
/// displays, which have a white and no paper.
std::vector<Finding> perfectWhites(const std::vector<ComparedRow>& rows, const std::string& measured,
                                   const std::string& reference, bool areRgb);

} // namespace qxcms::qc
