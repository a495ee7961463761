/// @file
/// The observers by name.
#pragma once

#include <string>

#include "spectral/tobserver.h"

namespace qxcms::qc {

/// The observer of that name, ignoring case; "2" and "10" will do.
/// @throws Refusal (usage) that lists the known ones.
TObserver findObserver(const std::string& name);

/// Every name, for messages and help.
std::string knownObservers();

} // namespace qxcms::qc
