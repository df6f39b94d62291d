#include "data/NumberArray.h"

#include "platform/system/CheckedArithmetic.h"

namespace {

std::size_t Checked(int index, const std::vector<std::int16_t>& elements)
{
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(index);
}

} // namespace

std::int16_t NumberArray::UpperBound() const
{
    if (elements_.empty()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    return CheckedInt16(static_cast<std::int64_t>(elements_.size()) - 1);
}

std::int16_t NumberArray::operator[](int index) const
{
    return elements_[Checked(index, elements_)];
}

void NumberArray::ResizeTo(std::int16_t upperBound)
{
    elements_.resize(static_cast<std::size_t>(upperBound) + 1);
}

void NumberArray::Set(int index, std::int16_t value)
{
    elements_[Checked(index, elements_)] = value;
}
