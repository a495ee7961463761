/// @file
/// Where the data files stand: logical paths below the main logical name, their paths, and that name itself.
///
/// A data file "<name>.<ext>" stands in a subdirectory of one of two trees below the main logical name, which
/// is "QX_CMS" at first: "w", what was written on this machine, and "r", what came with the suite. Its
/// logical path is "QX_CMS:[w.subdir]name.ext"; fport makes a path of it. What the functions have in common:
///
/// - subdir and ext may be null or empty; an extension is appended only to a name without a ".".
/// - subdir may be several levels with a "." between them ("ill.old"). A "/" in the main logical name, subdir
///   or name, and an empty level, make a logical path that cannot be translated.
/// - What follows the first "." of a name must be ext, in either case of the letters, when that is given.
/// - size is that of the buffer, the terminator included; nothing is written beyond it. The texts that a
///   function is given may stand in the buffers that it writes, unless it says otherwise.
/// - The result is 0; -10 when there is no such file; -1 when a logical path could not be built or
///   translated, did not fit, lacks an argument, or there is no memory.
/// - A wrong extension, and a file that was not found, are reported once, as an error of the module
///   "qxcms_dp" of 255 characters at most. Nothing else is reported unless it says so.
///
/// The main logical name belongs to the process and has no lock; only these functions look at it. Looking for
/// a pipe waits until somebody writes into it, as opening it does. Nothing here throws.
#pragma once

#include "base/export.h"
#include "platform/logical_names.h"

extern "C" {

/// The size of the buffer that holds the main logical name.
enum { QXCMS_DP_MAIN_SIZE = 129 };

/// Gives the logical path of a data file.
/// @param tree "w" or "r".
QXCMS_API int qxcms_dp_gpp(char* out, int size, const char* subdir, const char* name, const char* ext,
                           const char* tree);

/// Gives the path of a data file, which need not exist.
/// @param tree "w" or "r".
QXCMS_API int qxcms_dp_gp(char* out, int size, const char* subdir, const char* name, const char* ext,
                          const char* tree);

/// Looks for a data file that opens for reading, in "w" and then in "r".
/// @param out receives its path; the last one that was tried when there is no such file.
QXCMS_API int qxcms_dp_sf(char* out, int size, const char* subdir, const char* name, const char* ext);

/// As qxcms_dp_sf, in one tree. @param tree null: in "w" and then in "r".
QXCMS_API int qxcms_dp_sfd(char* out, int size, const char* subdir, const char* name, const char* ext,
                           const char* tree);

/// As qxcms_dp_sf, but gives the logical path instead of the path.
QXCMS_API int qxcms_dp_spf(char* out, int size, const char* subdir, const char* name, const char* ext);

/// Gives the path of a data file, which need not exist, in two parts.
/// @param dirOut `size` characters; receives the directory, which ends with a separator.
/// @param nameOut `size` characters; receives the name with its extension.
/// @param tree "w" or "r".
QXCMS_API int qxcms_dp_gp_path(char* dirOut, char* nameOut, int size, const char* subdir, const char* name,
                               const char* ext, const char* tree);

/// Looks for a data file that opens for reading and is not empty, in "w" and then in "r", and gives its path
/// in two parts as qxcms_dp_gp_path does. A path of more than 255 characters is not found.
QXCMS_API int qxcms_dp_sf_path(char* dirOut, char* nameOut, int size, const char* subdir, const char* name,
                               const char* ext);

/// @return the length of a path whose file opens for reading, else 0; 0 for null.
QXCMS_API int qxcms_dp_ffspec(const char* path);

/// The buffer of the main logical name, QXCMS_DP_MAIN_SIZE characters. The caller may write into it.
QXCMS_API char* qxcms_dp_get_main(void);

/// Changes the main logical name.
/// @param newName less than QXCMS_DP_MAIN_SIZE characters with a translation.
/// @param oldOut receives the name so far. A name of exactly oldSize characters comes without a terminator.
/// @param oldSize the size of oldOut; QXCMS_DP_MAIN_SIZE is enough for every name that was set here.
/// @return 0, or -1, reported, when newName has no translation, is too long, or the old name does not fit: in
/// this order. Nothing is changed then, and nothing is reported when there is no memory.
QXCMS_API int qxcms_dp_set_qxcms_main_dir_lognam(const char* newName, char* oldOut, int oldSize);

/// Gives the translation of the main logical name.
/// @param out QXCMS_LOGNAM_SIZE characters; empty when there is none.
/// @return 0, also then; -1 for null, and when there is no memory.
QXCMS_API int qxcms_dp_get_main_dirn(char* out);

/// Defines the main logical name as `dir`, unless that is its translation already; an empty `dir` removes the
/// definition.
/// @param buffer QXCMS_LOGNAM_SIZE characters other than those of `dir`; receives the translation so far.
/// @return 0, also when the definition could not be kept; -1 for null, and when there is no memory to know
/// the translation so far: nothing is defined then.
QXCMS_API int qxcms_dp_set_cmsd(const char* dir, char* buffer);

} // extern "C"
