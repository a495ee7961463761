/// @file
/// The conditions that a comparison was made for.
#pragma once

#include <string>
#include <vector>

#include "qc/finding.h"

namespace qxcms::qc {

/// A condition and where it comes from.
struct ChosenCondition {
    enum class Origin { asked, declared, freeText, assumed };

    std::string value; ///< "D50", "2 degree"
    Origin origin;
};

/// "asked", "declared", "text", "assumed".
const char* nameOf(ChosenCondition::Origin origin);

struct ChosenConditions {
    ChosenCondition illuminant;
    ChosenCondition observer;
    bool forced = false; ///< declared conditions differ, and the comparison is made all the same
    std::vector<Finding> findings;
};

} // namespace qxcms::qc
