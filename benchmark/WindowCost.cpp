// Measures the main window: mouse clicks and button presses, until all windows are painted.
#include "benchmark/Measure.h"

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/main/DayLine.h"
#include "forms/main/frmMain.h"

#include <commctrl.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr double timeout = 5000; // milliseconds

/// Paints all invalid areas of the form.
void Paint()
{
    RedrawWindow(Instance<frmMain>()->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
}

/// Waits until the program is idle: WM_TIMER has the lowest priority.
void Rest()
{
    constexpr UINT milliseconds = 10;
    static bool resting = false;
    resting = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, milliseconds, [](HWND, UINT, UINT_PTR, DWORD) { resting = true; });
    const auto atRest = [] { return resting; };
    while (!atRest()) {
        DoEvents();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
    }
    KillTimer(nullptr, timer);
    Paint();
}

/// The nodes of all months.
std::vector<int> Months(const TreeView& tree)
{
    std::vector<int> months;
    for (int node = 1; node <= tree.NodeCount(); ++node) {
        if (tree.Parent(node) != 0) {
            months.push_back(node);
        }
    }
    return months;
}

/// The middle of a node's text on the screen.
POINT MiddleOf(HWND tree, HTREEITEM node)
{
    RECT area{};
    std::memcpy(&area, &node, sizeof(void*)); // TVM_GETITEMRECT reads the node from the buffer for the rectangle
    SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area));
    POINT middle{(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    ClientToScreen(tree, &middle);
    return middle;
}

void PressMouse()
{
    std::array<INPUT, 2> inputs{};
    inputs[0].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    inputs[1].type = INPUT_MOUSE;
    inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

std::wstring FirstLine(const ListBox& list)
{
    return list.ListCount() > 0 ? list.List(0) : std::wstring();
}

/// Clicks a month. Before, the month is scrolled into view and another month is selected, so that the click changes the
/// list.
void MeasureMonthClick(frmMain& form, int month, int other)
{
    HWND tree = form.TreeView1.Handle();
    form.TreeView1.Select(month);
    auto* const node = TreeView_GetSelection(tree);
    TreeView_SelectItem(tree, TreeView_GetPrevVisible(tree, node));
    TreeView_EnsureVisible(tree, node);
    form.TreeView1.NodeClick(other);
    const POINT target = MiddleOf(tree, node);
    SetCursorPos(target.x, target.y);
    Rest();

    const std::wstring before = FirstLine(form.List1);
    Measure("month click", [&] {
        const double begin = Now();
        PressMouse();
        do {
            DoEvents();
        } while (FirstLine(form.List1) == before && Now() - begin < timeout);
        Paint();
    });
    if (form.TreeView1.SelectedNode() != month || FirstLine(form.List1) == before) {
        throw std::runtime_error("the click on a month changed nothing");
    }
}

/// Answers the message box of a command with Yes, and records when the command begins to change a window. The time
/// between is that of closing the box, which is work of Windows. The box runs a message loop of its own, so hooks do
/// both.
class YesToTheQuestion {
public:
    explicit YesToTheQuestion(HWND changed)
    {
        window = changed;
        question = nullptr;
        begin = 0;
        activation = SetWindowsHookExW(WH_CBT, NoticeQuestion, nullptr, GetCurrentThreadId());
    }
    ~YesToTheQuestion()
    {
        UnhookWindowsHookEx(activation);
        UnhookWindowsHookEx(messages);
    }
    YesToTheQuestion(const YesToTheQuestion&) = delete;
    YesToTheQuestion& operator=(const YesToTheQuestion&) = delete;

    static double Begin() { return begin; }

private:
    static LRESULT CALLBACK NoticeQuestion(int code, WPARAM wParam, LPARAM lParam)
    {
        if (code == HCBT_ACTIVATE && question == nullptr) {
            question = reinterpret_cast<HWND>(wParam);
            PostMessageW(question, WM_COMMAND, IDYES, 0);
            messages = SetWindowsHookExW(WH_CALLWNDPROC, NoticeChange, nullptr, GetCurrentThreadId());
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static LRESULT CALLBACK NoticeChange(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code >= 0 && sent.hwnd == window && (sent.message == LB_RESETCONTENT || sent.message == WM_SETREDRAW)) {
            // A hook slows every message, so both are removed before the clock starts.
            UnhookWindowsHookEx(std::exchange(activation, nullptr));
            UnhookWindowsHookEx(std::exchange(messages, nullptr));
            begin = Now();
            return 0;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline HWND window = nullptr;
    static inline HWND question = nullptr;
    static inline double begin = 0;
    static inline HHOOK activation = nullptr;
    static inline HHOOK messages = nullptr;
};

/// Deletes the first day of the listed month. The program rebuilds the tree, finds the month and lists it.
void MeasureDeletion(frmMain& form)
{
    form.List1.SetListIndex(0);
    Rest();
    const DayEntry chosen = EntryOfDayLine(form.List1.List(0));
    const int before = DataInterface::dayCount;
    const YesToTheQuestion yes(form.List1.Handle());
    SendMessageW(form.deleteButton.Handle(), BM_CLICK, 0, 0);
    DoEvents();
    Paint();
    Record("rebuild", Now() - YesToTheQuestion::Begin());
    if (DataInterface::dayCount != before - 1 || YesToTheQuestion::Begin() == 0) {
        throw std::runtime_error("no day was deleted");
    }
    DataInterface::AddDay(chosen.year, chosen.month, chosen.day, chosen.distance, chosen.route);
}

} // namespace

void MeasureWindow(int rounds)
{
    Module1::LoadSettings();
    frmMain& form = *Instance<frmMain>();
    SetForegroundWindow(form.Handle());
    SetDoubleClickTime(1); // the clicks of the measurement must not become double-clicks
    Rest();
    Record("entries", DataInterface::dayCount);
    const std::vector<int> months = Months(form.TreeView1);
    for (int round = 0; round < rounds; ++round) {
        // Months from the whole tree.
        const std::size_t at = static_cast<std::size_t>(round) * months.size() / static_cast<std::size_t>(rounds);
        MeasureMonthClick(form, months[at], months[(at + 1) % months.size()]);
        MeasureDeletion(form);
    }
    DataInterface::ClearJournalChanged();
    form.Unload();
}
