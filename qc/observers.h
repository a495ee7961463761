/// @file
/// The observers by name. Internal.
#pragma once

#include <string>

#include "spectral/tobserver.h"

namespace qxcms::qc {

/// The observer of that name, ignoring case, in every spelling that is understood in files: "2", "10",
/// "2deg", "CIE 1931", "CIE 1964 10 degree" ...
/// @throws Refusal (usage) that lists the known ones.
TObserver findObserver(const std::string& name);

/// Every name, for messages and help.
std::string knownObservers();

} // namespace qxcms::qc
