#include "platform/Conversions.h"

#include "platform/RuntimeError.h"

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <memory>
#include <type_traits>

namespace {

struct BstrDeleter {
    void operator()(BSTR text) const noexcept { SysFreeString(text); }
};
using OwnedBstr = std::unique_ptr<std::remove_pointer_t<BSTR>, BstrDeleter>;

/// A result handed over by the platform as a string it allocated.
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

/// What counts as a number. The platform would take more: hexadecimal, currency, parentheses, a sign at the end. Those
/// are left out, above all the last: the line of a year below 1000 begins "999-" and must not read as minus 999.
constexpr ULONG acceptedForms = NUMPRS_LEADING_WHITE | NUMPRS_TRAILING_WHITE | NUMPRS_LEADING_PLUS |
                                NUMPRS_LEADING_MINUS | NUMPRS_DECIMAL | NUMPRS_THOUSANDS | NUMPRS_EXPONENT |
                                NUMPRS_USE_ALL;

std::wstring Format(VARIANT value, const std::wstring& format)
{
    std::wstring formatCopy = format;
    BSTR text = nullptr;
    Require(VarFormat(&value, formatCopy.data(), 0, 0, 0, &text));
    return TakeText(text);
}

} // namespace

double ToDouble(const std::wstring& text)
{
    std::wstring textCopy = text;
    NUMPARSE parsed{};
    std::array<BYTE, 30> digits{};
    parsed.cDig = static_cast<INT>(digits.size());
    parsed.dwInFlags = acceptedForms;
    Require(VarParseNumFromStr(textCopy.data(), LOCALE_USER_DEFAULT, 0, &parsed, digits.data()));

    VARIANT number;
    VariantInit(&number);
    Require(VarNumFromParseNum(&parsed, digits.data(), VTBIT_R8, &number));
    return V_R8(&number);
}

std::int16_t ToInt16(const std::wstring& text)
{
    SHORT value = 0;
    Require(VarI2FromR8(ToDouble(text), &value));
    return value;
}

std::wstring ToText(double value)
{
    BSTR text = nullptr;
    Require(VarBstrFromR8(value, LOCALE_USER_DEFAULT, 0, &text));
    return TakeText(text);
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

std::wstring DecimalSeparator()
{
    std::array<wchar_t, 4> separator{};
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, separator.data(), static_cast<int>(separator.size()));
    return separator.data();
}

std::wstring FormatNumber(double value, const std::wstring& mask)
{
    VARIANT number;
    VariantInit(&number);
    V_VT(&number) = VT_R8;
    V_R8(&number) = value;
    return Format(number, mask);
}

std::wstring FormatDateText(const std::wstring& dateText, const std::wstring& format)
{
    std::wstring textCopy = dateText;
    VARIANT date;
    VariantInit(&date);
    V_VT(&date) = VT_DATE;
    Require(VarDateFromStr(textCopy.data(), LOCALE_USER_DEFAULT, 0, &V_DATE(&date)));
    return Format(date, format);
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
    // No code page makes more characters out of a text than it has bytes.
    std::wstring text(bytes.size(), L'\0');
    const int used = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), length);
    text.resize(static_cast<std::size_t>(used));
    return text;
}

std::wstring AsUserCodePageHoldsIt(const std::wstring& text)
{
    return FromUserCodePage(ToUserCodePage(text));
}
