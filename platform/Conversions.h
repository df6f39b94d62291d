#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers, dates and characters as the user's system writes them. All of it is the platform's own conversion: a journal
// is read by the same rules that every other program of this user follows.

/// Reads a whole number: blanks around it, a sign in front, digits, the system's decimal and grouping separators and an
/// exponent are understood. A fraction is rounded to the nearest integer, halves to the even one.
/// Throws TypeMismatch for any other text (also "", "999-" and "&H10") and Overflow outside -32768..32767.
std::int16_t ToInt16(const std::wstring& text);

/// Reads a number by the same rules, with its fraction. Throws TypeMismatch or Overflow.
double ToDouble(const std::wstring& text);

/// The shortest text of up to 15 significant digits with the system's decimal separator: "12.5", "100", "0,1".
std::wstring ToText(double value);

/// Plain decimal digits: "2004", "-2".
std::wstring ToText(int value);

/// The same with zeros in front, up to the given number of digits: "07", "-07", "1999".
std::wstring ToDigits(int value, int digits);

/// The system's decimal separator, "." or "," on most systems.
std::wstring DecimalSeparator();

/// Formats a number by a mask such as "00" or "# ##0". Halves are rounded away from zero.
std::wstring FormatNumber(double value, const std::wstring& mask);

/// Reads the text as a date in the order and with the month names of the system and writes it in the format "mmmm" (the
/// month's name), "mm" or "yyyy-mm-dd". Throws TypeMismatch if the text is no date here.
std::wstring FormatDateText(const std::wstring& dateText, const std::wstring& format);

/// Text in the code page of the user's system, as the journal file and the registry hold it. Characters that the code
/// page lacks become its nearest likeness or "?".
std::string ToUserCodePage(const std::wstring& text);
std::wstring FromUserCodePage(std::string_view bytes);

/// The text as it will read once it has been through the code page. Dialogs store this form, so that what the list
/// shows is what the file holds.
std::wstring AsUserCodePageHoldsIt(const std::wstring& text);
