#include "forms/entry/DistanceText.h"

#include "data/DayFields.h"
#include "platform/system/Conversions.h"

#include <string_view>

namespace {

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// Removes the leading digits and returns their number.
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
    const auto value = TryToDouble(text);
    return value && (*value < 0 || text.size() > distancePlaces || ToText(*value).size() <= distancePlaces);
}

double DistanceOf(const std::wstring& text)
{
    const double value = ToDouble(text);
    return value == 0 ? 0.0 : value;
}
