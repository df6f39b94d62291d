#include "platform/windows/ShutdownReason.h"

#include <windows.h>

ShutdownReason::ShutdownReason(WindowHandle window, const std::wstring& reason) : window_(window)
{
    ShutdownBlockReasonCreate(window, reason.c_str());
}

ShutdownReason::~ShutdownReason()
{
    ShutdownBlockReasonDestroy(window_);
}
