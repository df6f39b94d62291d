#pragma once

#include "data/DataInterface.h"

/// The state behind DataInterface, for the sources of this folder alone.
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

/// Doubles the capacity, keeping the entries. Throws Overflow before anything is changed.
void GrowStore();

} // namespace DataInterface
