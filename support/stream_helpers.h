/// @file
/// Values on byte streams: binary integers and reals, texts with their length in front, and groups between
/// "{" and "}".
///
///     integer        4 bytes, two's complement, in the byte order of the machine
///     real           4 bytes, IEEE single precision, least significant byte first (fltoffl, ffltofl)
///     text           its length as an integer, then its characters without a terminator
///     group          "{", elements, "}"; white space may stand before and behind either
///
/// White space is a blank, a tab, a line feed, a vertical tab, a form feed or a carriage return, whatever the
/// locale and the flags of the stream are. None is written.
///
/// Brackets and the two questions take white space, and an element may begin with such a byte: an integer or
/// a text whose lowest byte (of the text's length) is 9 to 13 or 32, on machines that store it first, and a
/// real such as 0.64 on every machine. Directly behind a bracket, or where a question is asked, such an
/// element does not come back; and a question takes one that begins with 123 or 125 for a bracket. So let a
/// group begin with an integer that can do no harm (a version, a count), and ask only where a bracket may
/// stand.
///
/// The bracket that closes the last group of a stream meets its end and sets eofbit: the end is asked for
/// with `stream.good()`, as a further question sets failbit there.
///
/// A stream for both directions is named as one of them: `std::ostream& out = stringStream`.
///
/// Failures show in the state of the stream alone: every function sets failbit where it says so, beside what
/// reading and writing set by themselves (eofbit and failbit at the end), and badbit when there is no memory
/// or the stream's buffer throws. Nothing throws: the exceptions that a stream is set to are put aside and
/// set again, which throws nothing either. Every function but the two questions returns the stream it was
/// given.
#pragma once

#include <iosfwd>
#include <list>
#include <string>

#include "base/export.h"

// Writers.

/// Writes "{".
QXCMS_API std::ostream& OpenBracket(std::ostream& stream);

/// Writes "}".
QXCMS_API std::ostream& CloseBracket(std::ostream& stream);

/// Writes an integer.
QXCMS_API std::ostream& WriteInt(int value, std::ostream& stream);

/// Writes a real: the nearest value of single precision.
QXCMS_API std::ostream& WriteDouble(double value, std::ostream& stream);

/// Writes a terminated text; null is written as an empty one. A text of more than 2147483647 characters sets
/// failbit, and nothing is written.
QXCMS_API std::ostream& WriteCString(const char* s, std::ostream& stream);

/// Writes a text up to its first zero character, else as WriteCString.
QXCMS_API std::ostream& WriteString(const std::string& s, std::ostream& stream);

/// Sets failbit.
QXCMS_API std::ostream& BadOutputOn(std::ostream& stream);

// Readers.

/// Takes white space, a "{" and the white space behind it. Takes any other character too and sets failbit.
QXCMS_API std::istream& OpenBracket(std::istream& stream);

/// Takes white space, a "}" and the white space behind it. Takes any other character too and sets failbit.
QXCMS_API std::istream& CloseBracket(std::istream& stream);

/// Takes white space. @return whether "{" comes next; it stays.
QXCMS_API bool OpenBracketOn(std::istream& stream);

/// Takes white space. @return whether "}" comes next; it stays.
QXCMS_API bool CloseBracketOn(std::istream& stream);

/// Reads an integer. @param value as it was when there are less than 4 bytes; null skips them.
QXCMS_API std::istream& ReadInt(int* value, std::istream& stream);

/// Reads a real. @param value as it was when there are less than 4 bytes; null skips them.
QXCMS_API std::istream& ReadDouble(double* value, std::istream& stream);

/// Reads a text. Of one that is longer than size - 1 characters the rest stays in the stream. A negative
/// length sets failbit.
/// @param buffer receives at most size - 1 characters and a terminator behind those that were there.
///     Null, or a size below 1, sets failbit once the length is read.
QXCMS_API std::istream& ReadCString(char* buffer, int size, std::istream& stream);

/// Reads a text and keeps it up to its first zero character. Memory grows with the characters that are there.
/// A negative length sets failbit.
/// @param s whatever comes, receives the characters that were there.
QXCMS_API std::istream& ReadString(std::string& s, std::istream& stream);

/// Sets failbit.
QXCMS_API std::istream& BadInputOn(std::istream& stream);

/// Reads up to a terminator, which is taken too.
/// @param buffer is cleared and receives at most size characters, the terminator among them; it has no zero
///     behind them when it is full. Null, or a size below 1, skips the characters, however many there are,
///     and sets failbit when the terminator does not come.
/// @param terminator an empty one, or null, is found behind the first character, or at once when characters
///     are skipped.
/// @param count receives the number of characters read, the terminator included, once that is found in a
///     buffer; a reading that fails counts, too. Else it is as it was. May be null.
QXCMS_API std::istream& ReadUpTo(std::istream& stream, char* buffer, int size, const char* terminator,
                                 int* count);

/// Appends the characters up to a terminator, which is taken but not kept. The terminator must be known to
/// follow. It is looked for from its beginning again behind every character that does not fit, so that "aab"
/// is not found in "aaab". At the end of the stream the character read last is appended, and compared, once
/// more.
/// @param terminator an empty one, or null, reads nothing.
QXCMS_API std::istream& ReadCharUpTo(std::istream& stream, std::list<char>& out, const char* terminator);
