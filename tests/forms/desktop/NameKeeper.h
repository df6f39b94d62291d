#pragma once

#include <windows.h>

#include <memory>
#include <string>

/// An annotation service of Active Accessibility (IAccPropServices) for this process. CoCreateInstance returns it
/// instead of the service of Windows. It stores the names that were set since its construction.
///
/// Wine: there is no such service.
class NameKeeper {
public:
    NameKeeper();
    ~NameKeeper();
    NameKeeper(const NameKeeper&) = delete;
    NameKeeper& operator=(const NameKeeper&) = delete;

    /// The name of the window; empty if it has none.
    std::wstring NameOf(HWND window) const;
    std::size_t Count() const;
    /// Whether each name was removed before its window was destroyed.
    bool EveryNameWasTakenBack() const;

private:
    struct Service;
    std::unique_ptr<Service> service_;
    DWORD registration_ = 0;
};
