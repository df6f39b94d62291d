#pragma once

#include "platform/windows/Handles.h"

#include <string>

/// During its lifetime, Windows shows this reason to a user who signs out while the window delays the end of the
/// session.
class ShutdownReason {
public:
    ShutdownReason(WindowHandle window, const std::wstring& reason);
    ~ShutdownReason();
    ShutdownReason(const ShutdownReason&) = delete;
    ShutdownReason& operator=(const ShutdownReason&) = delete;

private:
    WindowHandle window_;
};
