#include "platform/system/Conversions.h"

#include "platform/system/PlainNumbers.h"
#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <type_traits>

namespace {

struct BstrDeleter {
    void operator()(BSTR text) const noexcept { SysFreeString(text); }
};
using OwnedBstr = std::unique_ptr<std::remove_pointer_t<BSTR>, BstrDeleter>;

/// Takes ownership of a BSTR that OLE Automation returned.
std::wstring TakeText(BSTR raw)
{
    const OwnedBstr text(raw);
    return {text.get(), SysStringLen(text.get())};
}

void Require(HRESULT result)
{
    if (SUCCEEDED(result)) {
        return;
    }
    switch (result) {
    case DISP_E_OVERFLOW:
        throw RuntimeError(ErrorNumber::Overflow);
    case E_OUTOFMEMORY:
        throw RuntimeError(ErrorNumber::OutOfMemory);
    default:
        throw RuntimeError(ErrorNumber::TypeMismatch);
    }
}

/// The accepted forms of a number. Hexadecimal numbers, currency, parentheses and a trailing sign are not among them:
/// the line of a year below 1000 begins with "999-", which must not be read as -999.
constexpr ULONG acceptedForms = NUMPRS_LEADING_WHITE | NUMPRS_TRAILING_WHITE | NUMPRS_LEADING_PLUS |
                                NUMPRS_LEADING_MINUS | NUMPRS_DECIMAL | NUMPRS_THOUSANDS | NUMPRS_EXPONENT |
                                NUMPRS_USE_ALL;

std::wstring UserLocaleText(LCTYPE what)
{
    std::array<wchar_t, 5> text{};
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, what, text.data(), static_cast<int>(text.size()));
    return text.data();
}

/// Numbers are converted in the invariant locale, "." before the decimals and "," between groups of digits. The user's
/// separators are replaced before and after.
///
/// Wine: OLE Automation reads the separators of the user's locale once in each process. Windows reads them at each
/// call. With the user's locale, "12,5" would become 125 after the user has changed the region.
constexpr LCID fixedLocale = LOCALE_INVARIANT;
constexpr wchar_t fixedDecimal = L'.';
constexpr wchar_t fixedGrouping = L',';
constexpr wchar_t noSeparatorHere = L'?';

constexpr wchar_t noBreakBlank = L'\u00a0';
constexpr std::wstring_view blanks = L" \u00a0";

/// Replaces the user's separators by those of the fixed locale.
std::wstring WithFixedSeparators(std::wstring_view text)
{
    const std::wstring decimal = UserLocaleText(LOCALE_SDECIMAL);
    const std::wstring grouping = UserLocaleText(LOCALE_STHOUSAND);
    // If the grouping separator is a no-break space, a space is one too. At either end of the text both are blanks.
    const bool blankIsGrouping = grouping.size() == 1 && grouping.front() == noBreakBlank;
    std::wstring fixed;
    while (!text.empty()) {
        std::size_t taken = 1;
        if (!decimal.empty() && text.starts_with(decimal)) {
            fixed += fixedDecimal;
            taken = decimal.size();
        } else if (blankIsGrouping && blanks.find(text.front()) != std::wstring_view::npos) {
            const bool inside = fixed.find_first_not_of(L" +-") != std::wstring::npos &&
                                text.find_first_not_of(blanks) != std::wstring_view::npos;
            fixed += inside ? fixedGrouping : L' ';
        } else if (!grouping.empty() && text.starts_with(grouping)) {
            fixed += fixedGrouping;
            taken = grouping.size();
        } else if (text.front() == fixedDecimal || text.front() == fixedGrouping) {
            fixed += noSeparatorHere;
        } else {
            fixed += text.front();
        }
        text.remove_prefix(taken);
    }
    return fixed;
}

HRESULT Format(std::wstring& formatted, VARIANT value, const std::wstring& format)
{
    std::wstring formatCopy = format;
    BSTR text = nullptr;
    const HRESULT result = VarFormat(&value, formatCopy.data(), 0, 0, 0, &text);
    formatted = TakeText(text);
    return result;
}

HRESULT ReadDouble(double& value, const std::wstring& text)
{
    if (const auto plain = ReadPlainNumber(text)) {
        value = *plain;
        return S_OK;
    }
    std::wstring fixed = WithFixedSeparators(text);
    NUMPARSE parsed{};
    std::array<BYTE, 30> digits{};
    parsed.cDig = static_cast<INT>(digits.size());
    parsed.dwInFlags = acceptedForms;
    HRESULT result = VarParseNumFromStr(fixed.data(), fixedLocale, LOCALE_NOUSEROVERRIDE, &parsed, digits.data());
    if (SUCCEEDED(result)) {
        VARIANT number;
        VariantInit(&number);
        result = VarNumFromParseNum(&parsed, digits.data(), VTBIT_R8, &number);
        value = V_R8(&number);
    }
    return result;
}

std::wstring InFixedLocale(double value)
{
    // Wine: VarBstrFromR8 of Wine 10 writes 0.00001, which is longer than the column of the file, and that of Wine 8
    // writes 1E-05. The program writes 1E-05 on every system, also on Windows.
    constexpr double leastWithoutExponent = 1E-4;
    if (std::abs(value) < leastWithoutExponent) {
        std::array<char, 32> digits{};
        const int length = std::snprintf(digits.data(), digits.size(), "%.15G", value);
        return {digits.begin(), digits.begin() + length};
    }
    BSTR raw = nullptr;
    Require(VarBstrFromR8(value, fixedLocale, LOCALE_NOUSEROVERRIDE, &raw));
    return TakeText(raw);
}

HRESULT ReadInt16(std::int16_t& value, const std::wstring& text)
{
    double number = 0;
    const HRESULT result = ReadDouble(number, text);
    return SUCCEEDED(result) ? VarI2FromR8(number, &value) : result;
}

HRESULT FormatDate(std::wstring& formatted, const std::wstring& dateText, const std::wstring& format)
{
    std::wstring textCopy = dateText;
    VARIANT date;
    VariantInit(&date);
    V_VT(&date) = VT_DATE;
    const HRESULT result = VarDateFromStr(textCopy.data(), LOCALE_USER_DEFAULT, 0, &V_DATE(&date));
    return SUCCEEDED(result) ? Format(formatted, date, format) : result;
}

template <class T, class... Texts>
T Required(HRESULT (*convert)(T&, const Texts&...), const Texts&... texts)
{
    T value{};
    Require(convert(value, texts...));
    return value;
}

template <class T, class... Texts>
std::optional<T> Tried(HRESULT (*convert)(T&, const Texts&...), const Texts&... texts)
{
    T value{};
    return SUCCEEDED(convert(value, texts...)) ? std::optional(value) : std::nullopt;
}

} // namespace

double ToDouble(const std::wstring& text)
{
    return Required(ReadDouble, text);
}

std::optional<double> TryToDouble(const std::wstring& text)
{
    return Tried(ReadDouble, text);
}

std::int16_t ToInt16(const std::wstring& text)
{
    return Required(ReadInt16, text);
}

std::optional<std::int16_t> TryToInt16(const std::wstring& text)
{
    return Tried(ReadInt16, text);
}

std::wstring ToText(double value)
{
    if (auto plain = PlainNumberText(value)) {
        return *plain;
    }
    if (std::isinf(value)) {
        return value < 0 ? L"-∞" : L"∞";
    }
    std::wstring text = InFixedLocale(value);
    if (const std::size_t decimal = text.find(fixedDecimal); decimal != std::wstring::npos) {
        text.replace(decimal, 1, DecimalSeparator());
    }
    return text;
}

std::wstring ToText(int value)
{
    return std::to_wstring(value);
}

std::wstring ToDigits(int value, int digits)
{
    std::wstring text = std::to_wstring(value);
    const std::size_t sign = value < 0 ? 1 : 0;
    const std::size_t wanted = sign + static_cast<std::size_t>(digits);
    if (text.size() < wanted) {
        text.insert(sign, wanted - text.size(), L'0');
    }
    return text;
}

std::wstring_view WithoutBlanks(std::wstring_view text)
{
    const auto first = text.find_first_not_of(L' ');
    const auto last = text.find_last_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view() : text.substr(first, last - first + 1);
}

std::wstring DecimalSeparator()
{
    return UserLocaleText(LOCALE_SDECIMAL);
}

std::wstring FormatNumber(double value, const std::wstring& mask)
{
    // Wine: VarFormat writes all digits into a fixed buffer, which a number of 290 digits overruns. Such a number never
    // reaches VarFormat, on Windows either, so that both show the same text.
    if (std::abs(value) >= firstNumberWithExponent) {
        return ToText(value);
    }
    VARIANT number;
    VariantInit(&number);
    V_VT(&number) = VT_R8;
    V_R8(&number) = value;
    std::wstring text;
    Require(Format(text, number, mask));
    return text;
}

std::wstring FormatDateText(const std::wstring& dateText, const std::wstring& format)
{
    return Required(FormatDate, dateText, format);
}

std::optional<std::wstring> TryFormatDateText(const std::wstring& dateText, const std::wstring& format)
{
    return Tried(FormatDate, dateText, format);
}

std::string ToUserCodePage(const std::wstring& text)
{
    const int length = static_cast<int>(text.size());
    const int needed = WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

std::wstring FromUserCodePage(std::string_view bytes)
{
    const int length = static_cast<int>(bytes.size());
    // A text never has more characters than bytes.
    std::wstring text(bytes.size(), L'\0');
    const int used = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), length);
    text.resize(static_cast<std::size_t>(used));
    return text;
}

std::wstring AsUserCodePageHoldsIt(const std::wstring& text)
{
    return FromUserCodePage(ToUserCodePage(text));
}
