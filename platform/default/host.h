/// @file
/// What a program needs of the bundled platform layer beyond the kernel's own calls.
#pragma once

#include "base/export.h"

extern "C" {

/// Receives the reports of the suite's libraries. The texts are valid during the call only.
struct qxcms_report_handler {
    /// An error report; null drops errors.
    void (*error)(void* context, const char* message, const char* module, int line);
    /// A warning; null drops warnings.
    void (*warning)(void* context, int level, const char* message);
    /// Handed to both.
    void* context;
};

/// Installs the one handler of the process; null brings back the default, which prints
/// "module:line: message" for an error and "warning: message" for a warning to stderr.
/// Not to be called while another thread reports.
QXCMS_API void qxcms_set_report_handler(const qxcms_report_handler* handler);

} // extern "C"
