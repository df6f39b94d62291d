#include "tests/support/ReplacedImport.h"

#include <windows.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

template <class T>
T* At(std::uintptr_t offset)
{
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(GetModuleHandleW(nullptr)) + offset);
}

/// The place in the import table of one library, or null.
void** ImportOf(const IMAGE_IMPORT_DESCRIPTOR& library, std::string_view function)
{
    const auto* name = At<const IMAGE_THUNK_DATA>(library.OriginalFirstThunk);
    auto* address = At<IMAGE_THUNK_DATA>(library.FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
        if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal) &&
            function == &At<const IMAGE_IMPORT_BY_NAME>(name->u1.AddressOfData)->Name[0]) {
            return reinterpret_cast<void**>(&address->u1.Function);
        }
    }
    return nullptr;
}

} // namespace

void** ImportOf(const char* function)
{
    const auto* program = At<const IMAGE_DOS_HEADER>(0);
    const auto& headers = *At<const IMAGE_NT_HEADERS>(static_cast<std::uintptr_t>(program->e_lfanew));
    const auto& table = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* library = At<const IMAGE_IMPORT_DESCRIPTOR>(table.VirtualAddress); library->Name != 0; ++library) {
        if (void** place = ImportOf(*library, function)) {
            return place;
        }
    }
    throw std::runtime_error(std::string("the program imports no ") + function);
}

void SetImport(void** place, void* function)
{
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    *place = function;
    VirtualProtect(place, sizeof *place, before, &before);
}
