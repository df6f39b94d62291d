#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers, dates and characters by the region settings of the user. OLE Automation converts them, as in other programs.

/// Reads a whole number: blanks around it, a sign before it, digits, the decimal and the grouping separator, an
/// exponent. A fraction is rounded to the nearest integer, halves to the even one.
/// Throws TypeMismatch for any other text (also "", "999-" and "&H10") and Overflow outside -32768..32767.
std::int16_t ToInt16(const std::wstring& text);

/// Reads a number by the same rules, with its fraction. Throws TypeMismatch or Overflow.
double ToDouble(const std::wstring& text);

/// The same, but return no value where the functions above throw.
std::optional<std::int16_t> TryToInt16(const std::wstring& text);
std::optional<double> TryToDouble(const std::wstring& text);

/// The shortest text of up to 15 significant digits with the decimal separator of the region: "12.5", "100", "0,1".
/// Infinity is "∞", which ToDouble does not read.
std::wstring ToText(double value);

/// Plain decimal digits: "2004", "-2".
std::wstring ToText(int value);

/// The same with leading zeros, up to the given number of digits: "07", "-07", "1999".
std::wstring ToDigits(int value, int digits);

/// The text without the spaces at both ends.
std::wstring_view WithoutBlanks(std::wstring_view text);

/// The decimal separator of the region, such as "." or ",".
std::wstring DecimalSeparator();

/// ToText writes a number of this size or above with an exponent: "1E+15".
inline constexpr double firstNumberWithExponent = 1E15;

/// Formats a number by a mask such as "00" or "# ##0". Halves are rounded away from zero. From firstNumberWithExponent
/// on the mask does not apply and the text is that of ToText.
std::wstring FormatNumber(double value, const std::wstring& mask);

/// Reads the text as a date in the order and with the month names of the region and writes it in the format "mmmm" (the
/// name of the month), "mm" or "yyyy-mm-dd". Throws TypeMismatch if the text is not a date in this region.
std::wstring FormatDateText(const std::wstring& dateText, const std::wstring& format);

/// The same, but returns no value where FormatDateText throws.
std::optional<std::wstring> TryFormatDateText(const std::wstring& dateText, const std::wstring& format);

/// Text in the ANSI code page of the system, as in the journal file and the registry. A character that the code page
/// does not have becomes a similar one or "?".
std::string ToUserCodePage(const std::wstring& text);
std::wstring FromUserCodePage(std::string_view bytes);

/// The text after conversion to the code page and back. Dialogs store this form, so that the list shows what the file
/// will contain.
std::wstring AsUserCodePageHoldsIt(const std::wstring& text);
