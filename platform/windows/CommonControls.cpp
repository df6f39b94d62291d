// The common controls: up-down control, tree view, tab control, progress bar and status bar.

#include "platform/windows/Controls.h"

#include "platform/system/RuntimeError.h"
#include "platform/system/SystemLibrary.h"
#include "platform/windows/FormWindow.h"

#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

namespace {

/// Sets every increment of the acceleration table to 1 and keeps its times.
///
/// Wine: an up-down control has no acceleration table and steps by 1. Windows has a table with larger increments.
/// UDM_SETACCEL on Wine makes a held arrow repeat every 10 ms, so a control without a table gets none.
void StepByOne(HWND arrows)
{
    std::array<UDACCEL, 8> pace{};
    const auto entries = SendMessageW(arrows, UDM_GETACCEL, pace.size(), reinterpret_cast<LPARAM>(pace.data()));
    const auto count = std::min(static_cast<std::size_t>(entries), pace.size());
    for (UDACCEL& step : pace) {
        step.nInc = 1;
    }
    if (count > 0) {
        SendMessageW(arrows, UDM_SETACCEL, count, reinterpret_cast<LPARAM>(pace.data()));
    }
}

} // namespace

UpDown::UpDown(Form& form, const char* name, int minimum, int maximum, int value)
    : Control(form, name), minimum_(minimum), maximum_(maximum), initial_(value)
{
}

Control::WindowKind UpDown::Kind() const
{
    return {UPDOWN_CLASSW, UDS_ARROWKEYS};
}

void UpDown::Created()
{
    Send(UDM_SETRANGE32, static_cast<WPARAM>(minimum_), maximum_);
    StepByOne(Handle());
    Send(UDM_SETPOS32, 0, initial_);
    reported_ = initial_;
}

int UpDown::Value() const
{
    return static_cast<int>(Send(UDM_GETPOS32));
}

void UpDown::SetValue(int value)
{
    reported_ = std::clamp(value, minimum_, maximum_);
    Send(UDM_SETPOS32, 0, reported_);
    if (value >= minimum_ && value <= maximum_) {
        Change();
    }
}

void UpDown::SetBuddy(const TextBox& box)
{
    Send(UDM_SETBUDDY, reinterpret_cast<WPARAM>(box.Handle()));
}

void UpDown::Message(unsigned message, std::uintptr_t, std::intptr_t)
{
    // Wine: a key presses an arrow until a timer ends, and if the mouse was last over the control, the end counts as a
    // second click. On Windows a key is one step. WM_MOUSEMOVE with a point outside prevents the second step.
    if (message == WM_TIMER && GetCapture() != Handle()) {
        Send(WM_MOUSEMOVE, 0, MAKELPARAM(-1, -1));
    }
}

void UpDown::Scrolled()
{
    // WM_VSCROLL also comes when the arrow is released, and at the end of the range.
    if (Value() != reported_) {
        reported_ = Value();
        Change();
    }
}

Control::WindowKind TreeView::Kind() const
{
    return {WC_TREEVIEWW,
            WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
            WS_EX_CLIENTEDGE};
}

void TreeView::Clear()
{
    nodes_.clear();
    numbers_.clear();
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
}

int TreeView::AddNode(const std::wstring& parentKey, const std::wstring& key, const std::wstring& text)
{
    const auto parent = numbers_.find(parentKey);
    if (numbers_.contains(key) || (!parentKey.empty() && parent == numbers_.end())) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    Node node{key, text, parentKey.empty() ? 0 : parent->second, nullptr};
    TVINSERTSTRUCTW insert{};
    insert.hParent = node.parent == 0 ? TVI_ROOT : static_cast<HTREEITEM>(At(node.parent).item);
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = node.text.data();
    node.item = reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    if (node.item == nullptr) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    nodes_.push_back(std::move(node));
    numbers_.emplace(key, NodeCount());
    return NodeCount();
}

const TreeView::Node& TreeView::At(int node) const
{
    if (node < 1 || node > NodeCount()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    return nodes_[static_cast<std::size_t>(node) - 1];
}

int TreeView::NumberOf(const void* item) const
{
    const auto found =
        std::ranges::find(nodes_, item, [](const Node& node) { return static_cast<const void*>(node.item); });
    return item == nullptr || found == nodes_.end() ? 0 : static_cast<int>(found - nodes_.begin()) + 1;
}

void TreeView::Select(int node)
{
    const auto item = reinterpret_cast<LPARAM>(At(node).item);
    Send(TVM_SELECTITEM, TVGN_CARET, item);
    Send(TVM_ENSUREVISIBLE, 0, item);
}

void TreeView::PaintedAgain()
{
    // Without WM_SETREDRAW, a tree view does not scroll to its selection.
    Send(TVM_ENSUREVISIBLE, 0, Send(TVM_GETNEXTITEM, TVGN_CARET, 0));
}

int TreeView::SelectedNode() const
{
    return NumberOf(reinterpret_cast<const void*>(Send(TVM_GETNEXTITEM, TVGN_CARET, 0)));
}

int TreeView::NodeAt(std::intptr_t point) const
{
    TVHITTESTINFO hit{};
    hit.pt = {GET_X_LPARAM(point), GET_Y_LPARAM(point)};
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.flags & TVHT_ONITEM) != 0 ? NumberOf(hit.hItem) : 0;
}

void TreeView::Message(unsigned message, std::uintptr_t, std::intptr_t lParam)
{
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
        pressedAt_ = lParam;
    }
}

void TreeView::Notify(const void* header)
{
    const auto* notification = static_cast<const NMHDR*>(header);
    int node = 0;
    if (notification->code == static_cast<UINT>(NM_CLICK)) {
        // NM_CLICK comes also for the selected node. The node is at the point of WM_LBUTTONDOWN: if another program
        // sends the click, the mouse is elsewhere.
        node = NodeAt(pressedAt_);
    } else if (notification->code == static_cast<UINT>(TVN_SELCHANGEDW)) {
        const auto* change = static_cast<const NMTREEVIEWW*>(header);
        node = change->action == TVC_BYKEYBOARD ? NumberOf(change->itemNew.hItem) : 0;
    }
    if (node != 0) {
        NodeClick(node);
    }
}

Control::WindowKind TabStrip::Kind() const
{
    return {WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS};
}

void TabStrip::Created()
{
    int index = 0;
    for (std::wstring& caption : design_) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        Send(TCM_INSERTITEMW, static_cast<WPARAM>(index++), reinterpret_cast<LPARAM>(&item));
    }
}

std::wstring TabStrip::TabCaption(int tab) const
{
    std::wstring text(256, L'\0');
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    if (Send(TCM_GETITEMW, static_cast<WPARAM>(tab - 1), reinterpret_cast<LPARAM>(&item)) == FALSE) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    return item.pszText;
}

void TabStrip::SetTabCaption(int tab, const std::wstring& caption)
{
    std::wstring text = caption;
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    if (Send(TCM_SETITEMW, static_cast<WPARAM>(tab - 1), reinterpret_cast<LPARAM>(&item)) == FALSE) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
}

int TabStrip::SelectedTab() const
{
    return static_cast<int>(Send(TCM_GETCURSEL)) + 1;
}

void TabStrip::Notify(const void* header)
{
    if (static_cast<const NMHDR*>(header)->code == static_cast<UINT>(TCN_SELCHANGE)) {
        Click();
    }
}

bool TabStrip::TurnPage(bool forward)
{
    const int count = static_cast<int>(design_.size());
    const int chosen = (SelectedTab() - 1 + (forward ? 1 : count - 1)) % count;
    Send(TCM_SETCURSEL, static_cast<WPARAM>(chosen));
    Click();
    if (IsWindowVisible(GetFocus()) == FALSE) {
        FocusFirstInTabOrder(Owner().Handle());
    }
    return true;
}

namespace {

/// Passes the notifications of the controls on a page to the form.
INT_PTR CALLBACK PageProcedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_HSCROLL:
    case WM_VSCROLL:
        SendMessageW(GetParent(page), message, wParam, lParam);
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

Control::WindowKind TabPage::Kind() const
{
    return {WC_DIALOG, WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT};
}

void TabPage::Created()
{
    SetWindowLongPtrW(Handle(), DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(PageProcedure));
    // Without this function the page has the plain background of a dialog.
    if (auto* enable = SystemFunction<decltype(EnableThemeDialogTexture)>(L"uxtheme.dll", "EnableThemeDialogTexture")) {
        enable(Handle(), ETDT_ENABLETAB);
    }
}

Control::WindowKind ProgressBar::Kind() const
{
    return {PROGRESS_CLASSW, PBS_SMOOTH};
}

void ProgressBar::SetMaximum(int maximum)
{
    Send(PBM_SETRANGE32, 0, maximum);
}

int ProgressBar::Maximum() const
{
    return static_cast<int>(Send(PBM_GETRANGE, FALSE));
}

void ProgressBar::SetValue(int done)
{
    Send(PBM_SETPOS, static_cast<WPARAM>(done));
}

int ProgressBar::Value() const
{
    return static_cast<int>(Send(PBM_GETPOS));
}

Control::WindowKind StatusBar::Kind() const
{
    return {STATUSCLASSNAMEW, SBARS_SIZEGRIP};
}

void StatusBar::FollowForm()
{
    Send(WM_SIZE);
}
