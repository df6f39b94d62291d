#include "tests/soak/monkey/Monkey.h"

#include "tests/soak/monkey/Hands.h"
#include "tests/support/Region.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <numeric>
#include <span>
#include <sstream>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t actionsRemembered = 40;
constexpr int mostSheets = 25; ///< printed in one run; other tests cover printing

// Valid and invalid input.
constexpr std::array texts{
    L"12.5",
    L"12,5",
    L"7",
    L"0",
    L"-1",
    L"-2",
    L"1e9",
    L"123456",
    L"1234567",
    L"0.5",
    L".5",
    L"abc",
    L" ",
    L"1 000",
    L"Åre – café, \"tur & retur\"",
    L"日本語 ελληνικά",
    L"'quoted'",
    L"2004-02-12   12.5 x",
    L"640823-3234",
    L"%s%n%d",
    L"Office - customer visit - warehouse - office - customer visit - warehouse - home",
};

constexpr std::array<WORD, 36> keys{
    VK_TAB,  VK_TAB, VK_RETURN, VK_ESCAPE, VK_SPACE, VK_LEFT,     VK_RIGHT,    VK_UP, VK_DOWN,
    VK_HOME, VK_END, VK_PRIOR,  VK_NEXT,   VK_BACK,  VK_DELETE,   VK_INSERT,   VK_F1, VK_F2,
    VK_F4,   VK_F5,  VK_F10,    VK_MENU,   VK_ADD,   VK_SUBTRACT, VK_MULTIPLY, 'A',   'D',
    'E',     'M',    'N',       'S',       'Y',      '0',         '1',         '5',   VK_APPS,
};

/// A key that is pressed while another is down.
struct HeldAndKey {
    WORD held;
    WORD key;
};

constexpr std::array combinations{
    HeldAndKey{VK_SHIFT, VK_TAB},    HeldAndKey{VK_CONTROL, VK_TAB},  HeldAndKey{VK_SHIFT, VK_END},
    HeldAndKey{VK_SHIFT, VK_HOME},   HeldAndKey{VK_CONTROL, 'A'},     HeldAndKey{VK_CONTROL, 'C'},
    HeldAndKey{VK_CONTROL, 'V'},     HeldAndKey{VK_CONTROL, 'X'},     HeldAndKey{VK_CONTROL, 'Z'},
    HeldAndKey{VK_SHIFT, VK_INSERT}, HeldAndKey{VK_SHIFT, VK_DELETE}, HeldAndKey{VK_MENU, VK_DOWN},
    HeldAndKey{VK_MENU, 'F'},        HeldAndKey{VK_MENU, 'A'},        HeldAndKey{VK_CONTROL, VK_HOME},
    HeldAndKey{VK_CONTROL, VK_END},  HeldAndKey{VK_SHIFT, VK_F10},    HeldAndKey{VK_CONTROL, VK_RETURN},
};

RECT AreaOf(HWND window)
{
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

/// Limits the size of reports: two years are about two dozen pages.
bool IsShortInterval(HWND dialog)
{
    const auto boxes = ControlsOf(dialog, L"Edit");
    if (boxes.size() < 2) {
        return false;
    }
    const int years = std::abs(_wtoi(TextOf(boxes[1]).c_str()) - _wtoi(TextOf(boxes[0]).c_str()));
    return years <= 1;
}

} // namespace

Monkey::Monkey(std::wstring path, std::uint32_t seed)
    : path_(std::move(path)), seed_(seed), program_(std::make_unique<RunningProgram>(path_))
{
}

// ---- Random numbers ----

std::uint32_t Monkey::Random()
{
    // A linear congruential generator: it gives the same numbers with every compiler.
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>(state_ >> 33U);
}

int Monkey::Below(int limit)
{
    return limit > 0 ? static_cast<int>(Random() % static_cast<std::uint32_t>(limit)) : 0;
}

POINT Monkey::PointIn(const RECT& area)
{
    return {area.left + Below(area.right - area.left), area.top + Below(area.bottom - area.top)};
}

HWND Monkey::SomeControl(HWND window)
{
    auto controls = ControlsOf(window);
    std::erase_if(controls, [](HWND control) { return IsWindowEnabled(control) == FALSE; });
    for (HWND other : program_->Windows()) {
        if (KindOf(other) == WindowKind::Other) {
            controls.push_back(other); // an open drop-down list
        }
    }
    return controls.empty() ? window : controls[static_cast<std::size_t>(Below(static_cast<int>(controls.size())))];
}

// ---- One action ----

std::span<const Monkey::Habit> Monkey::HabitsInTheMainWindow()
{
    static constexpr std::array main{
        Habit{104, "clicks", &Monkey::ClickControl},
        Habit{16, "clicks", &Monkey::ClickAnywhere},
        Habit{24, "clicks", &Monkey::ClickMenuBar},
        Habit{12, "clicks", &Monkey::ClickWithOtherButton},
        Habit{24, "double clicks", &Monkey::DoubleClick},
        Habit{12, "turns of the wheel", &Monkey::TurnWheel},
        Habit{56, "keys", &Monkey::PressKey},
        Habit{16, "keys", &Monkey::PressKeyWithModifier},
        Habit{12, "keys", &Monkey::PressKeys},
        Habit{8, "texts", &Monkey::WriteText},
        Habit{88, "menu commands", &Monkey::ChooseCommand},
        Habit{12, "sizes", &Monkey::ResizeMainWindow},
        Habit{8, "sizes", &Monkey::MinimiseOrMaximise},
        Habit{8, "changes of the region", &Monkey::ChangeRegion},
        Habit{1, "closings", &Monkey::PressCloseBox},
        Habit{1, "closings", &Monkey::CloseByKeys},
        Habit{1, "session ends", &Monkey::EndSession},
        Habit{1, "session ends", &Monkey::ConfirmSessionEnd},
        Habit{2, "cancelled session ends", &Monkey::CancelSessionEnd},
        Habit{1, "requests to quit", &Monkey::PostQuit},
    };
    return main;
}

std::span<const Monkey::Habit> Monkey::HabitsInADialog()
{
    static constexpr std::array dialog{
        Habit{34, "clicks", &Monkey::ClickControl},
        Habit{4, "clicks", &Monkey::ClickAnywhere},
        Habit{3, "clicks", &Monkey::ClickWithOtherButton},
        Habit{3, "double clicks", &Monkey::DoubleClick},
        Habit{3, "turns of the wheel", &Monkey::TurnWheel},
        Habit{14, "keys", &Monkey::PressKey},
        Habit{5, "keys", &Monkey::PressKeyWithModifier},
        Habit{5, "keys", &Monkey::PressKeys},
        Habit{12, "texts", &Monkey::WriteText},
        Habit{5, "days filled in", &Monkey::FillDayAndConfirm},
        Habit{3, "dialog answers", &Monkey::PressEnter},
        Habit{2, "dialog answers", &Monkey::PressEscape},
        Habit{2, "closings", &Monkey::PressCloseBox},
        Habit{2, "closings", &Monkey::CloseByKeys},
        Habit{1, "closings", &Monkey::CloseMainWindowBehind},
        Habit{1, "session ends", &Monkey::EndSession},
        Habit{1, "session ends", &Monkey::ConfirmSessionEnd},
        Habit{1, "cancelled session ends", &Monkey::CancelSessionEnd},
        Habit{1, "requests to quit", &Monkey::PostQuit},
        Habit{1, "sizes", &Monkey::ResizeMainWindow},
        Habit{3, "changes of the region", &Monkey::ChangeRegion},
    };
    return dialog;
}

std::span<const Monkey::Habit> Monkey::HabitsIn(WindowKind kind)
{
    static constexpr std::array message{
        Habit{55, "dialog answers", &Monkey::ClickControl},
        Habit{15, "dialog answers", &Monkey::PressEnter},
        Habit{10, "dialog answers", &Monkey::PressEscape},
        Habit{5, "keys", &Monkey::PressKey},
        Habit{5, "closings", &Monkey::PressCloseBox},
        Habit{3, "closings", &Monkey::CloseByKeys},
        Habit{3, "closings", &Monkey::CloseMainWindowBehind},
        Habit{2, "session ends", &Monkey::EndSession},
        Habit{2, "session ends", &Monkey::ConfirmSessionEnd},
        Habit{2, "cancelled session ends", &Monkey::CancelSessionEnd},
        Habit{1, "requests to quit", &Monkey::PostQuit},
        Habit{3, "changes of the region", &Monkey::ChangeRegion},
    };
    static constexpr std::array menu{
        Habit{30, "clicks", &Monkey::ClickAnywhere},
        Habit{40, "keys", &Monkey::PressKeys},
        Habit{15, "keys", &Monkey::PressEnter},
        Habit{15, "keys", &Monkey::PressEscape},
    };
    static constexpr std::array printer{Habit{1, "dialog answers", &Monkey::AnswerPrinter}};
    static constexpr std::array other{Habit{1, "dialog answers", &Monkey::Cancel}};
    switch (kind) {
    case WindowKind::Main:
        return HabitsInTheMainWindow();
    case WindowKind::Dialog:
        return HabitsInADialog();
    case WindowKind::Message:
        return message;
    case WindowKind::Menu:
        return menu;
    case WindowKind::Printer:
        return printer;
    case WindowKind::Other:
        break;
    }
    return other;
}

const Monkey::Habit& Monkey::ChooseHabit(WindowKind kind)
{
    const auto habits = HabitsIn(kind);
    const int sum = std::accumulate(habits.begin(), habits.end(), 0,
                                    [](int before, const Habit& habit) { return before + habit.weight; });
    int choice = Below(sum);
    auto habit = habits.begin();
    while (choice >= habit->weight) {
        choice -= habit->weight;
        ++habit;
    }
    return *habit;
}

void Monkey::Act()
{
    ++acts_;
    state_ = (std::uint64_t{seed_} << 32U) + acts_ * 0x9E3779B9ULL;
    Random();
    RestartIfEnded();
    HWND window = nullptr;
    const bool found = program_->Becomes([&] {
        window = program_->Top();
        return window != nullptr;
    });
    if (!found) {
        RestartIfEnded();
        return;
    }
    if (GetForegroundWindow() != window && KindOf(window) != WindowKind::Menu) {
        SetForegroundWindow(window);
    }
    ReadMessage(window);
    const Habit& habit = ChooseHabit(KindOf(window));
    ++counts_[habit.name];
    Note(habit.name);
    (this->*habit.action)(window);
}

void Monkey::RestartIfEnded()
{
    if (!program_->HasEnded() && IsWindow(program_->MainWindow()) != FALSE) {
        return;
    }
    program_->ExpectNormalEnd();
    ++counts_["times the program was closed and restarted"];
    Note("the program has ended");
    program_ = std::make_unique<RunningProgram>(path_);
}

void Monkey::ReadMessage(HWND window)
{
    constexpr int messageText = 0xFFFF;
    if (KindOf(window) == WindowKind::Message && window != lastMessage_) {
        const std::wstring text = TextOf(GetDlgItem(window, messageText));
        if (!text.empty()) { // otherwise the message was closed before it could be read
            ++messages_[text];
        }
        if (text.starts_with(L"Run-time error")) {
            throw Finding("the message of an unhandled error is shown");
        }
    }
    lastMessage_ = window;
}

void Monkey::Note(const std::string& act)
{
    lastActions_.push_back(std::to_string(acts_) + ": " + act);
    if (lastActions_.size() > actionsRemembered) {
        lastActions_.pop_front();
    }
}

std::string Monkey::LastActions() const
{
    std::ostringstream all;
    all << "seed " << seed_ << ", the last actions:\n";
    for (const std::string& act : lastActions_) {
        all << "  " << act << '\n';
    }
    return all.str();
}

// ---- Mouse ----

void Monkey::ClickControl(HWND window)
{
    const POINT place = PointIn(AreaOf(SomeControl(window)));
    Note("  at " + std::to_string(place.x) + ',' + std::to_string(place.y));
    hands::Click(place);
    Settle(3);
}

void Monkey::ClickAnywhere(HWND window)
{
    RECT area{};
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    hands::Click(PointIn(area));
    Settle(3);
}

void Monkey::ClickMenuBar(HWND window)
{
    constexpr int width = 140;
    constexpr int half = 9;
    POINT corner{};
    ClientToScreen(window, &corner);
    hands::Click({corner.x + Below(width), corner.y - half});
    Settle(3);
}

void Monkey::ClickWithOtherButton(HWND window)
{
    hands::Click(PointIn(AreaOf(SomeControl(window))), hands::Button::Right);
    Settle(3);
}

void Monkey::DoubleClick(HWND window)
{
    hands::Click(PointIn(AreaOf(SomeControl(window))), hands::Button::Left, 2);
    Settle(5);
}

void Monkey::TurnWheel(HWND window)
{
    hands::Wheel(PointIn(AreaOf(SomeControl(window))), Below(7) - 3);
    Settle(2);
}

// ---- Keyboard ----

void Monkey::PressKey(HWND /*window*/)
{
    const WORD key = keys[static_cast<std::size_t>(Below(static_cast<int>(keys.size())))];
    Note("  key " + std::to_string(key));
    hands::Press(key);
    Settle(2);
}

void Monkey::PressKeys(HWND window)
{
    for (int more = Below(6); more >= 0 && program_->Top() == window; --more) {
        PressKey(window);
    }
}

void Monkey::PressKeyWithModifier(HWND /*window*/)
{
    const HeldAndKey both = combinations[static_cast<std::size_t>(Below(static_cast<int>(combinations.size())))];
    Note("  key " + std::to_string(both.key) + " with " + std::to_string(both.held));
    hands::PressWith(both.held, both.key);
    Settle(4);
}

void Monkey::WriteText(HWND /*window*/)
{
    const std::wstring_view text = texts[static_cast<std::size_t>(Below(static_cast<int>(texts.size())))];
    hands::Write(text);
    Settle(2 * static_cast<int>(text.size()));
}

void Monkey::FillDayAndConfirm(HWND window)
{
    const auto lists = ControlsOf(window, L"ComboBox");
    const auto boxes = ControlsOf(window, L"Edit");
    if (lists.size() != 2 || boxes.size() != 3) {
        PressKey(window); // not the dialog of a day
        return;
    }
    PostMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(lists[1]), TRUE);
    Settle(1);
    for (int day = Below(31); day >= 0; --day) {
        hands::Press(VK_DOWN);
    }
    PostMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(boxes[1]), TRUE);
    Settle(64);
    WriteText(window);
    PressEnter(window);
}

void Monkey::ChooseCommand(HWND /*window*/)
{
    std::vector<WORD> pressed{VK_F10};
    pressed.insert(pressed.end(), static_cast<std::size_t>(Below(3)), VK_RIGHT);
    // The fourth command of a menu closes the program and is therefore rare.
    const int row = 1 + Below(3) + (Below(8) == 0 ? 1 : 0);
    pressed.insert(pressed.end(), static_cast<std::size_t>(row), VK_DOWN);
    if (Below(8) == 0) {
        pressed.push_back(VK_RIGHT);
    }
    pressed.push_back(VK_RETURN);
    std::ranges::for_each(pressed, hands::Press);
    Settle(2 * static_cast<int>(pressed.size()));
}

void Monkey::PressEnter(HWND /*window*/)
{
    hands::Press(VK_RETURN);
    Settle(2);
}

void Monkey::PressEscape(HWND /*window*/)
{
    hands::Press(VK_ESCAPE);
    Settle(2);
}

// ---- Windows ----

void Monkey::PressCloseBox(HWND window)
{
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    Settle(2);
}

void Monkey::CloseByKeys(HWND /*window*/)
{
    hands::PressWith(VK_MENU, VK_F4);
    Settle(4);
}

void Monkey::CloseMainWindowBehind(HWND /*window*/)
{
    // A task list sends this too, even while a dialog or message box is open.
    PostMessageW(program_->MainWindow(), WM_CLOSE, 0, 0);
    Settle(2);
}

void Monkey::EndSession(HWND /*window*/)
{
    SendNotifyMessageW(program_->MainWindow(), WM_QUERYENDSESSION, 0, 0);
    Settle(2);
}

void Monkey::ChangeRegion(HWND /*window*/)
{
    // Wine: a process keeps the separator from its start, so the program only updates its windows. RegionSoak.cpp
    // changes the separators.
    BroadcastRegionChange();
    Settle(2);
}

void Monkey::ConfirmSessionEnd(HWND window)
{
    // Windows sends this after all programs have agreed. Here it may also arrive while a question is open.
    EndSession(window);
    SendNotifyMessageW(program_->MainWindow(), WM_ENDSESSION, TRUE, 0);
    Settle(2);
}

void Monkey::CancelSessionEnd(HWND window)
{
    EndSession(window);
    SendNotifyMessageW(program_->MainWindow(), WM_ENDSESSION, FALSE, 0);
    Settle(2);
}

void Monkey::PostQuit(HWND /*window*/)
{
    PostThreadMessageW(GetWindowThreadProcessId(program_->MainWindow(), nullptr), WM_QUIT, 0, 0);
    Settle(2);
}

void Monkey::ResizeMainWindow(HWND /*window*/)
{
    // Asynchronously, as an X11 window manager does under Wine.
    SetWindowPos(program_->MainWindow(), nullptr, Below(200), Below(200), Below(1000), Below(800),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    Settle(4);
}

void Monkey::MinimiseOrMaximise(HWND window)
{
    if (IsIconic(window) != FALSE || IsZoomed(window) != FALSE) {
        ShowWindowAsync(window, SW_RESTORE);
    } else {
        ShowWindowAsync(window, Below(2) == 0 ? SW_MAXIMIZE : SW_MINIMIZE);
    }
    Settle(4);
}

// ---- The system's dialogs ----

void Monkey::AnswerPrinter(HWND window)
{
    if (sheets_ < mostSheets && Below(6) == 0 && IsShortInterval(GetWindow(window, GW_OWNER))) {
        ++sheets_;
        ++counts_["reports printed"];
        PostMessageW(window, WM_COMMAND, IDOK, 0);
        program_->Becomes([window] { return IsWindow(window) == FALSE; });
        Settle(4);
    } else {
        Cancel(window);
    }
}

void Monkey::Cancel(HWND window)
{
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    Settle(2);
}

// ---- Closing ----

void Monkey::CloseTopWindow()
{
    HWND top = program_->Top();
    if (top == nullptr) {
        return;
    }
    const WindowKind kind = KindOf(top);
    if (kind != WindowKind::Menu && GetForegroundWindow() != top) {
        SetForegroundWindow(top);
    }
    if (kind == WindowKind::Main) {
        return;
    }
    PressEscape(top);
    if (kind == WindowKind::Message && program_->Top() == top) {
        PostMessageW(top, WM_COMMAND, IDNO, 0); // Esc does not answer every question
        Settle(1);
    }
}

void Monkey::BecomeIdle()
{
    RestartIfEnded();
    ShowWindowAsync(program_->MainWindow(), SW_RESTORE);
    const bool resting = program_->Becomes([this] {
        CloseTopWindow();
        return program_->IsIdle();
    });
    if (!resting) {
        throw Finding("the program does not become idle\n" + program_->OnTheScreen());
    }
}

void Monkey::EndAndSave()
{
    BecomeIdle();
    PostMessageW(program_->MainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
    program_->Becomes([this] {
        if (HWND top = program_->Top(); top != nullptr && KindOf(top) == WindowKind::Message) {
            PostMessageW(top, WM_COMMAND, IDYES, 0);
        }
        return program_->HasEnded();
    });
    program_->ExpectNormalEnd();
}
