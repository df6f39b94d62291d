#include "platform/system/OwnedHandle.h"

#include <windows.h>

OwnedHandle::OwnedHandle(void* handle) noexcept : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}

OwnedHandle::~OwnedHandle()
{
    if (handle_ != nullptr) {
        CloseHandle(handle_);
    }
}
