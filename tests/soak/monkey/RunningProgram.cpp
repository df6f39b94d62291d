#include "tests/soak/monkey/RunningProgram.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <dlgs.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <sstream>
#include <string_view>
#include <thread>

namespace {

/// A program that does not respond for this time counts as hanging. A report on a slow computer takes long.
constexpr std::chrono::seconds timeout{60};
constexpr std::chrono::milliseconds lookEvery{2};

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool IsOfClass(HWND window, std::wstring_view name)
{
    return ClassOf(window) == name;
}

BOOL CALLBACK Collect(HWND window, LPARAM list)
{
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

DWORD ProcessOf(HWND window)
{
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return id;
}

bool TakesInput(HWND window)
{
    return IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

} // namespace

WindowKind KindOf(HWND window)
{
    constexpr int messageText = 0xFFFF; // the ID of the control with the text of a message box
    constexpr int firstControl = 101;   // the first control of every window of the program
    const std::wstring name = ClassOf(window);
    if (name == L"Odomira") {
        return WindowKind::Main;
    }
    if (name == L"#32768") {
        return WindowKind::Menu;
    }
    if (GetDlgItem(window, messageText) != nullptr) {
        return WindowKind::Message;
    }
    if (GetDlgItem(window, cmb4) != nullptr) {
        return WindowKind::Printer;
    }
    return GetDlgItem(window, firstControl) != nullptr ? WindowKind::Dialog : WindowKind::Other;
}

std::wstring TextOf(HWND window)
{
    std::array<wchar_t, 1000> text{};
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL, 3000,
                        &length);
    return {text.data(), length};
}

std::vector<HWND> ControlsOf(HWND window, const wchar_t* className)
{
    std::vector<HWND> controls;
    EnumChildWindows(window, Collect, reinterpret_cast<LPARAM>(&controls));
    std::erase_if(controls, [className](HWND control) {
        return IsWindowVisible(control) == FALSE || (className != nullptr && !IsOfClass(control, className));
    });
    return controls;
}

RunningProgram::RunningProgram(const std::wstring& path)
{
    Start(path);
    const bool opened = Becomes([this] {
        const auto windows = Windows();
        const auto main = std::ranges::find(windows, WindowKind::Main, KindOf);
        main_ = main != windows.end() ? *main : nullptr;
        return main_ != nullptr || std::ranges::find(windows, WindowKind::Message, KindOf) != windows.end();
    });
    if (!opened || main_ == nullptr || !Becomes([this] { return IsIdle(); })) {
        throw Finding("the program does not open its main window, and nothing else, when it is started");
    }
}

RunningProgram::~RunningProgram()
{
    if (!HasEnded()) {
        TerminateProcess(Process(), 1);
        WaitForSingleObject(Process(), INFINITE);
    }
}

void RunningProgram::Start(const std::wstring& path)
{
    std::wstring command = L'"' + path + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started) ==
        FALSE) {
        throw std::runtime_error("the program cannot be started; build it first");
    }
    process_ = OwnedHandle(started.hProcess);
    const OwnedHandle thread(started.hThread);
    thread_ = started.dwThreadId;
}

bool RunningProgram::HasEnded() const
{
    return WaitForSingleObject(Process(), 0) == WAIT_OBJECT_0;
}

void RunningProgram::ExpectNormalEnd() const
{
    constexpr auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(timeout).count();
    if (WaitForSingleObject(Process(), static_cast<DWORD>(milliseconds)) != WAIT_OBJECT_0) {
        throw Finding("the program has lost its main window but is still running");
    }
    DWORD code = 0;
    GetExitCodeProcess(Process(), &code);
    if (code != 0) {
        throw Finding("the program has crashed: it ended with " + std::to_string(code));
    }
}

std::vector<HWND> RunningProgram::Windows() const
{
    std::vector<HWND> windows;
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
    const DWORD process = GetProcessId(Process());
    std::erase_if(windows, [process](HWND window) {
        return ProcessOf(window) != process || IsWindowVisible(window) == FALSE || IsOfClass(window, TOOLTIPS_CLASSW);
    });
    return windows;
}

HWND RunningProgram::Top() const
{
    const auto windows = Windows();
    if (const auto menu = std::ranges::find(windows, WindowKind::Menu, KindOf); menu != windows.end()) {
        return *menu;
    }
    HWND front = GetForegroundWindow();
    if (std::ranges::find(windows, front) != windows.end() && TakesInput(front)) {
        return front;
    }
    const auto first = std::ranges::find_if(
        windows, [](HWND window) { return TakesInput(window) && !IsOfClass(window, L"ComboLBox"); });
    return first != windows.end() ? *first : nullptr;
}

bool RunningProgram::AnswersOnce() const
{
    constexpr auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(timeout).count();
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(main_, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(milliseconds), &answer) != 0) {
        return true;
    }
    if (IsWindow(main_) != FALSE && !HasEnded()) {
        throw Finding("the program no longer responds");
    }
    return false;
}

void RunningProgram::Settle(int inputs) const
{
    // The program answers a sent message whenever it reads input, and reads one input each time.
    for (int i = 0; i < inputs && AnswersOnce(); ++i) {
    }
}

bool RunningProgram::Becomes(const std::function<bool()>& condition) const
{
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (HasEnded() || std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(lookEvery);
    }
    return true;
}

bool RunningProgram::IsIdle() const
{
    return Windows() == std::vector{main_} && TakesInput(main_) && GetForegroundWindow() == main_;
}

std::string RunningProgram::OnTheScreen() const
{
    std::ostringstream words;
    HWND front = GetForegroundWindow();
    for (HWND window : Windows()) {
        RECT area{};
        GetWindowRect(window, &area);
        words << "  window of kind " << static_cast<int>(KindOf(window)) << (window == front ? ", foreground" : "")
              << (IsWindowEnabled(window) == FALSE ? ", disabled" : "")
              << (IsIconic(window) != FALSE ? ", minimised" : "") << ", at " << area.left << ',' << area.top << " to "
              << area.right << ',' << area.bottom << '\n';
    }
    words << "  the foreground window has the class " << testing::PrintToString(ClassOf(front)) << '\n';
    return words.str();
}
