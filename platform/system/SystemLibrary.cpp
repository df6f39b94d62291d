#include "platform/system/SystemLibrary.h"

#include <windows.h>

void* SystemFunctionAddress(const wchar_t* library, const char* function) noexcept
{
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module != nullptr ? reinterpret_cast<void*>(GetProcAddress(module, function)) : nullptr;
}
