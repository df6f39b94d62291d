#include "tests/support/FormUser.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <exception>
#include <string_view>
#include <vector>

#include <commctrl.h>

namespace {

constexpr auto timeout = std::chrono::seconds(10);
constexpr UINT lookEvery = USER_TIMER_MINIMUM;

/// There is one user.
ModalUser* theUser = nullptr;

bool TakesInput(HWND window)
{
    return IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

std::wstring MenuText(HMENU menu, int position)
{
    std::array<wchar_t, 128> text{};
    GetMenuStringW(menu, static_cast<UINT>(position), text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
    return text.data();
}

int PositionOf(HMENU menu, std::wstring_view text)
{
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        if (MenuText(menu, position) == text) {
            return position;
        }
    }
    return -1;
}

struct MenuPlace {
    HMENU menu = nullptr;
    int position = -1;
};

MenuPlace PlaceOf(const Form& form, std::initializer_list<const wchar_t*> path)
{
    MenuPlace place;
    HMENU menu = GetMenu(form.Handle());
    for (const wchar_t* text : path) {
        place = {menu, PositionOf(menu, text)};
        if (place.position < 0) {
            ADD_FAILURE() << "the menu has no " << testing::PrintToString(std::wstring(text));
            return {};
        }
        menu = GetSubMenu(menu, place.position);
    }
    return place;
}

void Key(std::vector<INPUT>& inputs, WORD key, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (down ? 0U : static_cast<DWORD>(KEYEVENTF_KEYUP)) |
                       (key == VK_RSHIFT ? static_cast<DWORD>(KEYEVENTF_EXTENDEDKEY) : 0U);
    inputs.push_back(input);
}

void Send(std::vector<INPUT>& inputs)
{
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

/// WM_TIMER has the lowest priority: when it arrives, all earlier messages have been handled.
void AwaitQuiet()
{
    static bool quiet = false;
    quiet = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, lookEvery, [](HWND, UINT, UINT_PTR, DWORD) { quiet = true; });
    Await([] { return quiet; }, "a moment without messages");
    KillTimer(nullptr, timer);
}

INPUT MouseButton(DWORD act)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = act;
    return input;
}

void Click(HWND window, POINT point, int times)
{
    ClientToScreen(window, &point);
    // Wine: SendInput clicks the window that is on top in Wine's own order, which may differ from the order on the X11
    // display. On Windows there is one order.
    SetWindowPos(GetAncestor(window, GA_ROOT), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetCursorPos(point.x, point.y);
    // Wine: the X11 display reports the move of the pointer late. The report must not arrive between press and release.
    AwaitQuiet();
    std::vector<INPUT> inputs;
    for (int i = 0; i < times; ++i) {
        for (const DWORD button : {DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_LEFTUP}}) {
            inputs.push_back(MouseButton(button));
        }
    }
    if (times > 0) {
        Send(inputs);
        AwaitQuiet();
    }
}

/// Clicks the upper or the lower half.
void ClickArrow(const UpDown& arrows, bool up)
{
    RECT area{};
    GetClientRect(arrows.Handle(), &area);
    const LONG y = up ? area.bottom / 4 : area.bottom * 3 / 4;
    const LPARAM point = MAKELPARAM(static_cast<WORD>(area.right / 2), static_cast<WORD>(y));
    SendMessageW(arrows.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(arrows.Handle(), WM_LBUTTONUP, 0, point);
}

} // namespace

bool Await(const std::function<bool()>& condition, const char* what)
{
    const auto end = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        DoEvents();
        if (condition()) {
            return true;
        }
        if (std::chrono::steady_clock::now() > end) {
            ADD_FAILURE() << "timeout: " << what;
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, lookEvery, QS_ALLINPUT);
    }
}

void BringToFront(const Form& form)
{
    HWND window = form.Handle();
    SetForegroundWindow(window);
    Await([window] { return GetForegroundWindow() == window && GetFocus() != nullptr; }, "the form in front");
}

void Press(const CommandButton& button)
{
    HWND window = button.Handle();
    if (!TakesInput(window)) {
        ADD_FAILURE() << button.Name() << " cannot be pressed";
        return;
    }
    SendMessageW(window, BM_CLICK, 0, 0);
}

void Pick(const ComboBox& list, const std::wstring& entry)
{
    HWND window = list.Handle();
    const auto found =
        SendMessageW(window, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(entry.c_str()));
    if (found == CB_ERR || !TakesInput(window)) {
        ADD_FAILURE() << list.Name() << " has no such entry";
        return;
    }
    SetFocus(window);
    SendMessageW(window, WM_KEYDOWN, VK_HOME, 0);
    for (LRESULT i = 0; i < found; ++i) {
        SendMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
    }
}

void Type(const TextBox& box, const std::wstring& text)
{
    HWND window = box.Handle();
    SetFocus(window);
    SendMessageW(window, EM_SETSEL, 0, -1);
    if (text.empty()) {
        SendMessageW(window, WM_KEYDOWN, VK_DELETE, 0);
    }
    for (const wchar_t character : text) {
        SendMessageW(window, WM_CHAR, character, 1);
    }
}

void StepUp(const UpDown& arrows)
{
    ClickArrow(arrows, true);
}

void StepDown(const UpDown& arrows)
{
    ClickArrow(arrows, false);
}

bool IsEnabled(const Form& form, std::initializer_list<const wchar_t*> path)
{
    const MenuPlace place = PlaceOf(form, path);
    const UINT state = GetMenuState(place.menu, static_cast<UINT>(place.position), MF_BYPOSITION);
    return place.menu != nullptr && (state & (MF_GRAYED | MF_DISABLED)) == 0;
}

void ChooseCommand(const Form& form, std::initializer_list<const wchar_t*> path)
{
    const MenuPlace place = PlaceOf(form, path);
    if (!IsEnabled(form, path)) {
        ADD_FAILURE() << "the command is disabled: "
                      << testing::PrintToString(std::wstring(std::data(path)[path.size() - 1]));
        return;
    }
    SendMessageW(form.Handle(), WM_COMMAND, MAKEWPARAM(GetMenuItemID(place.menu, place.position), 0), 0);
}

void SendKeysAhead(std::initializer_list<WORD> keys)
{
    std::vector<INPUT> inputs;
    for (const WORD key : keys) {
        Key(inputs, key, true);
        Key(inputs, key, false);
    }
    Send(inputs);
}

void PressKey(WORD key)
{
    SendKeysAhead({key});
    AwaitQuiet();
}

void PressKeyWith(WORD modifier, WORD key)
{
    std::vector<INPUT> inputs;
    Key(inputs, modifier, true);
    Key(inputs, key, true);
    Key(inputs, key, false);
    Key(inputs, modifier, false);
    Send(inputs);
    AwaitQuiet();
}

void HoldKey(WORD key)
{
    std::vector<INPUT> inputs;
    Key(inputs, key, true);
    Send(inputs);
    AwaitQuiet();
}

void ReleaseKey(WORD key)
{
    std::vector<INPUT> inputs;
    Key(inputs, key, false);
    Send(inputs);
    AwaitQuiet();
}

void MoveTo(HWND window, POINT point)
{
    Click(window, point, 0);
}

void ClickOn(const Control& control)
{
    RECT area{};
    GetClientRect(control.Handle(), &area);
    Click(control.Handle(), {area.right / 2, area.bottom / 2}, 1);
}

void ClickAt(HWND window, POINT point)
{
    Click(window, point, 1);
}

void DoubleClickAt(HWND window, POINT point)
{
    Click(window, point, 2);
}

void HoldMouseAt(HWND window, POINT point, const std::function<bool()>& condition)
{
    MoveTo(window, point);
    std::vector<INPUT> press{MouseButton(MOUSEEVENTF_LEFTDOWN)};
    Send(press);
    Await(condition, "what the held mouse button brings about");
    std::vector<INPUT> release{MouseButton(MOUSEEVENTF_LEFTUP)};
    Send(release);
    AwaitQuiet();
}

POINT MiddleOfLine(const ListBox& list, int line)
{
    HWND window = list.Handle();
    RECT area{};
    SendMessageW(window, LB_SETTOPINDEX, static_cast<WPARAM>(line), 0);
    SendMessageW(window, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&area));
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

ModalUser::ModalUser() : timer_(SetTimer(nullptr, 0, lookEvery, Tick))
{
    theUser = this;
}

ModalUser::~ModalUser()
{
    KillTimer(nullptr, timer_);
    theUser = nullptr;
    if (!steps_.empty()) {
        ADD_FAILURE() << steps_.size() << " steps were planned for forms that never opened";
    }
}

void CALLBACK ModalUser::Tick(HWND, UINT, UINT_PTR, DWORD)
{
    if (theUser != nullptr && !theUser->busy_) {
        theUser->busy_ = true;
        try {
            theUser->Look();
        } catch (const std::exception& error) {
            ADD_FAILURE() << "a step ended with " << error.what();
        }
        theUser->busy_ = false;
    }
}

void ModalUser::Look()
{
    const auto forms = Form::OpenForms();
    if (forms.size() < 2 || !TakesInput(forms.back()->Handle())) {
        return;
    }
    const auto& top = forms.back();
    if (!steps_.empty()) {
        const auto step = steps_.front();
        steps_.pop_front();
        if (step(*top)) {
            return;
        }
    }
    ADD_FAILURE() << "nothing is planned for the form that is open: " << testing::PrintToString(top->Caption());
    top->Unload();
}
