// The properties of the test machine that the other tests rely on. If several tests fail, look at these first.
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool IsSwedish()
{
    return Variable("LC_ALL").starts_with("sv_SE");
}

std::wstring LocaleText(LCTYPE what)
{
    std::array<wchar_t, 80> text{};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text.data(), static_cast<int>(text.size()));
    return text.data();
}

void HandleWaitingMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        DispatchMessageW(&message);
    }
}

} // namespace

TEST(Machine, HasTheLocaleOfTheEnvironment)
{
    EXPECT_EQ(GetUserDefaultLCID(), IsSwedish() ? 0x41dU : 0x409U);
    EXPECT_EQ(LocaleText(LOCALE_SDECIMAL), IsSwedish() ? L"," : L".");
    EXPECT_EQ(LocaleText(LOCALE_SMONTHNAME3), IsSwedish() ? L"mars" : L"March");
    EXPECT_EQ(GetACP(), 1252U);
}

TEST(Machine, HasTheDpiOfTheEnvironment)
{
    HDC screen = GetDC(nullptr);
    EXPECT_EQ(std::to_string(GetDeviceCaps(screen, LOGPIXELSX)), Variable("ODOMIRA_DPI"));
    ReleaseDC(nullptr, screen);
}

TEST(Machine, HasNoSettingsOfTheProgramAtFirst)
{
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Velmora", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
}

TEST(Machine, GivesANewWindowTheFocus)
{
    HWND window = CreateWindowW(L"EDIT", L"focus", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200, nullptr, nullptr,
                                nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (GetForegroundWindow() != window && std::chrono::steady_clock::now() < end) {
        HandleWaitingMessages();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(GetForegroundWindow(), window);
    DestroyWindow(window);
}

TEST(Machine, HasAFontForArial)
{
    HDC screen = GetDC(nullptr);
    HFONT font = CreateFontW(-20, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial");
    HGDIOBJ before = SelectObject(screen, font);
    SIZE narrow{};
    SIZE wide{};
    GetTextExtentPoint32W(screen, L"iiii", 4, &narrow);
    GetTextExtentPoint32W(screen, L"MMMM", 4, &wide);
    EXPECT_GT(narrow.cx, 0);
    EXPECT_LT(narrow.cx, wide.cx) << "a proportional font";
    SelectObject(screen, before);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
}

TEST(Machine, DISABLED_Child_Crashes)
{
    __builtin_trap();
}

TEST(Machine, ReturnsTheExceptionOfACrashedProgramAsItsExitCode)
{
    EXPECT_EQ(RunInChildProcess(L"Machine.DISABLED_Child_Crashes"), static_cast<int>(EXCEPTION_ILLEGAL_INSTRUCTION));
}
