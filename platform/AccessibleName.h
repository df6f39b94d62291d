#pragma once

#include "platform/Handles.h"

#include <string>

/// The name by which assistive technology announces a window, for a window that has no caption and no label before it
/// that would be its name. Nobody sees it. Where the system keeps no such names, nothing happens.
class AccessibleName {
public:
    AccessibleName() = default;
    ~AccessibleName() { Clear(); }
    AccessibleName(const AccessibleName&) = delete;
    AccessibleName& operator=(const AccessibleName&) = delete;

    void Set(WindowHandle window, const std::wstring& name) noexcept;
    /// Takes the name back; has to be done while the window is there.
    void Clear() noexcept;

private:
    WindowHandle window_ = nullptr; ///< the window that has the name; none: no name was given
};
