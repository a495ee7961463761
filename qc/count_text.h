/// @file
/// Numbers of things as people read them. Internal.
#pragma once

#include <cstddef>
#include <string>

namespace qxcms::qc {

/// "72", "1,545", "12,000,000".
std::string countText(std::size_t count);

} // namespace qxcms::qc
