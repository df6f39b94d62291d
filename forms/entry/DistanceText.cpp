#include "forms/entry/DistanceText.h"

#include "data/DayFields.h"
#include "platform/Conversions.h"
#include "platform/RuntimeError.h"

#include <string_view>

namespace {

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

std::wstring_view WithoutBlanks(std::wstring_view text)
{
    const auto first = text.find_first_not_of(L' ');
    const auto last = text.find_last_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view() : text.substr(first, last - first + 1);
}

/// Takes the digits at the front away and says how many there were.
std::size_t TakeDigits(std::wstring_view& text)
{
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) {
        ++count;
    }
    text.remove_prefix(count);
    return count;
}

bool IsPlainNumber(std::wstring_view text)
{
    if (!text.empty() && (text.front() == L'-' || text.front() == L'+')) {
        text.remove_prefix(1);
    }
    std::size_t digits = TakeDigits(text);
    const std::wstring separator = DecimalSeparator();
    if (text.starts_with(separator)) {
        text.remove_prefix(separator.size());
        digits += TakeDigits(text);
    }
    return text.empty() && digits > 0;
}

} // namespace

bool IsDistance(const std::wstring& text)
{
    if (!IsPlainNumber(WithoutBlanks(text))) {
        return false;
    }
    try {
        const double value = ToDouble(text);
        return value < 0 || text.size() > distancePlaces || ToText(value).size() <= distancePlaces;
    } catch (const RuntimeError&) {
        return false;
    }
}

double DistanceOf(const std::wstring& text)
{
    const double value = ToDouble(text);
    return value == 0 ? 0.0 : value;
}
