/// @file
/// The observers by name.
#pragma once

#include <string>

#include "spectral/tobserver.h"

namespace qxcms::qc {

/// The observer of that name, ignoring case; "2", "10", "2deg", "CIE 1931" and "1964" will do.
/// @throws Refusal (usage) that lists the known ones.
TObserver findObserver(const std::string& name);

/// The name of an observer as the kernel has it ("2 degree"), of any spelling that findObserver takes; the
/// text as it is for any other.
std::string canonicalObserver(const std::string& name);

/// Every name, for messages and help.
std::string knownObservers();

} // namespace qxcms::qc
