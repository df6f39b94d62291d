#include "tests/soak/JournalLines.h"

#include "platform/system/Conversions.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

/// Positions in a valid line, counted from 0.
constexpr std::size_t distanceAt = 11;
constexpr std::size_t routeAt = 18;

/// Texts that are not numbers in any field.
constexpr std::array noNumbers{"x", "-", "&H", "\x80", "$", "(", "/", "e", "\xff", "\x1a"};

std::string Padded(const std::string& text, std::size_t places)
{
    return text.size() < places ? std::string(places - text.size(), ' ') + text : text;
}

bool EndsALine(char byte)
{
    return byte == '\r' || byte == '\n';
}

} // namespace

LineMaker::LineMaker(std::uint32_t seed) : random_(seed), decimal_(static_cast<char>(DecimalSeparator().front())) {}

JournalLine LineMaker::Known()
{
    switch (Pick(0, 13)) {
    case 0:
        return TooShort();
    case 1:
        return NoNumber();
    case 2:
        return TooLarge();
    case 3:
        return Comment();
    case 4:
        return Marked();
    case 5:
    case 6:
    case 7:
        return GoodByHand();
    default:
        return Good();
    }
}

std::string LineMaker::Bytes(int length)
{
    std::string bytes;
    for (int i = 0; i < length; ++i) {
        const char byte = static_cast<char>(Pick(0, 255));
        bytes += EndsALine(byte) ? ' ' : byte;
    }
    return bytes;
}

/// Usually of a common length, sometimes very long.
std::string LineMaker::Route()
{
    const int kind = Pick(0, 5000);
    if (kind == 0) {
        return Bytes(Pick(1, 200000));
    }
    return Bytes(kind < 500 ? Pick(0, 2000) : Pick(0, 40));
}

std::string LineMaker::Date(const DayEntry& entry)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d ", entry.year, entry.month, entry.day);
    return text.data();
}

/// A line as the program writes it.
JournalLine LineMaker::Good()
{
    JournalLine line;
    line.fate = Fate::Entry;
    line.entry.year = static_cast<std::int16_t>(Pick(1000, 9999));
    line.entry.month = static_cast<std::int16_t>(Pick(1, 12));
    line.entry.day = static_cast<std::int16_t>(Pick(1, 31));
    const int whole = Pick(0, 9999);
    const int tenths = Pick(0, 9);
    line.entry.distance = (whole * 10 + tenths) / 10.0;
    const std::string distance =
        std::to_string(whole) + (tenths == 0 ? std::string() : decimal_ + std::to_string(tenths));
    const std::string route = Route();
    line.entry.route = FromUserCodePage(route);
    line.bytes = Date(line.entry) + Padded(distance, 6) + ' ' + route;
    return line;
}

/// A line as a user may write it in an editor: other separators, other spaces, other forms of a number.
JournalLine LineMaker::GoodByHand()
{
    JournalLine line = Good();
    for (const std::size_t between : {std::size_t{4}, std::size_t{7}, std::size_t{10}, std::size_t{17}}) {
        line.bytes[between] = Bytes(1)[0];
    }
    switch (Pick(0, 5)) {
    case 0:
        line.bytes.replace(0, 4, " +7 ");
        line.entry.year = 7;
        break;
    case 1:
        line.bytes.replace(5, 2, "-3");
        line.entry.month = -3;
        break;
    case 2:
        line.bytes.replace(8, 2, "99");
        line.entry.day = 99;
        break;
    case 3:
        line.bytes.replace(distanceAt, 6, " -1E3 ");
        line.entry.distance = -1000;
        break;
    case 4:
        line.bytes.resize(distanceAt + 1);
        line.bytes[distanceAt] = '7';
        line.entry.distance = 7;
        line.entry.route.clear();
        break;
    default:
        line.bytes.replace(distanceAt, 6, std::string("  ") + decimal_ + "5  ");
        line.entry.distance = 0.5;
        break;
    }
    return line;
}

/// A line that ends before its distance.
JournalLine LineMaker::TooShort()
{
    JournalLine line = Good();
    line.bytes.resize(static_cast<std::size_t>(Pick(0, static_cast<int>(distanceAt))));
    line.fate = Fate::Mismatch;
    return line;
}

/// A line with a field that is not a number.
JournalLine LineMaker::NoNumber()
{
    struct Place {
        std::size_t first;
        std::size_t length;
    };
    constexpr std::array<Place, 4> fields{Place{0, 4}, Place{5, 2}, Place{8, 2}, Place{distanceAt, 6}};
    JournalLine line = Good();
    const Place field = fields[static_cast<std::size_t>(Pick(0, 3))];
    const std::string text = noNumbers[static_cast<std::size_t>(Pick(0, static_cast<int>(noNumbers.size()) - 1))];
    line.bytes.replace(field.first, field.length, Padded(text, field.length));
    line.fate = Fate::Mismatch;
    return line;
}

/// A line with a number out of the range of its field.
JournalLine LineMaker::TooLarge()
{
    JournalLine line = Good();
    switch (Pick(0, 3)) {
    case 0:
        line.bytes.replace(0, 4, "9E99");
        break;
    case 1:
        line.bytes.replace(0, 4, "-4E4");
        break;
    case 2:
        line.bytes.replace(distanceAt, 6, "1E0309");
        break;
    default:
        line.bytes.replace(distanceAt, 6, "-9E999");
        break;
    }
    line.fate = Fate::Overflow;
    return line;
}

JournalLine LineMaker::Comment()
{
    return {"'" + Route(), Fate::Comment, {}};
}

/// A valid line after a byte order mark, or in UTF-16.
JournalLine LineMaker::Marked()
{
    JournalLine line = Good();
    if (Pick(0, 1) == 0) {
        line.bytes = "\xef\xbb\xbf" + line.bytes;
    } else {
        std::string wide = "\xff\xfe";
        for (const char byte : line.bytes.substr(0, routeAt)) {
            wide += byte;
            wide += '\0';
        }
        line.bytes = wide;
    }
    line.fate = Fate::Mismatch;
    return line;
}

std::string LineMaker::Anything()
{
    if (Pick(0, 3) == 0) {
        std::string bytes;
        const int length = Pick(0, 200);
        for (int i = 0; i < length; ++i) {
            bytes += static_cast<char>(Pick(0, 255));
        }
        return bytes;
    }
    std::string bytes = Good().bytes;
    for (int changes = Pick(1, 4); changes > 0; --changes) {
        const auto at = static_cast<std::size_t>(Pick(0, static_cast<int>(std::min(bytes.size(), routeAt))));
        switch (Pick(0, 2)) {
        case 0:
            bytes.insert(at, 1, static_cast<char>(Pick(0, 255)));
            break;
        case 1:
            bytes.erase(std::min(at, bytes.size()), 1);
            break;
        default:
            bytes.replace(std::min(at, bytes.size()), 1, 1, "0123456789-+.,E '"[Pick(0, 16)]);
            break;
        }
    }
    return bytes;
}
