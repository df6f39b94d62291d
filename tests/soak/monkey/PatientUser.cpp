#include "tests/soak/monkey/PatientUser.h"

#include "tests/soak/monkey/Hands.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <thread>
#include <vector>

namespace {

// Positions of the menu commands: the menu, the item without separators, the item in the submenu.
constexpr std::initializer_list<int> revert{0, 0};
constexpr std::initializer_list<int> print{0, 2};
constexpr std::initializer_list<int> settings{1, 0};
constexpr std::initializer_list<int> employeeInformation{1, 1};
constexpr std::initializer_list<int> about{2, 1};

constexpr const wchar_t* buttonClass = L"Button";

constexpr int settingsOfSettings = 2;
constexpr int settingsOfEmployee = 5;
constexpr int settingsOfPrinting = 2;

POINT MiddleOf(HWND window)
{
    RECT area{};
    GetWindowRect(window, &area);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

bool IsDone(const std::function<bool()>& condition)
{
    constexpr std::chrono::seconds timeout{4};
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace

void PatientUser::Keys(std::initializer_list<WORD> keys) const
{
    std::ranges::for_each(keys, hands::Press);
    program_.Settle(2 * static_cast<int>(keys.size()) + 2);
}

void PatientUser::ClickOn(HWND control) const
{
    hands::MoveTo(MiddleOf(control));
    program_.Settle(2);
    hands::Click(MiddleOf(control));
    program_.Settle(6);
}

void PatientUser::BringToFront() const
{
    if (HWND top = program_.Top(); top != nullptr && top != GetForegroundWindow()) {
        SetForegroundWindow(top);
    }
}

HWND PatientUser::Open(WindowKind kind, const std::function<void()>& action)
{
    constexpr int attempts = 5;
    HWND before = program_.Top();
    std::string screens;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        repeats_ += attempt > 0 ? 1 : 0;
        action();
        HWND opened = nullptr;
        if (IsDone([&] {
                opened = program_.Top();
                return opened != nullptr && opened != before && opened == GetForegroundWindow() &&
                       KindOf(opened) == kind;
            })) {
            return opened;
        }
        screens += program_.OnTheScreen();
        BringToFront();
        Keys({VK_ESCAPE}); // a menu that was left open
    }
    throw Finding("a command does not open its dialog; after each attempt:\n" + screens);
}

HWND PatientUser::OpenByButton(Command command, WindowKind kind)
{
    return Open(kind, [&] { ClickOn(ControlsOf(program_.MainWindow(), buttonClass).at(command)); });
}

HWND PatientUser::OpenByMenu(std::initializer_list<int> path, WindowKind kind)
{
    return Open(kind, [&] {
        std::vector<WORD> keys{VK_F10};
        const int column = *path.begin();
        keys.insert(keys.end(), static_cast<std::size_t>(column), VK_RIGHT);
        for (auto row = std::next(path.begin()); row != path.end(); ++row) {
            keys.insert(keys.end(), {row == std::next(path.begin()) ? WORD{VK_DOWN} : WORD{VK_RIGHT}, VK_HOME});
            keys.insert(keys.end(), static_cast<std::size_t>(*row), VK_DOWN);
        }
        keys.push_back(VK_RETURN);
        std::ranges::for_each(keys, hands::Press);
        program_.Settle(2 * static_cast<int>(keys.size()) + 2);
    });
}

void PatientUser::CloseBy(HWND window, const std::function<void()>& action)
{
    constexpr int attempts = 5;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        repeats_ += attempt > 0 ? 1 : 0;
        if (IsWindowVisible(window) != FALSE) { // it may be closed while no window is active
            action();
        }
        if (IsDone([&] { return program_.Top() != window && program_.Top() == GetForegroundWindow(); })) {
            return;
        }
        BringToFront();
    }
    throw Finding("a dialog does not close\n" + program_.OnTheScreen());
}

void PatientUser::Leave(HWND window, Exit exit)
{
    CloseBy(window, [&] {
        switch (exit) {
        case Exit::Escape:
            Keys({VK_ESCAPE});
            break;
        case Exit::CloseBox:
            PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
            break;
        case Exit::CancelButton:
            ClickOn(ControlsOf(window, buttonClass).back());
            break;
        case Exit::Enter:
            Keys({VK_RETURN});
            break;
        }
        program_.Settle(4);
    });
}

void PatientUser::ChooseFirstLine()
{
    HWND list = ControlsOf(program_.MainWindow(), L"ListBox").front();
    DWORD_PTR line = 0;
    SendMessageTimeoutW(list, LB_GETCURSEL, 0, 0, SMTO_NORMAL, 3000, &line);
    if (static_cast<LRESULT>(line) == LB_ERR) { // a second click could become a double-click
        RECT area{};
        GetWindowRect(list, &area);
        hands::Click({area.left + 20, area.top + 8});
    }
    HWND edit = ControlsOf(program_.MainWindow(), buttonClass).at(editButton);
    if (!program_.Becomes([edit] { return IsWindowEnabled(edit) != FALSE; })) {
        throw Finding("a line of the list cannot be selected\n" + program_.OnTheScreen());
    }
}

void PatientUser::Add(int time)
{
    constexpr int ways = 5;
    switch (time % ways) {
    case 0:
        AddADayAndDeleteIt();
        break;
    case 1:
        AddWithoutADay();
        break;
    default:
        Leave(OpenByButton(addButton, WindowKind::Dialog), static_cast<Exit>(time % ways - 2));
        break;
    }
}

void PatientUser::OpenAndCloseADialog()
{
    Leave(OpenByButton(addButton, WindowKind::Dialog), Exit::Escape);
}

void PatientUser::AddADayAndDeleteIt()
{
    HWND dialog = OpenByButton(addButton, WindowKind::Dialog);
    CloseBy(dialog, [this] { Keys({VK_HOME, VK_RETURN}); });
    HWND question = OpenByButton(deleteButton, WindowKind::Message);
    CloseBy(question, [this] { Keys({'Y'}); });
}

void PatientUser::AddWithoutADay()
{
    HWND dialog = OpenByButton(addButton, WindowKind::Dialog);
    Leave(Open(WindowKind::Message, [this] { Keys({VK_RETURN}); }), Exit::Enter);
    Leave(dialog, Exit::Escape);
}

void PatientUser::Edit(int time)
{
    ChooseFirstLine();
    HWND dialog = OpenByButton(editButton, WindowKind::Dialog);
    Leave(dialog, static_cast<Exit>(time % 4));
}

void PatientUser::AskToDelete(int time)
{
    ChooseFirstLine();
    HWND question = OpenByButton(deleteButton, WindowKind::Message);
    // Esc does not close the question. The default button is No.
    if (time % 2 == 0) {
        Leave(question, Exit::Enter);
    } else {
        CloseBy(question, [this] { Keys({'N'}); });
    }
}

void PatientUser::DeleteWithoutSelection(int time)
{
    // After a deletion no line is selected, and Delete shows a message.
    if (time == 0) {
        AddADayAndDeleteIt();
    }
    HWND message = OpenByButton(deleteButton, WindowKind::Message);
    Leave(message, time % 2 == 0 ? Exit::Enter : Exit::Escape);
}

void PatientUser::Settings(int time)
{
    HWND dialog = OpenByMenu(settings, WindowKind::Dialog);
    const auto exit = static_cast<Exit>(time % 4);
    savedSettings_ += exit == Exit::Enter ? settingsOfSettings : 0;
    Leave(dialog, exit);
}

void PatientUser::EmployeeInformation(int time)
{
    HWND dialog = OpenByMenu(employeeInformation, WindowKind::Dialog);
    const auto exit = static_cast<Exit>(time % 4);
    savedSettings_ += exit == Exit::Enter ? settingsOfEmployee : 0;
    Leave(dialog, exit);
}

void PatientUser::About(int time)
{
    HWND dialog = OpenByMenu(about, WindowKind::Dialog);
    Leave(dialog, static_cast<Exit>(time % 4));
}

void PatientUser::PrintInterval(int time)
{
    HWND dialog = OpenByMenu(print, WindowKind::Dialog);
    Leave(dialog, static_cast<Exit>(time % 3));
}

void PatientUser::ChoosePrinter(int time)
{
    HWND dialog = OpenByMenu(print, WindowKind::Dialog);
    HWND chooser = Open(WindowKind::Printer, [this] { Keys({VK_RETURN}); });
    savedSettings_ += settingsOfPrinting;
    Leave(chooser, time % 2 == 0 ? Exit::Escape : Exit::CloseBox);
    Leave(dialog, Exit::Escape);
}

void PatientUser::Print(int /*time*/)
{
    OpenByMenu(print, WindowKind::Dialog);
    HWND chooser = Open(WindowKind::Printer, [this] { Keys({VK_RETURN}); });
    savedSettings_ += settingsOfPrinting;
    PostMessageW(chooser, WM_COMMAND, IDOK, 0);
    if (!program_.Becomes([this] { return program_.IsIdle(); })) {
        throw Finding("the dialog stays open after printing");
    }
}

void PatientUser::AskToRevert(int time)
{
    HWND question = OpenByMenu(revert, WindowKind::Message);
    if (time % 2 == 0) {
        Leave(question, Exit::Enter);
    } else {
        CloseBy(question, [this] { Keys({'N'}); });
    }
}

void PatientUser::AskToSave(int time)
{
    HWND question =
        Open(WindowKind::Message, [this] { PostMessageW(program_.MainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0); });
    constexpr std::array cancels{Exit::Escape, Exit::CloseBox, Exit::Enter};
    Leave(question, cancels.at(static_cast<std::size_t>(time) % cancels.size()));
}
