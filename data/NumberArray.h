#pragma once

#include <cstdint>
#include <vector>

/// A list of 16-bit numbers, counted from 0, that knows its last index. It may have no elements at all; then it has no
/// last index either, and asking for one is an error rather than an answer of -1.
class NumberArray {
public:
    /// Throws SubscriptOutOfRange if there are no elements.
    std::int16_t UpperBound() const;

    /// Throws SubscriptOutOfRange outside 0..UpperBound().
    std::int16_t operator[](int index) const;

    /// Makes index the last one, keeping what stands in front of it; new elements are 0.
    void ResizeTo(std::int16_t upperBound);

    void Set(int index, std::int16_t value);

    friend bool operator==(const NumberArray&, const NumberArray&) = default;

private:
    std::vector<std::int16_t> elements_;
};
