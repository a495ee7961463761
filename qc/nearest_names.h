/// @file
/// Names that may have been meant. Internal.
#pragma once

#include <string>
#include <vector>

namespace qxcms::qc {

/// Up to `most` of the known names that differ least from a name that is not known, nearest first: by the
/// number of letters to put in, leave out, replace or exchange, ignoring case; those that differ by more than
/// half of their letters are left out.
std::vector<std::string> nearestNames(const std::string& name, const std::vector<std::string>& known,
                                      std::size_t most = 3);

/// `unknown illuminant "FL14" (did you mean F1, F4?)`: the beginning of a refusal.
/// @param like a spelling of `name` that is nearer to the known ones.
std::string unknownName(const std::string& what, const std::string& name, const std::string& like,
                        const std::vector<std::string>& known);

} // namespace qxcms::qc
