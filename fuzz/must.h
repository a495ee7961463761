/// @file
/// What has to hold while a fuzzer runs.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace qxcms::fuzz {

/// Ends the process, which makes the input a finding, unless `holds`.
inline void must(bool holds, const char* rule) {
    if (holds)
        return;
    std::fprintf(stderr, "This must hold and does not: %s\n", rule);
    std::abort();
}

} // namespace qxcms::fuzz
