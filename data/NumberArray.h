#pragma once

#include <cstdint>
#include <vector>

/// An array of 16-bit numbers with the indices 0..UpperBound(). An array without elements has no upper bound.
class NumberArray {
public:
    /// Throws SubscriptOutOfRange if there are no elements.
    std::int16_t UpperBound() const;

    /// Throws SubscriptOutOfRange outside 0..UpperBound().
    std::int16_t operator[](int index) const;

    /// Keeps the elements up to upperBound; new elements are 0.
    void ResizeTo(std::int16_t upperBound);

    void Set(int index, std::int16_t value);

    friend bool operator==(const NumberArray&, const NumberArray&) = default;

private:
    std::vector<std::int16_t> elements_;
};
