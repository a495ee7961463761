/// @file
/// What the kernel calls of the suite's logical-name library: translation of logical names, search through
/// directories, access to open files. Nothing here throws.
#pragma once

#include <stdio.h>

#include "base/export.h"

extern "C" {

/// The size of the buffer that lognam fills.
enum { QXCMS_LOGNAM_SIZE = 4096 };

/// Translates a logical name: a definition made with deflognam, else the environment variable of that name,
/// else, for "QX_CMS", the directory of the data that come with the library.
/// @param out at least QXCMS_LOGNAM_SIZE characters; receives the translation, empty when there is none.
/// @return 0, or -1 when there is no translation or an argument is null, and when there is no memory to tell,
/// with errno at ENOMEM.
QXCMS_API int lognam(const char* name, char* out);

/// Defines a logical name for this process; a null or empty value removes the definition.
/// @return 0, or -1 when it could not be kept.
QXCMS_API int deflognam(const char* name, const char* value);

/// Translates a specification into a path: "root:[a.b]name.ext" becomes "<root>/a/b/name.ext", "root:[a.b]"
/// becomes "<root>/a/b/", and "[a.]" is as "[a]"; any other text is a plain path and is copied. The result of
/// the first two must not be the text itself: the searches for data files take it for one without a path.
/// @return 0, or -1 when the root has no translation or the path does not fit `size` characters.
QXCMS_API int fport(char* out, int size, const char* specification);

/// A search through one directory.
struct fsearch_state;

/// Starts a search. @param directory a plain path or a specification "root:[a.b]".
/// @param option one byte of options; 2 asks for regular files with their path. @return null when it cannot
/// be searched.
QXCMS_API fsearch_state* fsinit(const char* directory, const unsigned char* option);

/// The next file of a search, in ascending order of the names (compared byte by byte).
/// @param out receives the path. @return 0, or -1 when there is no further file.
QXCMS_API int fsearch(fsearch_state* search, char* out, int size);

/// Ends a search; null is accepted.
QXCMS_API void fsfree(fsearch_state* search);

/// The end position, that is the size, of an open file; -1 when it cannot be told. The position stays.
QXCMS_API long fgeteof(FILE* file);

/// Reads up to `size` bytes. @return the number of bytes read.
QXCMS_API long fgetm(FILE* file, void* buffer, long size);

/// Writes `size` bytes. @return the number of bytes written.
QXCMS_API long fputm(FILE* file, const void* buffer, long size);

} // extern "C"
