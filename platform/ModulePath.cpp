#include "platform/ModulePath.h"

#include <windows.h>

std::wstring ModulePath()
{
    // A path that does not fit is cut and fills the buffer completely; then a larger one is tried.
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
