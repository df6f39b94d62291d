#include "tests/support/NoMemory.h"

#include <windows.h>

#include <new>

namespace {

thread_local int successesLeft = 0;
thread_local int failuresLeft = 0;
thread_local bool anyFailed = false;

bool Fails() noexcept
{
    if (failuresLeft == 0 || successesLeft-- > 0) {
        return false;
    }
    successesLeft = 0;
    --failuresLeft;
    anyFailed = true;
    return true;
}

} // namespace

NoMemory::NoMemory(int after, int times) noexcept
{
    successesLeft = after;
    anyFailed = false;
    failuresLeft = times;
}

NoMemory::~NoMemory()
{
    failuresLeft = 0;
}

bool NoMemory::WasMet() const noexcept
{
    return anyFailed;
}

void* operator new(std::size_t size)
{
    void* memory = Fails() ? nullptr : HeapAlloc(GetProcessHeap(), 0, size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    HeapFree(GetProcessHeap(), 0, memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    HeapFree(GetProcessHeap(), 0, memory);
}
