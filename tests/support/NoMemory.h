#pragma once

#include <limits>

/// During its lifetime, allocations of this thread throw std::bad_alloc: as many as given, after the given number of
/// successful ones. Allocations of Windows are not affected.
class NoMemory {
public:
    explicit NoMemory(int after = 0, int times = std::numeric_limits<int>::max()) noexcept;
    ~NoMemory();
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

    /// True if an allocation has failed.
    bool WasMet() const noexcept;
};
