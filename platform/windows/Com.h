#pragma once

#include <windows.h>

#include <objbase.h>

#include <memory>

// COM for the sources of this room, on the one thread of the program.

struct ComReleaser {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <class T>
using ComOwner = std::unique_ptr<T, ComReleaser>;

/// Initialises COM during its lifetime.
class ComApartment {
public:
    ComApartment() noexcept : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComApartment()
    {
        if (entered_) {
            CoUninitialize();
        }
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    bool entered_;
};
