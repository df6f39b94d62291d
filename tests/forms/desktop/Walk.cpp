#include "tests/forms/desktop/Walk.h"

#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "forms/print/frmProgress.h"

#include <algorithm>
#include <sstream>

#include <commctrl.h>

namespace {

/// The device context of a control with the control's font.
class Surface {
public:
    explicit Surface(HWND window)
        : window_(window), surface_(GetDC(window)),
          former_(SelectObject(surface_, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0))))
    {
    }
    ~Surface()
    {
        SelectObject(surface_, former_);
        ReleaseDC(window_, surface_);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    /// The height of a line: the larger of this font's and of the Windows font with this name.
    LONG LineHeight() const
    {
        LOGFONTW font{};
        GetObjectW(GetCurrentObject(surface_, OBJ_FONT), sizeof font, &font);
        return std::max<LONG>(Metrics().tmHeight, MulDiv(std::abs(font.lfHeight), 4, 3));
    }
    TEXTMETRICW Metrics() const
    {
        TEXTMETRICW metrics{};
        GetTextMetricsW(surface_, &metrics);
        return metrics;
    }
    /// Width and height of a text broken into lines of this width.
    SIZE SizeOf(const std::wstring& text, LONG width = 0) const
    {
        RECT area{0, 0, width, 0};
        const UINT breaking = width > 0 ? static_cast<UINT>(DT_WORDBREAK) : 0U;
        DrawTextW(surface_, text.c_str(), -1, &area, DT_CALCRECT | DT_NOPREFIX | breaking);
        return {area.right, area.bottom / Metrics().tmHeight * LineHeight()};
    }

private:
    HWND window_;
    HDC surface_;
    HGDIOBJ former_;
};

SIZE ClientSize(HWND window)
{
    RECT area{};
    GetClientRect(window, &area);
    return {area.right, area.bottom};
}

/// The rectangle of a control in the client area of its form.
RECT PlaceOf(const Form& form, HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, form.Handle(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

bool Overlap(const RECT& one, const RECT& other)
{
    RECT common{};
    return IntersectRect(&common, &one, &other) != FALSE;
}

bool Encloses(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

class Report {
public:
    explicit Report(const Form& form) : form_(form) {}

    void Check()
    {
        for (const Control* control : form_.Controls()) {
            CheckText(*control);
            CheckInside(*control);
        }
        CheckOverlap();
    }
    std::vector<std::string> Take() { return std::move(findings_); }

private:
    void Room(const Control& control, SIZE needed, SIZE room, const std::wstring& text)
    {
        if (needed.cx > room.cx || needed.cy > room.cy) {
            std::ostringstream line;
            line << control.Name() << ' ' << testing::PrintToString(text) << " needs " << needed.cx << " x "
                 << needed.cy << " and has " << room.cx << " x " << room.cy;
            findings_.push_back(line.str());
        }
    }

    static bool IsChoice(const Control& control)
    {
        return dynamic_cast<const OptionButton*>(&control) != nullptr ||
               dynamic_cast<const CheckBox*>(&control) != nullptr;
    }

    void CheckText(const Control& control)
    {
        HWND window = control.Handle();
        const Surface surface(window);
        const SIZE client = ClientSize(window);
        const std::wstring text = Text(window);
        if (dynamic_cast<const Label*>(&control) != nullptr) {
            Room(control, surface.SizeOf(text, client.cx), client, text);
        } else if (dynamic_cast<const CommandButton*>(&control) != nullptr) {
            Room(control, surface.SizeOf(text), {client.cx - 2 * Dots(6), client.cy - 2 * Dots(2)}, text);
        } else if (!text.empty() && IsChoice(control)) {
            Room(control, surface.SizeOf(text), {client.cx - Dots(13 + 5), client.cy}, text);
        } else if (dynamic_cast<const Frame*>(&control) != nullptr) {
            Room(control, surface.SizeOf(text), {client.cx - 2 * Dots(9), client.cy}, text);
        } else if (dynamic_cast<const TextBox*>(&control) != nullptr) {
            Room(control, {0, surface.LineHeight()}, client, text);
        } else if (const auto* list = dynamic_cast<const ComboBox*>(&control)) {
            CheckCombo(*list, surface);
        } else if (const auto* lines = dynamic_cast<const ListBox*>(&control)) {
            CheckRow(*lines, surface, LB_GETITEMHEIGHT);
        } else if (dynamic_cast<const TreeView*>(&control) != nullptr) {
            CheckRow(control, surface, TVM_GETITEMHEIGHT);
        } else if (const auto* tabs = dynamic_cast<const TabStrip*>(&control)) {
            CheckTabs(*tabs, surface, client);
        }
    }

    /// The row height of lists and trees follows their font.
    void CheckRow(const Control& control, const Surface& surface, UINT heightMessage)
    {
        const auto height = static_cast<LONG>(SendMessageW(control.Handle(), heightMessage, 0, 0));
        const LONG needed = surface.Metrics().tmHeight;
        Room(control, {0, needed}, {0, height}, L"a row");
        if (height > 2 * needed) {
            findings_.push_back(std::string(control.Name()) + " has rows for a larger font");
        }
    }

    void CheckCombo(const ComboBox& list, const Surface& surface)
    {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(list.Handle(), &info);
        const SIZE room{info.rcItem.right - info.rcItem.left, info.rcItem.bottom - info.rcItem.top};
        for (const std::wstring& entry : Entries(list)) {
            SIZE needed = surface.SizeOf(entry);
            needed.cx += 2;
            Room(list, needed, room, entry);
        }
        RECT box{};
        GetWindowRect(list.Handle(), &box);
        if (std::abs((box.bottom - box.top) - Dots(list.Height() * 96 / 1440)) > 1) {
            findings_.push_back(std::string(list.Name()) + " is not as high as the boxes beside it");
        }
    }

    void CheckTabs(const TabStrip& tabs, const Surface& surface, SIZE client)
    {
        const int count = static_cast<int>(SendMessageW(tabs.Handle(), TCM_GETITEMCOUNT, 0, 0));
        LONG bottomOfTabs = 0;
        for (int tab = 0; tab < count; ++tab) {
            RECT place{};
            SendMessageW(tabs.Handle(), TCM_GETITEMRECT, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&place));
            const std::wstring caption = tabs.TabCaption(tab + 1);
            Room(tabs, surface.SizeOf(caption), {place.right - place.left, place.bottom - place.top}, caption);
            bottomOfTabs = std::max(bottomOfTabs, place.bottom);
            if (place.right > client.cx) {
                findings_.push_back(std::string(tabs.Name()) + " has no room for all its tabs");
            }
        }
        for (const Control* control : form_.Controls()) {
            if (dynamic_cast<const TabPage*>(control) != nullptr) {
                CheckPage(tabs, *control, bottomOfTabs);
            }
        }
    }

    /// A tab control draws a border below its tabs. The pages must not cover it.
    void CheckPage(const TabStrip& tabs, const Control& page, LONG bottomOfTabs)
    {
        RECT inner = PlaceOf(form_, tabs.Handle());
        inner.top += bottomOfTabs;
        InflateRect(&inner, -1, -1);
        if (!Encloses(inner, PlaceOf(form_, page.Handle()))) {
            findings_.push_back(std::string(page.Name()) + " covers the border of its tab control");
        }
    }

    void CheckInside(const Control& control)
    {
        const SIZE client = ClientSize(form_.Handle());
        const RECT inside{0, 0, client.cx, client.cy};
        RECT place = PlaceOf(form_, control.Handle());
        if (dynamic_cast<const Line*>(&control) != nullptr) {
            place.right = std::min(place.right, inside.right); // lines may extend beyond the window
        }
        if (!Encloses(inside, place)) {
            std::ostringstream line;
            line << control.Name() << " extends beyond its form: " << place.left << ',' << place.top << " to "
                 << place.right << ',' << place.bottom << " in " << client.cx << " x " << client.cy;
            findings_.push_back(line.str());
        }
    }

    void CheckOverlap()
    {
        const auto& controls = form_.Controls();
        for (std::size_t i = 0; i < controls.size(); ++i) {
            for (std::size_t j = i + 1; j < controls.size(); ++j) {
                if (MayNotOverlap(*controls[i], *controls[j]) &&
                    Overlap(PlaceOf(form_, controls[i]->Handle()), PlaceOf(form_, controls[j]->Handle()))) {
                    findings_.push_back(std::string(controls[i]->Name()) + " and " + controls[j]->Name() + " overlap");
                }
            }
        }
    }

    /// Whether the control is visible, even if its form is not.
    static bool IsShown(HWND control) { return (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0; }

    bool MayNotOverlap(const Control& first, const Control& second) const
    {
        return IsShown(first.Handle()) && IsShown(second.Handle()) &&
               GetParent(first.Handle()) == GetParent(second.Handle()) && !Surrounds(first, second) &&
               !Surrounds(second, first);
    }

    /// A frame contains its controls, and a tab control its pages.
    bool Surrounds(const Control& outer, const Control& inner) const
    {
        const bool frame = dynamic_cast<const Frame*>(&outer) != nullptr;
        const bool tabs = dynamic_cast<const TabStrip*>(&outer) != nullptr;
        return (frame || (tabs && dynamic_cast<const TabPage*>(&inner) != nullptr)) &&
               Encloses(PlaceOf(form_, outer.Handle()), PlaceOf(form_, inner.Handle()));
    }

    /// Converts pixels at 96 DPI to pixels of the form.
    LONG Dots(int pixels) const { return MulDiv(pixels, form_.Dpi(), 96); }

    const Form& form_;
    std::vector<std::string> findings_;
};

template <class T>
void LookAt(ModalUser& user, const std::function<void(Form&, const char*)>& look, const char* name)
{
    user.In<T>([&look, name](T& form) {
        look(form, name);
        form.Unload();
    });
}

} // namespace

std::vector<std::string> FindingsIn(const Form& form)
{
    Report report(form);
    report.Check();
    return report.Take();
}

void UseMessageFont(int points)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    HDC screen = GetDC(nullptr);
    metrics.lfMessageFont.lfHeight = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    metrics.lfMessageFont.lfWidth = 0;
    lstrcpyW(metrics.lfMessageFont.lfFaceName, L"Segoe UI");
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, SPIF_UPDATEINIFILE | SPIF_SENDCHANGE);
}

void UseMessageFontOfWindows()
{
    UseMessageFont(9);
}

void InEveryDialog(ModalUser& user, const std::function<void(Form& form, const char* name)>& look)
{
    LookAt<frmAdd>(user, look, "the add dialog");
    Instance<frmAdd>()->showMeNow(2004, 9);
    LookAt<frmEdit>(user, look, "the edit dialog");
    Instance<frmEdit>()->showMeNow(2004, 9, 30, 9999.9, L"Office");
    LookAt<frmInterval>(user, look, "the print dialog");
    Instance<frmInterval>()->ShowModal();
    LookAt<frmProgress>(user, look, "the print's progress");
    Instance<frmProgress>()->Load();
    Instance<frmProgress>()->ShowPage(9999, 0);
    Instance<frmProgress>()->ShowModal();
    user.In<frmSettings>([&look](frmSettings& form) {
        look(form, "the settings' first page");
        PressKeyWith(VK_CONTROL, VK_TAB);
        look(form, "the settings' second page");
        form.Unload();
    });
    Instance<frmSettings>()->ShowModal();
    LookAt<frmUserinfo>(user, look, "the employee information");
    Instance<frmUserinfo>()->ShowModal();
    LookAt<frmAbout>(user, look, "the About box");
    Instance<frmAbout>()->ShowModal();
}
