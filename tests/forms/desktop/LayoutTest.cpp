// Every window at every DPI in both languages: no text is clipped, and no control overlaps another or the edge of its
// form.
#include "tests/forms/desktop/Walk.h"

#include <gmock/gmock.h>

using testing::IsEmpty;

namespace {

constexpr const char* journal = "2004-12-31  392.2 Depot 4 to site, return\r\n2004-09-30     -2 Home\r\n";

class Layout : public ProgramUnderTest, public testing::WithParamInterface<std::int16_t> {
protected:
    Layout() { UseMessageFontOfWindows(); }

    static void StartInLanguage(const wchar_t* unit)
    {
        Start({.journal = std::string(journal), .unit = unit, .language = GetParam()});
    }
};

RECT PlaceOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

RECT WorkArea()
{
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

bool Encloses(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

/// Waits until the dialog is on the screen, and returns its place. Wine: for a moment after a window is opened, X11
/// reports the corner of the screen as its place.
RECT PlaceOnScreen(const Form& dialog)
{
    Await([&] { return Encloses(WorkArea(), PlaceOf(dialog.Handle())); }, "the dialog on the screen");
    return PlaceOf(dialog.Handle());
}

} // namespace

TEST_P(Layout, HasRoomForEveryTextOfTheMainWindow)
{
    StartInLanguage(GetParam() == 0 ? L"miles" : L"mil");
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
}

TEST_P(Layout, HasRoomForEveryTextOfTheMainWindowAtItsSmallestSize)
{
    StartInLanguage(L"miles");
    SetWindowPos(Main().Handle(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    const int dot = 1440 / Main().Dpi();
    EXPECT_NEAR(Main().Width(), 5700, dot);
    EXPECT_NEAR(Main().Height(), 4000, dot);
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
}

TEST_P(Layout, KeepsTheMenuBarOnOneLineAtTheSmallestSize)
{
    StartInLanguage(L"miles");
    SetWindowPos(Main().Handle(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    HMENU bar = GetMenu(Main().Handle());
    ASSERT_EQ(GetMenuItemCount(bar), 3);
    RECT first{};
    RECT last{};
    ASSERT_TRUE(GetMenuItemRect(Main().Handle(), bar, 0, &first));
    ASSERT_TRUE(GetMenuItemRect(Main().Handle(), bar, 2, &last));
    EXPECT_GT(last.left, first.right);
    EXPECT_EQ(last.top, first.top);
}

TEST_P(Layout, HasRoomForEveryTextOfEveryDialog)
{
    StartInLanguage(GetParam() == 0 ? L"miles" : L"mil");
    int seen = 0;
    InEveryDialog(user, [&seen](Form& form, const char* name) {
        SCOPED_TRACE(name);
        ++seen;
        EXPECT_THAT(FindingsIn(form), IsEmpty());
    });
    EXPECT_EQ(seen, 8);
}

TEST_P(Layout, OpensEveryDialogInTheMiddleOfTheMainWindow)
{
    StartInLanguage(L"km");
    const RECT owner = PlaceOf(Main().Handle());
    InEveryDialog(user, [&owner](Form& form, const char* name) {
        SCOPED_TRACE(name);
        const RECT place = PlaceOnScreen(form);
        EXPECT_EQ(GetWindow(form.Handle(), GW_OWNER), Main().Handle());
        EXPECT_NEAR(place.left + place.right, owner.left + owner.right, 2);
        EXPECT_NEAR(place.top + place.bottom, owner.top + owner.bottom, 2);
    });
}

TEST_P(Layout, OpensADialogOnTheScreenIfTheMainWindowIsInACorner)
{
    StartInLanguage(L"km");
    const RECT work = WorkArea();
    SetWindowPos(Main().Handle(), nullptr, work.right - 60, work.bottom - 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    InEveryDialog(user, [&work](Form& form, const char* name) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(Encloses(work, PlaceOnScreen(form)));
    });
}

TEST_P(Layout, OpensTheMainWindowOnTheScreenInAUsefulSize)
{
    StartInLanguage(L"km");
    const RECT work = WorkArea();
    const RECT place = PlaceOf(Main().Handle());
    EXPECT_TRUE(Encloses(work, place));
    EXPECT_GE(Main().Width(), std::min(9000, ToTwips(work.right - work.left, Main().Dpi())));
    EXPECT_GE(Main().Height(), std::min(7000, ToTwips(work.bottom - work.top, Main().Dpi())));
    // At 96 DPI the list shows a month of 31 days with little or no scrolling.
    EXPECT_GE(Main().List1.Width(), 7000);
}

TEST_P(Layout, PlacesEachHeadingOverItsColumn)
{
    StartInLanguage(L"km");
    HWND list = Main().List1.Handle();
    RECT line{};
    SendMessageW(list, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&line));
    POINT start{line.left, 0};
    MapWindowPoints(list, Main().Handle(), &start, 1);
    HDC surface = GetDC(list);
    HGDIOBJ former = SelectObject(surface, reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0)));
    SIZE digit{};
    GetTextExtentPoint32W(surface, L"0", 1, &digit);
    SelectObject(surface, former);
    ReleaseDC(list, surface);

    const auto place = [](const Control& control) {
        RECT area = PlaceOf(control.Handle());
        MapWindowPoints(nullptr, Main().Handle(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    };
    const int tolerance = digit.cx / 3; // a list indents its lines by one or two pixels
    EXPECT_NEAR(place(Main().Label6).left, start.x, tolerance);
    EXPECT_NEAR(place(Main().Label4).right, start.x + 17 * digit.cx, tolerance)
        << "the unit is aligned with the right edge of the numbers";
    EXPECT_NEAR(place(Main().Label5).left, start.x + 18 * digit.cx, tolerance);
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, Layout, testing::Values(std::int16_t{0}, std::int16_t{100}),
                         [](const auto& language) { return language.param == 0 ? "English" : "Swedish"; });
