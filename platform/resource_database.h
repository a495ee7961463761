/// @file
/// What the kernel calls of the suite's resource-database library: resource files of topics, items and
/// values.
///
/// A resource file holds topics, a topic holds items, an item holds one value text; all in their order of
/// addition. Names are unique (those of items in their topic), compared byte by byte, may be empty and may
/// hold any byte but NUL, as may values. Topics and items carry a text beside, a remark that no operation
/// reads. A topic with its remark, or an item with its value and remark, of more than 999,000,000 bytes
/// cannot be written: every rdb_flush fails while there is one.
///
/// A database (`rdb_db`) is what files are pushed to. A topic is looked for in the file that came last, then
/// in the one before it and so on: a topic hides those of the same name in earlier files, with all their
/// items.
///
/// Changes are made in memory and are the database's own until rdb_flush writes them; nobody waits for a
/// database with unwritten changes. What others write meanwhile is seen after the next rdb_flush that had
/// changes to write to the file, or by pushing it once more. Each rdb_flush writes to each file in one
/// transaction: after a crash at any moment the file holds what the last completed one left.
///
/// The name "<path>-journal" belongs to a resource file: rdb_flush writes there, and what stands there when
/// the file is opened is used to undo an interrupted writing, and deleted. So a name may have 247 bytes and a
/// path, links resolved, 504.
///
/// Pointers that are given out (values, names) are valid until the database is changed, flushed or closed;
/// operations that look for something leave them.
/// A database is used by one thread at a time; `rdb_err` is one for the whole process.
///
/// Operations that fail set `rdb_err`; those that succeed leave it as it is. They set
///  - 1, no resource file specified: the path is null or empty;
///  - 2, a resource file cannot be opened or created;
///  - 3, no entries: the n-th topic or item is asked for where there is none at all;
///  - 4, the database is null, or there is no memory for one;
///  - 5, the database has no files;
///  - 6, the file is null or is not one of the database's;
///  - 7, a topic cannot be added: it is there already, its name is null, or there is no memory for its place;
///  - 8, an item cannot be added or changed: it is there already, a name or value is null, or there is no
///    memory for a changed value;
///  - 9, 10, there is no memory for a topic, for an item;
///  - 11, there is no memory for the place of an item in its topic;
///  - 12, changes could not be written;
///  - 13, 14, there is no n-th topic, no n-th item;
///  - 15, a topic does not exist (where one is to be removed: 19);
///  - 17, an item does not exist;
///  - 18, a value does not fit its destination;
///  - 20, a topic cannot be removed with its items: there is no memory to note it.
///
/// 16, too many indirections, is never set by the bundled implementation.
#pragma once

#include "base/export.h"

extern "C" {

/// An open database.
struct rdb_db;

/// A resource file that was pushed or created. It belongs to its database and is gone with rdb_close.
struct rdb_file;

/// The last error, 0 to 20; 0: none. Whoever has dealt with it sets it to 0.
extern QXCMS_API int rdb_err;

/// A new database without files, to be released with rdb_close. @return null when there is no memory (4).
QXCMS_API rdb_db* rdb_open(void);

/// Makes an existing resource file the one in which topics are looked for first.
/// A file without the marks of a resource file, an empty one too, is left untouched. While another process
/// writes to the file this waits for it, two seconds at most.
/// @param path a plain path; relative ones count from the folder that is current now.
/// @return null when the file cannot be read (1, 2, 4).
QXCMS_API rdb_file* rdb_push_rfile(rdb_db* db, const char* path);

/// Makes a new resource file without topics, at once, and pushes it. Nothing that stands under the path, a
/// symbolic link too, is ever replaced; under "<path>-journal" nothing but the journal of a resource file
/// that is gone. The path of the folder, links resolved, may have 460 bytes.
/// @return null when it cannot be made (1, 2, 4).
QXCMS_API rdb_file* rdb_create_rfile(rdb_db* db, const char* path);

/// @return 1 when one of the files has the topic, else 0 (4, 5, 15).
QXCMS_API int rdb_search_topic(rdb_db* db, const char* topic);

/// Adds a topic without items behind the others of a file. Another file may have one of that name.
/// @param text a remark; null counts as "".
/// @return 1, or 0 (4, 5, 6, 7, 9).
QXCMS_API int rdb_add_topic(rdb_db* db, rdb_file* file, const char* topic, const char* text);

/// Removes a topic of a file, with its items.
/// @return 1, or 0 (4, 5, 6, 19, 20).
QXCMS_API int rdb_remove_topic(rdb_db* db, rdb_file* file, const char* topic);

/// Looks for an item. @param value receives its value; untouched when there is none; null: not asked for.
/// @return 1, or 0 (4, 5, 15, 17).
QXCMS_API int rdb_search(rdb_db* db, const char* topic, const char* item, const char** value);

/// Copies the value of an item.
/// @param size the size of the buffer in characters. A longer value is cut there, with its terminator, and
/// the answer is 0; a null buffer or a size below 1 takes nothing.
/// @return 1, or 0 (4, 5, 15, 17, 18).
QXCMS_API int rdb_search_string(rdb_db* db, const char* topic, const char* item, char* buffer, int size);

/// Reads the value of an item as an integer: leading blanks, a sign and decimal digits; 0 when it does not
/// begin so; the nearest int when it is beyond. @param value as that of rdb_search.
/// @return 1, or 0 (4, 5, 15, 17).
QXCMS_API int rdb_search_int(rdb_db* db, const char* topic, const char* item, int* value);

/// Adds an item behind the others of a topic. @param text a remark; null counts as "".
/// @return 1, or 0 (4, 5, 8, 10, 11, 15).
QXCMS_API int rdb_add_item(rdb_db* db, const char* topic, const char* item, const char* value,
                           const char* text);

/// Replaces the value of an item; place and remark stay.
/// @return 1, or 0 (4, 5, 8, 15, 17).
QXCMS_API int rdb_modify(rdb_db* db, const char* topic, const char* item, const char* value);

/// The name of the n-th topic of a file, counted from 0, at the same cost for every n.
/// @return null when there is none (3, 4, 5, 6, 13).
QXCMS_API const char* rdb_posat_topic(rdb_db* db, rdb_file* file, int n);

/// The name of the n-th item of a topic, counted from 0, at the same cost for every n.
/// @return null when there is none (3, 4, 5, 14, 15).
QXCMS_API const char* rdb_posat_item(rdb_db* db, const char* topic, int n);

/// Writes the changes to the files, those of one file in one transaction. Items that others wrote meanwhile
/// stay, but for those that are written here; a topic that others removed comes back with the items that are
/// written; the remark of a topic stays as the first wrote it, that of an item is the later one. While
/// another process uses a file this waits for it, two seconds at most. Changes that could not be written are
/// kept and are tried again by the next flush.
/// @return 1, or 0 when the changes to a file could not be written (4, 5, 12).
QXCMS_API int rdb_flush(rdb_db* db);

/// Releases a database with its files; changes that were not flushed are lost. Null is accepted.
QXCMS_API void rdb_close(rdb_db* db);

} // extern "C"
