/// @file
/// A caller's stream while the library works on it. Internal.
#pragma once

#include <ios>

#include "base/guarded.h"

namespace qxcms::detail {

/// A caller's stream keeps its exceptions to itself while the library uses it.
class QuietStream {
public:
    explicit QuietStream(std::ios& quieted) : stream(quieted), mask(quieted.exceptions()) {
        stream.exceptions(std::ios::goodbit);
    }
    ~QuietStream() {
        guarded(0, [this] {
            stream.exceptions(mask);
            return 0;
        });
    }
    QuietStream(const QuietStream&) = delete;
    QuietStream& operator=(const QuietStream&) = delete;

private:
    std::ios& stream;
    std::ios::iostate mask;
};

} // namespace qxcms::detail
