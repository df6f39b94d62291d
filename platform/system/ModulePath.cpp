#include "platform/system/ModulePath.h"

#include <windows.h>

std::wstring ModulePath()
{
    // A path that does not fit is truncated and fills the buffer.
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}
