/// @file
/// Reports of the resource database's errors.
#pragma once

#include "base/export.h"

extern "C" {

/// Reports the last error of the resource database, `rdb_err`, and sets it to 0: "<context> : <text of the
/// error>", or "<context> : rdb-error no : <code>" for a code without a text, or the context alone, which is
/// reported all the same, when there was no error. Reports are cut at 255 characters.
/// @param context what the caller was doing; null counts as "".
/// @return 0, always.
QXCMS_API int qxcms_rdb_err(const char* context);

} // extern "C"
