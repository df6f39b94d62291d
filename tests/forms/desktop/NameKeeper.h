#pragma once

#include <windows.h>

#include <memory>
#include <string>

/// Stands in, within this process, for the system's keeper of the names that assistive technology announces: Wine's own
/// keeps none. The program finds it the way it finds the system's. Names are kept from its making on; windows that were
/// named before are unknown to it.
class NameKeeper {
public:
    NameKeeper();
    ~NameKeeper();
    NameKeeper(const NameKeeper&) = delete;
    NameKeeper& operator=(const NameKeeper&) = delete;

    /// The name that the window has been given; empty when it has none.
    std::wstring NameOf(HWND window) const;
    std::size_t Count() const;
    /// Whether each name was taken back while its window was there.
    bool EveryNameWasTakenBack() const;

private:
    struct Service;
    std::unique_ptr<Service> service_;
    DWORD registration_ = 0;
};
