// List boxes and drop-down lists.
//
// Wine: three differences.
//
// LB_SETHORIZONTALEXTENT: Wine shows the horizontal scroll bar for a moment at each new extent, also when every line
// fits. Windows shows it only if a line does not fit. Without the workaround in ListBox::FitScrollRange, both scroll
// bars flicker whenever the list is filled.
//
// LBN_DBLCLK: Wine does not send it for a double click below the last line. Windows does. Without the workaround in
// ListBox::Message, such a double click does not open the selected day.
//
// CB_GETCURSEL: in an open drop-down list, Wine moves the selection with the mouse and sends no CBN_SELCHANGE. Windows
// sends it for every change that it keeps. Without the workaround in ComboBox::Message, a list that is left by Esc or
// by the focus shows an entry that the form does not know, and so does a list that is closed by Enter.

#include "platform/windows/Controls.h"

#include "platform/system/RuntimeError.h"
#include "platform/windows/DeviceContext.h"
#include "platform/windows/Form.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace {

/// Posted by a combo box to itself at CBN_CLOSEUP.
constexpr UINT listIsClosed = WM_APP;

/// The text of an entry, by the messages of a list box or a combo box.
template <class SendTo>
std::wstring EntryText(SendTo send, UINT lengthMessage, UINT textMessage, int index)
{
    const std::intptr_t length = index < 0 ? LB_ERR : send(lengthMessage, static_cast<WPARAM>(index), LPARAM{0});
    if (length < 0) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    send(textMessage, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    return text;
}

} // namespace

Control::WindowKind ListBox::Kind() const
{
    // LBS_NOINTEGRALHEIGHT: the height need not be a multiple of the line height.
    return {L"LISTBOX", WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS,
            WS_EX_CLIENTEDGE};
}

void ListBox::AddItem(const std::wstring& line)
{
    if (Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str())) < 0) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    widest_ = std::max(widest_, WidthOf(line));
    FitScrollRange();
}

int ListBox::WidthOf(const std::wstring& line) const
{
    constexpr int margin = 4;
    return static_cast<int>(TextSize(Handle(), line).cx) + margin;
}

void ListBox::FitScrollRange()
{
    if (!IsPainted()) {
        return;
    }
    // Wine: see the top of the file.
    RECT inside{};
    GetClientRect(Handle(), &inside);
    const std::intptr_t range = widest_ > inside.right ? widest_ : 0;
    if (range != Send(LB_GETHORIZONTALEXTENT)) {
        Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(range));
    }
}

void ListBox::PaintedAgain()
{
    FitScrollRange();
}

void ListBox::Clear()
{
    Send(LB_RESETCONTENT);
    widest_ = 0;
    FitScrollRange();
}

int ListBox::ListCount() const
{
    return static_cast<int>(Send(LB_GETCOUNT));
}

int ListBox::ListIndex() const
{
    return static_cast<int>(Send(LB_GETCURSEL));
}

void ListBox::SetListIndex(int index)
{
    if (index < -1 || index >= ListCount()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    Send(LB_SETCURSEL, static_cast<WPARAM>(index));
    Click();
}

std::wstring ListBox::List(int index) const
{
    return EntryText([this](UINT message, WPARAM wParam, LPARAM lParam) { return Send(message, wParam, lParam); },
                     LB_GETTEXTLEN, LB_GETTEXT, index);
}

void ListBox::Command(unsigned notification)
{
    if (notification == LBN_SELCHANGE) {
        Click();
    } else if (notification == LBN_DBLCLK) {
        doubleClickedBelow_ = false;
        DblClick();
    }
}

void ListBox::Message(unsigned message, std::uintptr_t, std::intptr_t lParam)
{
    if (message == WM_SIZE) {
        FitScrollRange();
    }
    // Wine: see the top of the file. If LBN_DBLCLK has not come when the button is up, the double click is raised here.
    constexpr UINT wasItReported = WM_APP;
    if (message == WM_LBUTTONDBLCLK) {
        doubleClickedBelow_ = HIWORD(Send(LB_ITEMFROMPOINT, 0, lParam)) != 0;
    } else if (message == WM_LBUTTONUP && doubleClickedBelow_) {
        PostMessageW(Handle(), wasItReported, 0, 0);
    } else if (message == wasItReported && std::exchange(doubleClickedBelow_, false)) {
        DblClick();
    }
}

void ListBox::Scaled()
{
    Send(LB_SETITEMHEIGHT, 0, TextSize(Handle(), L"0").cy);
    widest_ = 0;
    for (int index = 0; index < ListCount(); ++index) {
        widest_ = std::max(widest_, WidthOf(List(index)));
    }
    FitScrollRange();
}

int ListBox::LeftOfCharacter(int position) const
{
    POINT left{static_cast<LONG>(position) * TextSize(Handle(), L"0").cx, 0};
    MapWindowPoints(Handle(), Owner().Handle(), &left, 1);
    return ToTwips(left.x, Owner().Dpi());
}

Control::WindowKind ComboBox::Kind() const
{
    return {L"COMBOBOX", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_HASSTRINGS};
}

void ComboBox::AddItem(const std::wstring& entry)
{
    if (Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str())) < 0) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
}

void ComboBox::Clear()
{
    Send(CB_RESETCONTENT);
    reported_ = -1;
}

int ComboBox::ListCount() const
{
    return static_cast<int>(Send(CB_GETCOUNT));
}

int ComboBox::ListIndex() const
{
    return static_cast<int>(Send(CB_GETCURSEL));
}

void ComboBox::SetListIndex(int index)
{
    if (index < -1 || index >= ListCount()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    Send(CB_SETCURSEL, static_cast<WPARAM>(index));
    reported_ = index;
    if (index >= 0) {
        Click();
    }
}

std::wstring ComboBox::List(int index) const
{
    return EntryText([this](UINT message, WPARAM wParam, LPARAM lParam) { return Send(message, wParam, lParam); },
                     CB_GETLBTEXTLEN, CB_GETLBTEXT, index);
}

void ComboBox::SetList(int index, const std::wstring& entry)
{
    const int picked = ListIndex();
    if (Send(CB_DELETESTRING, static_cast<WPARAM>(index)) < 0) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    if (Send(CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(entry.c_str())) < 0) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    Send(CB_SETCURSEL, static_cast<WPARAM>(picked));
}

std::wstring ComboBox::Text() const
{
    return ListIndex() < 0 ? std::wstring() : List(ListIndex());
}

void ComboBox::Report()
{
    reported_ = ListIndex();
    Click();
}

void ComboBox::Command(unsigned notification)
{
    if (notification == CBN_SELCHANGE) {
        Report();
    } else if (notification == CBN_CLOSEUP) {
        PostMessageW(Handle(), listIsClosed, 0, 0); // CBN_SELCHANGE of a click comes after CBN_CLOSEUP
    }
}

void ComboBox::Message(unsigned message, std::uintptr_t wParam, std::intptr_t)
{
    // Wine: see the top of the file.
    const bool left = message == WM_KILLFOCUS || (message == WM_KEYDOWN && wParam == VK_ESCAPE);
    if (left && Send(CB_GETDROPPEDSTATE) != FALSE && ListIndex() != reported_) {
        Send(CB_SETCURSEL, static_cast<WPARAM>(reported_));
    } else if (message == listIsClosed && ListIndex() != reported_) {
        Report();
    }
}

void ComboBox::Scaled()
{
    // CB_SETITEMHEIGHT sets the height of the closed box, SetWindowPos that of the list.
    constexpr int borders = 6;
    constexpr int entriesShown = 12;
    Send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), Pixels(Height()) - borders);
    const auto entryHeight = static_cast<int>(Send(CB_GETITEMHEIGHT, 0));
    const auto width = Pixels(Left() + Width()) - Pixels(Left());
    SetWindowPos(Handle(), nullptr, 0, 0, width, Pixels(Height()) + entriesShown * entryHeight + 2,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
