/// @file
/// Names that users give, as keys and file names: what is illegal there is escaped, and comes back.
///
/// An escape is "%" and two lower-case hexadecimal digits, the high one first: a space is "%20". With "%" in
/// the set of illegal characters decoding gives every name back, unless a suffix that was left holds a "%".
/// All three functions answer 0 where source or destination is null; with a null source the destination
/// becomes empty. No memory is needed and nothing is thrown.
#pragma once

#include "base/export.h"

/// Escapes the characters of a set. ASCII letters and digits are never escaped, and three reserved names
/// ("Trans._White_100_w", "_g", "_k", in either case of the letters) are copied as they stand.
/// @param source a terminated text; it may hold any bytes.
/// @param destination three times the length of the source, and one; not the source itself.
/// @param illegal the set as a terminated text; empty or null escapes nothing.
/// @return 1 when a character was escaped, else 0.
QXCMS_API int TCMS_EncodeIllegalCharacters(const char* source, char* destination, const char* illegal);

/// Turns escapes back. Every "%" with two characters after it is one, whether these are digits or not: the
/// result is then high*16 + low of their codes, which for letters are those of the lower-case letter less 87.
/// A "%" nearer to the end is dropped. "%00" gives a zero byte, at which the text seems to end.
/// @param destination the length of the source, and one; it may be the source itself.
/// @return 1 when an escape was decoded, else 0.
QXCMS_API int TCMS_DecodeIllegalCharacters(const char* source, char* destination);

/// As TCMS_EncodeIllegalCharacters, but leaves a known suffix, in the spelling of the source, as it stands.
/// Suffixes are compared without regard to case, the first one that fits counts, and something must stand
/// before it.
/// @param suffixes `suffixCount` texts such as ".txt"; null and empty ones never fit.
QXCMS_API int TCMS_EncodeIllegalCharactersWithoutSuffix(const char* source, char* destination,
                                                        const char* illegal, int suffixCount,
                                                        const char* const* suffixes);
