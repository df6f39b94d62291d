#pragma once

#include "data/DataInterface.h"

#include <array>
#include <cstdint>
#include <random>
#include <string>

/// The result of reading a line.
enum class Fate {
    Entry,
    Mismatch, ///< shown as "Type mismatch"
    Overflow, ///< shown as "Overflow"
    Comment,
    Unknown, ///< either an entry or a message
};

/// A line of a journal file, without its end.
struct JournalLine {
    std::string bytes;
    Fate fate = Fate::Unknown;
    DayEntry entry; ///< if the result is an entry
};

/// Generates valid and damaged lines of journal files from the grammar of a line. The same seed gives the same lines.
class LineMaker {
public:
    explicit LineMaker(std::uint32_t seed);

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

    /// A line whose result is known.
    JournalLine Known();

    /// Any bytes, including line ends, or a valid line with random damage.
    std::string Anything();

    /// One of the three line ends. The next line must not begin with LF after a CR, which would be one line end.
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
