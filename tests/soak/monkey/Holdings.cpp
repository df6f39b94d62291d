#include "tests/soak/monkey/Holdings.h"

#include <winternl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace {

// ---- Windows ----

struct Count {
    DWORD process;
    int found;
};

BOOL CALLBACK CountOne(HWND window, LPARAM result)
{
    auto& count = *reinterpret_cast<Count*>(result);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    count.found += owner == count.process ? 1 : 0;
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM result)
{
    CountOne(window, result);
    EnumChildWindows(window, CountOne, result);
    return TRUE;
}

int WindowsOf(HANDLE process)
{
    Count count{GetProcessId(process), 0};
    EnumWindows(CountWithChildren, reinterpret_cast<LPARAM>(&count));
    HWND window = nullptr;
    while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr) {
        CountWithChildren(window, reinterpret_cast<LPARAM>(&count));
    }
    return count.found;
}

// ---- GDI objects ----

/// An entry of the table of GDI objects that the system has in each process.
struct GdiEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t generation;
    std::uint8_t type; ///< 0: the entry is free
    std::uint8_t flags;
    std::uint64_t userData;
};

template <typename T>
void ReadMemory(HANDLE process, std::uintptr_t address, T* into, std::size_t count)
{
    if (ReadProcessMemory(process, reinterpret_cast<const void*>(address), into, count * sizeof(T), nullptr) == 0) {
        throw std::runtime_error("the program's memory cannot be read");
    }
}

int GdiObjectsInTheTableOf(HANDLE process)
{
    constexpr std::uintptr_t tableInProcessBlock = 0xF8;
    constexpr std::size_t entriesInTable = 0x4000;
    PROCESS_BASIC_INFORMATION basic{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
    std::uintptr_t table = 0;
    ReadMemory(process, reinterpret_cast<std::uintptr_t>(basic.PebBaseAddress) + tableInProcessBlock, &table, 1);
    std::vector<GdiEntry> entries(entriesInTable);
    ReadMemory(process, table, entries.data(), entries.size());
    return static_cast<int>(std::ranges::count_if(entries, [](const GdiEntry& entry) { return entry.type != 0; }));
}

int GdiObjectsOf(HANDLE process)
{
    const DWORD count = GetGuiResources(process, GR_GDIOBJECTS);
    return count != 0 ? static_cast<int>(count) : GdiObjectsInTheTableOf(process);
}

// ---- User objects ----

/// The index of a user object in the table of the machine, counted from 0.
int IndexOf(HMENU object)
{
    constexpr int firstIndex = 0x20;
    return (LOWORD(reinterpret_cast<std::uintptr_t>(object)) - firstIndex) / 2;
}

/// A new object gets a free index, or the first unused index if none is free. So this creates objects until one has an
/// unused index: then every lower index is in use, by these objects or by others.
int UserObjectsOfTheMachine()
{
    static int highestIndex = 1024; // higher than all indices in use before the first call
    std::vector<HMENU> ours;
    int index = 0;
    while (index <= highestIndex) {
        HMENU object = CreateMenu();
        if (object == nullptr) {
            throw std::runtime_error("CreateMenu: the machine has too many user objects");
        }
        index = IndexOf(object);
        ours.push_back(object);
    }
    highestIndex = index;
    std::ranges::for_each(ours, DestroyMenu);
    return index + 1 - static_cast<int>(ours.size());
}

int UserObjectsOf(HANDLE process)
{
    const DWORD count = GetGuiResources(process, GR_USEROBJECTS);
    return count != 0 ? static_cast<int>(count) : UserObjectsOfTheMachine();
}

// ---- Handles ----

struct HandleEntry {
    std::uint16_t process;
    std::uint16_t creator;
    std::uint8_t type;
    std::uint8_t flags;
    std::uint16_t value;
    std::uint64_t object;
    std::uint32_t access;
};

std::vector<HandleEntry> AllHandles()
{
    constexpr auto handleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    constexpr std::size_t listStart = 8;
    std::vector<std::byte> answer(std::size_t{8} << 20);
    if (NtQuerySystemInformation(handleInformation, answer.data(), static_cast<ULONG>(answer.size()), nullptr) != 0) {
        throw std::runtime_error("the system does not list its handles");
    }
    const auto count = *reinterpret_cast<const std::uint32_t*>(answer.data());
    const auto* first = reinterpret_cast<const HandleEntry*>(answer.data() + listStart);
    return {first, first + count};
}

/// The number of the object type of registry keys, found with a key that this process opens.
std::uint8_t TypeOfRegistryKeys()
{
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, &key);
    const auto handles = AllHandles();
    RegCloseKey(key);
    const auto value = static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(key));
    const auto ours = std::ranges::find_if(handles, [value](const HandleEntry& entry) {
        return entry.process == GetCurrentProcessId() && entry.value == value;
    });
    if (ours == handles.end()) {
        throw std::runtime_error("the list of handles lacks an open key");
    }
    return ours->type;
}

void CountHandles(HANDLE process, Holdings& holdings)
{
    static const std::uint8_t keyType = TypeOfRegistryKeys();
    const DWORD id = GetProcessId(process);
    for (const HandleEntry& entry : AllHandles()) {
        if (entry.process == id) {
            ++(entry.type == keyType ? holdings.registryKeys : holdings.otherHandles);
        }
    }
}

} // namespace

bool Holdings::Exceed(const Holdings& other) const noexcept
{
    return windows > other.windows || gdiObjects > other.gdiObjects || userObjects > other.userObjects ||
           registryKeys > other.registryKeys || otherHandles > other.otherHandles;
}

std::ostream& operator<<(std::ostream& out, const Holdings& holdings)
{
    return out << "windows " << holdings.windows << ", GDI objects " << holdings.gdiObjects << ", user objects "
               << holdings.userObjects << ", registry keys " << holdings.registryKeys << ", other handles "
               << holdings.otherHandles;
}

Holdings HoldingsOf(HANDLE process)
{
    Holdings holdings{
        .windows = WindowsOf(process), .gdiObjects = GdiObjectsOf(process), .userObjects = UserObjectsOf(process)};
    CountHandles(process, holdings);
    return holdings;
}
