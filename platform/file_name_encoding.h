/// @file
/// What the kernel calls of the suite's file-name library: from UTF-8 to the file system's encoding.
#pragma once

#include "base/export.h"

extern "C" {

/// Spells a file name, given in UTF-8, in the encoding of the local file system.
/// @param out receives at most `size` characters, the terminator included; an empty text on failure.
/// @return 0, or non-zero for text that is not UTF-8, that has no spelling there, or that does not fit.
QXCMS_API int UTF8ToLocalEncoding(const char* in, char* out, int size);

} // extern "C"
