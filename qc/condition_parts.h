/// @file
/// Header lines of several parts: "Illumination=D50 ObserverAngle=2, Filter: No". Internal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qc/condition_subjects.h"

namespace qxcms::qc {

/// "Filter=No"
struct Part {
    std::optional<Subject> subject; ///< nothing for a name that is not known
    std::string value;
};

/// The parts of a value; none where it does not consist of them.
struct Parts {
    std::string before; ///< the first name
    std::vector<Part> parts;

    bool haveASubject() const {
        return std::any_of(parts.begin(), parts.end(),
                           [](const Part& part) { return part.subject.has_value(); });
    }
};

/// @param blanksLost for a value whose blanks are lost, in which a name may follow a value immediately.
Parts partsOf(std::string_view value, bool blanksLost);

/// Where the last "ILLUMINANT" or "OBSERVER" begins; the text holds both.
std::size_t lastLabel(const std::string& value);

/// "ILLUMINANT, Xenon" without its label.
std::string withoutFirstWord(const std::string& value, std::string_view label);

} // namespace qxcms::qc
