// odomira_stopwatch ROUNDS COMMAND...: starts each command in turn, ROUNDS times, and closes it when its window can be
// used. For every start it prints "command number <tab> milliseconds <tab> peak KiB <tab> contents". Contents is the
// number of characters in edits plus the number of lines in lists; it proves that the window shows its file.
//
// A window can be used when it is visible and its program, once idle, has answered a message.
#include "benchmark/Measure.h"

#include <psapi.h>
#include <shellapi.h>

#include <array>
#include <cwchar>
#include <memory>
#include <string>

namespace {

constexpr DWORD timeout = 60000;

struct CloseObject {
    void operator()(HANDLE object) const noexcept { CloseHandle(object); }
};
using Owned = std::unique_ptr<void, CloseObject>;

struct LocalMemoryDeleter {
    void operator()(wchar_t** memory) const noexcept { LocalFree(memory); }
};

struct Sought {
    DWORD process;
    HWND window;
};

BOOL CALLBACK IsIt(HWND window, LPARAM data)
{
    auto& sought = *reinterpret_cast<Sought*>(data);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == sought.process && IsWindowVisible(window) != FALSE && GetWindow(window, GW_OWNER) == nullptr) {
        sought.window = window;
    }
    return sought.window == nullptr ? TRUE : FALSE;
}

HWND WindowOf(DWORD process)
{
    Sought sought{process, nullptr};
    while (sought.window == nullptr) {
        EnumWindows(IsIt, reinterpret_cast<LPARAM>(&sought));
        if (sought.window == nullptr) {
            Sleep(1);
        }
    }
    return sought.window;
}

BOOL CALLBACK CountContents(HWND control, LPARAM data)
{
    auto& contents = *reinterpret_cast<LRESULT*>(data);
    std::array<wchar_t, 20> name{};
    GetClassNameW(control, name.data(), static_cast<int>(name.size()));
    if (_wcsicmp(name.data(), L"Edit") == 0) {
        contents += SendMessageW(control, WM_GETTEXTLENGTH, 0, 0);
    } else if (_wcsicmp(name.data(), L"ListBox") == 0) {
        contents += SendMessageW(control, LB_GETCOUNT, 0, 0);
    }
    return TRUE;
}

bool Start(int number, std::wstring command)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    const double begin = Now();
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started) ==
        FALSE) {
        std::wprintf(L"cannot start %ls\n", command.c_str());
        return false;
    }
    const Owned process(started.hProcess);
    const Owned thread(started.hThread);
    WaitForInputIdle(process.get(), timeout);
    HWND window = WindowOf(started.dwProcessId);
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, timeout, &answer);
    const double taken = Now() - begin;

    LRESULT contents = 0;
    EnumChildWindows(window, CountContents, reinterpret_cast<LPARAM>(&contents));
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(process.get(), &memory, sizeof memory);
    std::printf("%d\t%.3f\t%lu\t%ld\n", number, taken, static_cast<unsigned long>(memory.PeakWorkingSetSize / 1024),
                static_cast<long>(contents));
    std::fflush(stdout);
    PostMessageW(window, WM_CLOSE, 0, 0);
    return WaitForSingleObject(process.get(), timeout) == WAIT_OBJECT_0;
}

} // namespace

int main()
{
    int count = 0;
    const std::unique_ptr<wchar_t*, LocalMemoryDeleter> words(CommandLineToArgvW(GetCommandLineW(), &count));
    const int rounds = count > 1 ? _wtoi(words.get()[1]) : 0;
    for (int round = 0; round < rounds; ++round) {
        for (int at = 2; at < count; ++at) {
            if (!Start(at - 2, words.get()[at])) {
                return 1;
            }
        }
    }
    return rounds > 0 && count > 2 ? 0 : 2;
}
