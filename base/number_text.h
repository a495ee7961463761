/// @file
/// Text to number and number to text, without a look at the locale.
///
/// All conversions of the library go through here. The results are those of atof, atoi and "%g" / "%f" in
/// the "C" locale, whatever locale the process runs in.
#pragma once

#include <cstddef>
#include <string>

namespace qxcms::detail {

/// Reads a decimal or hexadecimal floating-point number, "inf", "infinity" or "nan" from [first, last).
/// Leading white space and a sign are accepted. Overflow gives an infinity, underflow the nearest
/// representable value (a subnormal or a zero with the sign of the text).
/// @param end receives the first character behind the number, or `first` when there is none; may be null.
/// @return the number, 0.0 when there is none.
double parseDouble(const char* first, const char* last, const char** end = nullptr) noexcept;

/// Reads a decimal integer from [first, last). Leading white space and a sign are accepted; a number that
/// does not fit an int is clamped to the nearest int.
/// @param end as for parseDouble.
/// @return the number, 0 when there is none.
int parseInt(const char* first, const char* last, const char** end = nullptr) noexcept;

/// The result of atof for a terminated text; 0.0 for a null pointer.
double textToDouble(const char* text) noexcept;

/// The result of atoi for a terminated text, clamped to int; 0 for a null pointer.
int textToInt(const char* text) noexcept;

/// The longest text that doubleToFixedText can give for up to 17 decimals, with its terminator.
inline constexpr std::size_t kFixedTextSize = 384;

/// Writes `value` like "%.*f" with `decimals` (0 to 17) decimals.
/// @param out receives at most kFixedTextSize characters, the terminator included.
/// @return the number of characters written, without the terminator.
std::size_t doubleToFixedText(double value, int decimals, char* out) noexcept;

/// `value` like "%.*f" with `decimals` (0 to 17) decimals.
std::string fixedText(double value, int decimals);

/// The longest text that doubleToGeneralText can give: "-1.2345678901234567e-308".
inline constexpr std::size_t kGeneralTextSize = 24;

/// Writes `value` like "%.*g" with `digits` (1 to 17) significant digits, without a terminator.
/// @param out receives at most kGeneralTextSize characters.
/// @return the number of characters written.
std::size_t doubleToGeneralText(double value, int digits, char* out) noexcept;

/// `value` like "%.*g" with `digits` (1 to 17) significant digits.
std::string generalText(double value, int digits);

/// The significant digits of doubleToShortText.
inline constexpr int kShortDigits = 6;

/// The same as doubleToGeneralText with kShortDigits digits, sooner for numbers of moderate size.
/// @param out room for kGeneralTextSize characters, all of which may be touched.
/// @return the number of characters that count.
std::size_t doubleToShortText(double value, char* out) noexcept;

/// Reads a number of the usual form: a sign or none, digits, a point or a comma or none, digits; no exponent,
/// no white space, no more digits than a double holds exactly.
/// @param value receives what parseDouble gives for the text with a point in place of the comma.
/// @return the first character behind the number; null, with nothing read, for any other form.
const char* parsePlainDecimal(const char* first, const char* last, double& value) noexcept;

} // namespace qxcms::detail
