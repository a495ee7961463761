/// @file
/// What the kernel calls of the suite's utility library: reports, case-insensitive comparison,
/// interpolation tables, distances, numbers in 4 bytes, item strings and files found through logical names.
///
/// A substitute for the bundled platform implements exactly these declarations. Nothing here throws.
#pragma once

#include <stdio.h>

#include "base/export.h"

extern "C" {

/// Reports an error to the installed handler.
/// @param message the text; null is reported as an empty text.
/// @param module the reporting source module, without path and extension.
/// @param line the line that the module gives its report.
QXCMS_API void error_mess_fl(const char* message, const char* module, int line);

/// Reports a warning to the installed handler. @param level 0 (gravest) and up.
QXCMS_API void report_warning(int level, const char* message);

/// Compares two texts ignoring the case of the ASCII letters. A null pointer equals a null pointer alone and
/// sorts before every text.
/// @return 0 when equal, else the sign of the first difference.
QXCMS_API int strcmp_ci(const char* a, const char* b);

/// As strcmp_ci, over at most n characters.
QXCMS_API int strncmp_ci(const char* a, const char* b, int n);

/// A piecewise-linear function through points that may be inserted in any order.
struct lin_interp_double;

/// A new table without points, to be released with lin_interp_double_kill.
/// @param count how many points are expected; more may be inserted.
/// @return null when there is no memory.
QXCMS_API lin_interp_double* lin_interp_double_new(int count);

/// Adds the point (x, y).
/// @return 0, or 1 when x is not finite, is there already, or there is no memory.
QXCMS_API int lin_interp_double_insert(lin_interp_double* table, double x, double y);

/// The function at x: y0 + (y1 - y0)*(x - x0)/(x1 - x0) on the segment x0 <= x < x1, the y of the first point
/// below it, the y of the last point from it on; 0.0 for a table without points.
QXCMS_API double lin_interp_double_inter(const lin_interp_double* table, double x);

/// Releases a table; null is accepted.
QXCMS_API void lin_interp_double_kill(lin_interp_double* table);

/// The Euclidean distance of two vectors of n components, summed by ascending index.
QXCMS_API double vect_distance(const double* a, const double* b, int n);

/// Converts a number to 4 bytes: IEEE single precision, least significant byte first, on every machine. The
/// nearest value of single precision is taken, halves go to the even one; from 2^128 - 2^103 on it is an
/// infinity. Whatever is not a number gives 00 00 C0 7F.
/// @param fourBytes null is accepted; nothing happens then.
QXCMS_API void fltoffl(double value, unsigned char* fourBytes);

/// The number in 4 bytes of fltoffl. @return not a number for null.
QXCMS_API double ffltofl(const unsigned char* fourBytes);

// Item strings hold values, which are counted from 0:
//
//     item string  = {separator | value}; a bare value ends at a separator or with the string
//     separator    = comma, blank, tab, line feed, vertical tab, form feed or carriage return
//     value        = bare value | quoted value
//     bare value   = characters other than separators, the first of which is no double quote
//     quoted value = double quote, characters other than double quotes, double quote or end of the string
//
// A quoted value is what stands between its quotes, so that it may hold separators or nothing at all; it
// cannot hold a double quote. What stands directly behind it is the next value. A double quote inside a bare
// value is a character as others are. Several separators are as one: there is no value between two commas.
// Where blanks do not count, neither do the other separators, but for the comma.
//
//     12, 0.5  "cold white",, x"y"     holds 12 | 0.5 | cold white | x"y"
//     "a""b"c                          holds a | b | c
//
// All three functions return 0, or -1 for a null item string, a negative index, an index for which there is
// no value, a null `out`, and as they say themselves. With -1, `out` is as it was.

/// The value at an index as an integer: decimal digits with or without a sign, clamped to int; blanks around
/// it inside quotes do not count. @return -1 when the value is not all one integer.
QXCMS_API int str_int_from_itemstr(const char* items, int index, int* out);

/// The value at an index as a number: decimal or hexadecimal with a point, "inf", "infinity" or "nan",
/// whatever the locale; blanks around it inside quotes do not count. @return -1 when the value is not all one
/// number.
QXCMS_API int str_double_from_itemstr(const char* items, int index, double* out);

/// The value at an index as text, terminated.
/// @param size the room at `out`. @return -1 when the value and its terminator do not fit.
QXCMS_API int str_str(const char* items, int index, char* out, int size);

/// Opens a file given as a plain path or as a logical specification ("root:[a.b]name.ext").
/// A file opened with "w" takes its place when close_resolved_file finds every write done; until then a file
/// of that name stands as it was. Devices, pipes, and files in a folder that takes no new ones are written
/// directly.
/// @param mode "r" or "w"; both are binary.
/// @return null when it cannot be opened.
QXCMS_API FILE* open_resolved_file(const char* name, const char* mode);

/// Closes a file of open_resolved_file. @return 0, or non-zero when a write was lost.
QXCMS_API int close_resolved_file(FILE* file);

} // extern "C"
