#pragma once

#include "data/DataInterface.h"

#include <array>
#include <cstdint>
#include <random>
#include <string>

/// What becomes of a line that is read.
enum class Fate {
    Entry,
    Mismatch, ///< told as "Type mismatch"
    Overflow, ///< told as "Overflow"
    Comment,
    Unknown, ///< an entry or a message, not both and not neither
};

/// A line of a journal file, without its end.
struct JournalLine {
    std::string bytes;
    Fate fate = Fate::Unknown;
    DayEntry entry; ///< of a line that becomes one
};

/// Makes the lines of journal files, good ones and all kinds of damaged ones, by the grammar of a line. The same seed
/// makes the same lines.
class LineMaker {
public:
    explicit LineMaker(std::uint32_t seed);

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

    /// A line whose fate is known.
    JournalLine Known();

    /// Any bytes, also ends of lines among them, or a good line that something happened to.
    std::string Anything();

    /// One of the three ends of a line, such that the next line begins behind it whatever it is: behind a lone CR an
    /// LF would be taken as part of the same end.
    std::string LineEnd() { return ends_.at(static_cast<std::size_t>(Pick(0, 2))); }

    JournalLine Good();

private:
    JournalLine GoodByHand();
    JournalLine TooShort();
    JournalLine NoNumber();
    JournalLine TooLarge();
    JournalLine Comment();
    JournalLine Marked();
    std::string Bytes(int length);
    std::string Route();
    std::string Date(const DayEntry& entry);

    std::mt19937 random_;
    char decimal_;
    std::array<std::string, 3> ends_{"\r\n", "\n", "\r"};
};
