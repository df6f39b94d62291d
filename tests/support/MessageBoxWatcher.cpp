#include "tests/support/MessageBoxWatcher.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace {

constexpr int idOfText = 0xFFFF;
constexpr auto lookEvery = std::chrono::milliseconds(2);

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

LONG LeftOf(HWND window)
{
    RECT rectangle{};
    GetWindowRect(window, &rectangle);
    return rectangle.left;
}

std::vector<HWND> VisibleChildren(HWND parent)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if ((GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) != 0) {
            children.push_back(child);
        }
    }
    return children;
}

LONG StyleOf(HWND window, LONG mask)
{
    return GetWindowLongW(window, GWL_STYLE) & mask;
}

SeenMessageBox Read(HWND box)
{
    SeenMessageBox seen;
    seen.title = TextOf(box);
    seen.text = TextOf(GetDlgItem(box, idOfText));
    seen.owner = GetWindow(box, GW_OWNER);

    std::vector<HWND> buttons;
    for (HWND child : VisibleChildren(box)) {
        if (ClassOf(child) == L"Button") {
            buttons.push_back(child);
        } else if (StyleOf(child, SS_TYPEMASK) == SS_ICON) {
            const auto icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
            seen.hasIcon = icon != nullptr;
            seen.isCritical = icon != nullptr && icon == LoadIconW(nullptr, IDI_HAND);
        }
    }
    std::ranges::sort(buttons, {}, LeftOf);
    for (HWND button : buttons) {
        seen.buttons.push_back(GetDlgCtrlID(button));
        if (StyleOf(button, BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
            seen.defaultButton = seen.buttons.back();
        }
    }
    return seen;
}

} // namespace

MessageBoxWatcher::MessageBoxWatcher() : thread_([this] { Watch(); }) {}

MessageBoxWatcher::~MessageBoxWatcher()
{
    stopping_ = true;
    thread_.join();
}

void MessageBoxWatcher::AnswerNext(int button)
{
    const std::lock_guard lock(mutex_);
    answers_.push_back({.button = button});
}

void MessageBoxWatcher::LeaveNextOpenWhile(std::function<void()> action)
{
    const std::lock_guard lock(mutex_);
    answers_.push_back({.action = std::move(action)});
}

std::vector<SeenMessageBox> MessageBoxWatcher::Seen() const
{
    const std::lock_guard lock(mutex_);
    return seen_;
}

std::vector<std::wstring> MessageBoxWatcher::Texts() const
{
    std::vector<std::wstring> texts;
    for (const SeenMessageBox& box : Seen()) {
        texts.push_back(box.text);
    }
    return texts;
}

void MessageBoxWatcher::Watch()
{
    while (!stopping_) {
        std::erase_if(leftOpen_, [](HWND box) { return IsWindow(box) == FALSE; });
        if (HWND box = FindBox(); box != nullptr) {
            ReadAndAnswer(box);
        }
        std::this_thread::sleep_for(lookEvery);
    }
    std::ranges::for_each(actions_, &std::thread::join);
}

HWND MessageBoxWatcher::FindBox() const
{
    std::vector<HWND> boxes;
    EnumThreadWindows(
        watchedThread_,
        [](HWND window, LPARAM found) -> BOOL {
            if (IsWindowVisible(window) != 0 && ClassOf(window) == L"#32770" &&
                GetDlgItem(window, idOfText) != nullptr) {
                reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&boxes));
    const auto isUnanswered = [this](HWND box) { return std::ranges::find(leftOpen_, box) == leftOpen_.end(); };
    const auto box = std::ranges::find_if(boxes, isUnanswered);
    return box != boxes.end() ? *box : nullptr;
}

void MessageBoxWatcher::ReadAndAnswer(HWND box)
{
    const SeenMessageBox seen = Read(box);
    Answer answer{.button = seen.defaultButton};
    {
        const std::lock_guard lock(mutex_);
        seen_.push_back(seen);
        if (!answers_.empty()) {
            answer = answers_.front();
            answers_.pop_front();
        }
    }
    if (answer.action) {
        leftOpen_.push_back(box);
        actions_.emplace_back(answer.action);
        return;
    }
    const int button = answer.button;
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    while (!stopping_ && IsWindow(box) != 0) {
        std::this_thread::sleep_for(lookEvery);
    }
}
