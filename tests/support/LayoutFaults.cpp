#include "tests/support/LayoutFaults.h"

#include "platform/Controls.h"

#include <windows.h>

namespace {

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

/// Where a control is, in pixels of its form's client area.
RECT PlaceOn(const Form& form, const Control& control)
{
    RECT place{};
    GetWindowRect(control.Handle(), &place);
    MapWindowPoints(nullptr, form.Handle(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

/// The size in pixels of a control's text, broken into lines of at most the given width.
SIZE TextSize(HWND window, LONG width)
{
    RECT area{0, 0, width, 0};
    HDC surface = GetDC(window);
    HGDIOBJ former = SelectObject(surface, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    const std::wstring text = TextOf(window);
    DrawTextW(surface, text.empty() ? L"X" : text.c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(surface, former);
    ReleaseDC(window, surface);
    return {area.right, area.bottom};
}

/// What stands beside the text within a control, in twips.
int BesideText(const Control& control)
{
    constexpr int boxAndGap = 300;
    constexpr int edges = 180;
    if (dynamic_cast<const OptionButton*>(&control) != nullptr || dynamic_cast<const CheckBox*>(&control) != nullptr) {
        return boxAndGap;
    }
    return dynamic_cast<const Label*>(&control) != nullptr ? 0 : edges;
}

bool HasText(const Control& control)
{
    return dynamic_cast<const Label*>(&control) != nullptr || dynamic_cast<const CommandButton*>(&control) != nullptr ||
           dynamic_cast<const OptionButton*>(&control) != nullptr ||
           dynamic_cast<const CheckBox*>(&control) != nullptr || dynamic_cast<const Frame*>(&control) != nullptr;
}

bool TextFits(const Form& form, const Control& control)
{
    const int room = ToPixels(control.Width() - BesideText(control), form.Dpi());
    const int height = ToPixels(control.Height(), form.Dpi());
    const SIZE text = TextSize(control.Handle(), room * 10 / 11);
    return text.cx <= room * 10 / 11 && text.cy <= height;
}

bool Surrounds(const Control& control)
{
    return dynamic_cast<const Frame*>(&control) != nullptr || dynamic_cast<const TabStrip*>(&control) != nullptr ||
           dynamic_cast<const TabPage*>(&control) != nullptr;
}

bool Contains(const RECT& outer, const RECT& inner)
{
    return outer.left <= inner.left && outer.top <= inner.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool Collide(const Form& form, const Control& a, const Control& b)
{
    const RECT placeA = PlaceOn(form, a);
    const RECT placeB = PlaceOn(form, b);
    RECT common{};
    if (IntersectRect(&common, &placeA, &placeB) == FALSE) {
        return false;
    }
    return !(Surrounds(a) && Contains(placeA, placeB)) && !(Surrounds(b) && Contains(placeB, placeA));
}

} // namespace

std::vector<std::string> LayoutFaults(const Form& form)
{
    std::vector<std::string> faults;
    RECT client{};
    GetClientRect(form.Handle(), &client);
    std::vector<const Control*> seen;
    for (const Control* control : form.Controls()) {
        if (IsWindowVisible(control->Handle()) == FALSE) {
            continue;
        }
        const std::string name = control->Name();
        if (!Contains(client, PlaceOn(form, *control))) {
            faults.push_back(name + " reaches out of the form");
        }
        if (HasText(*control) && !TextFits(form, *control)) {
            faults.push_back(name + " is too small for its text");
        }
        for (const Control* other : seen) {
            if (Collide(form, *control, *other)) {
                faults.push_back(name + " lies over " + other->Name());
            }
        }
        seen.push_back(control);
    }
    return faults;
}
