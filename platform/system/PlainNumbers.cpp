#include "platform/system/PlainNumbers.h"

#include "platform/system/Conversions.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t mostCharacters = 6;
constexpr std::array<double, mostCharacters> powersOfTen = {1, 10, 100, 1000, 10000, 100000};
constexpr double firstOfSixDigits = 100000;
constexpr double firstOfSevenDigits = 1000000;

} // namespace

std::optional<double> ReadPlainNumber(std::wstring_view text)
{
    if (text.size() > mostCharacters) {
        return std::nullopt;
    }
    const std::wstring_view number = WithoutBlanks(text);
    std::size_t separator = std::wstring_view::npos;
    std::int32_t value = 0;
    for (std::size_t i = 0; i < number.size(); ++i) {
        if (number[i] >= L'0' && number[i] <= L'9') {
            value = value * 10 + (number[i] - L'0');
        } else if (separator == std::wstring_view::npos && number.substr(i, 1) == DecimalSeparator()) {
            separator = i;
        } else {
            return std::nullopt;
        }
    }
    const bool isWhole = separator == std::wstring_view::npos;
    if (number.size() < (isWhole ? 1 : 2)) {
        return std::nullopt;
    }
    // Both numbers are exact, so that their quotient is the nearest number to the decimal fraction.
    return value / powersOfTen[isWhole ? 0 : number.size() - separator - 1];
}

std::optional<std::wstring> PlainNumberText(double value)
{
    if (!(value == 0 || value >= 0.1)) {
        return std::nullopt;
    }
    for (std::size_t decimals = 0; decimals < powersOfTen.size(); ++decimals) {
        const double scaled = value * powersOfTen[decimals] + 0.5;
        if (scaled >= (decimals == 0 ? firstOfSevenDigits : firstOfSixDigits)) {
            break;
        }
        const auto whole = static_cast<std::int32_t>(scaled);
        if (whole / powersOfTen[decimals] == value) {
            std::wstring text = ToDigits(whole, static_cast<int>(decimals) + 1);
            return decimals == 0 ? text : text.insert(text.size() - decimals, DecimalSeparator());
        }
    }
    return std::nullopt;
}
