#pragma once

#include "data/DataInterface.h"

/// The state of DataInterface. For the sources of this folder.
namespace DataInterface {

constexpr std::int16_t firstCapacity = 10;

struct JournalStore {
    std::vector<DayEntry> days = std::vector<DayEntry>(firstCapacity + 1);
    std::int16_t dayCapacity = firstCapacity;
    std::int16_t dayCount = 0;
    bool journalChanged = false;
    std::wstring journalPath;
};

extern JournalStore store;

/// Doubles the capacity. Throws Overflow and then changes nothing.
/// Kept on purpose: "Numbers have 16 bits".
void GrowStore();

} // namespace DataInterface
