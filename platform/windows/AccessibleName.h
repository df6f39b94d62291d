#pragma once

#include "platform/windows/Handles.h"

#include <string>

/// The name by which assistive technology announces a window that has neither a caption nor a label before it. It is
/// not visible.
///
/// Wine: the annotation service of Active Accessibility (IAccPropServices) does not exist, so the window has no name.
/// Windows has it.
class AccessibleName {
public:
    AccessibleName() = default;
    ~AccessibleName() { Clear(); }
    AccessibleName(const AccessibleName&) = delete;
    AccessibleName& operator=(const AccessibleName&) = delete;

    void Set(WindowHandle window, const std::wstring& name) noexcept;
    /// Removes the name. Call it before the window is destroyed.
    void Clear() noexcept;

private:
    WindowHandle window_ = nullptr; ///< the window that has the name; null if none was set
};
