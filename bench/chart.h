// A made-up chart of the size of a printing target: 1,617 patches, CMYK, 36 bands.
#pragma once

#include <string>

namespace qxcms::bench {

inline constexpr int kPatches = 1617;
inline constexpr int kBands = 36;

/// The chart as a CGATS text; every value has four decimals.
std::string chartText(int patches);

} // namespace qxcms::bench
