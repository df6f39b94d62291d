// Where the main window's parts stand at every size, in the pixels of the real windows.
#include "tests/forms/ProgramUnderTest.h"

#include "platform/windows/Twips.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>

namespace {

class WindowSize : public ProgramUnderTest {
protected:
    WindowSize() { Start({.journal = "2004-03-15     12 Office\r\n"}); }

    static int Pixels(int twips) { return ToPixels(twips, static_cast<int>(GetDpiForWindow(Main().Handle()))); }

    /// Drags the window's lower right corner: both sizes are outer sizes in twips.
    static void Drag(int width, int height)
    {
        SetWindowPos(Main().Handle(), nullptr, 0, 0, Pixels(width), Pixels(height), SWP_NOMOVE | SWP_NOZORDER);
    }

    /// Wine: X11 may report the minimised state after the window is restored, so restore it again.
    static void RestoreForGood()
    {
        using Clock = std::chrono::steady_clock;
        constexpr auto longEnough = std::chrono::milliseconds(500);
        auto restored = Clock::now();
        const auto lasts = [&] {
            if (IsIconic(Main().Handle()) != FALSE) {
                ShowWindow(Main().Handle(), SW_RESTORE);
                restored = Clock::now();
            }
            return Clock::now() - restored > longEnough;
        };
        Await(lasts, "a window that stays restored");
    }

    static SIZE Outer()
    {
        RECT area{};
        GetWindowRect(Main().Handle(), &area);
        return {area.right - area.left, area.bottom - area.top};
    }

    /// A control's place in the client area, in pixels.
    static RECT PlaceOf(const Control& control)
    {
        RECT area{};
        GetWindowRect(control.Handle(), &area);
        MapWindowPoints(nullptr, Main().Handle(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }

    static int Width(const Control& control) { return PlaceOf(control).right - PlaceOf(control).left; }
    static int Height(const Control& control) { return PlaceOf(control).bottom - PlaceOf(control).top; }

    /// Everything that stays where it was designed.
    static std::vector<long> FixedPlaces()
    {
        const frmMain& main = Main();
        return {PlaceOf(main.TreeView1).left,    PlaceOf(main.TreeView1).top,   PlaceOf(main.TreeView1).right,
                PlaceOf(main.List1).left,        PlaceOf(main.List1).top,       PlaceOf(main.Label1).left,
                PlaceOf(main.Label6).left,       PlaceOf(main.Label6).top,      PlaceOf(main.Label6).right,
                PlaceOf(main.Label4).left,       PlaceOf(main.Label4).right,    PlaceOf(main.Label5).left,
                PlaceOf(main.addButton).left,    PlaceOf(main.addButton).right, PlaceOf(main.editButton).left,
                PlaceOf(main.deleteButton).left, PlaceOf(main.Line3).left,      PlaceOf(main.Line4).top};
    }
};

/// Rounding to whole pixels moves an edge by at most one.
testing::Matcher<int> About(int pixels)
{
    return testing::AllOf(testing::Ge(pixels - 1), testing::Le(pixels + 1));
}

bool Overlap(const RECT& a, const RECT& b)
{
    RECT both{};
    return IntersectRect(&both, &a, &b) != FALSE;
}

} // namespace

TEST_F(WindowSize, StretchesTheListTheTreeAndTheRulesWithTheWindow)
{
    for (const SIZE size : {SIZE{7500, 6000}, SIZE{5700, 4000}, SIZE{12000, 9000}, SIZE{6435, 4725}}) {
        Drag(size.cx, size.cy);
        const frmMain& main = Main();
        const int width = size.cx;
        const int height = size.cy;
        EXPECT_THAT(Height(main.List1), About(Pixels(height - 1915 - 240)));
        EXPECT_THAT(Height(main.TreeView1), About(Pixels(height - 1915 - 240 + 480)));
        EXPECT_THAT(Width(main.List1), About(Pixels(width - 2255)));
        EXPECT_THAT(Width(main.Label1), About(Pixels(width - 2255)));
        EXPECT_THAT(Width(main.Label5), About(Pixels(width - 2255 - 1920)));
        EXPECT_THAT(PlaceOf(main.Line3).right, About(Pixels(width + 200)));
        EXPECT_THAT(PlaceOf(main.Line4).right, About(Pixels(width + 200)));
        EXPECT_EQ(PlaceOf(main.Label1).top, PlaceOf(main.List1).bottom);
        EXPECT_THAT(PlaceOf(main.deleteButton).top, About(PlaceOf(main.List1).bottom + Pixels(300)));
        EXPECT_EQ(PlaceOf(main.editButton).top, PlaceOf(main.deleteButton).top);
        EXPECT_EQ(PlaceOf(main.addButton).top, PlaceOf(main.deleteButton).top);
    }
}

TEST_F(WindowSize, LeavesTheHeadingsTheButtonsAndTheTreesWidthWhereTheyAre)
{
    Drag(5700, 4000);
    const auto before = FixedPlaces();
    Drag(12000, 9000);
    EXPECT_EQ(FixedPlaces(), before);
}

TEST_F(WindowSize, KeepsAllPartsInsideTheWindowAndApart)
{
    for (const SIZE size : {SIZE{5700, 4000}, SIZE{10800, 7500}}) {
        Drag(size.cx, size.cy);
        const frmMain& main = Main();
        const std::array<const Control*, 9> parts{&main.TreeView1, &main.Label6,     &main.Label4,
                                                  &main.Label5,    &main.List1,      &main.Label1,
                                                  &main.addButton, &main.editButton, &main.deleteButton};
        RECT client{};
        GetClientRect(Main().Handle(), &client);
        client.bottom = PlaceOf(main.sbStatusBar).top;
        for (const Control* part : parts) {
            const RECT place = PlaceOf(*part);
            RECT inside{};
            IntersectRect(&inside, &place, &client);
            EXPECT_TRUE(EqualRect(&inside, &place)) << part->Name() << " sticks out at " << size.cx;
            for (const Control* other : parts) {
                EXPECT_FALSE(part != other && Overlap(place, PlaceOf(*other)))
                    << part->Name() << " over " << other->Name();
            }
        }
    }
}

TEST_F(WindowSize, SnapsBackToItsSmallestSize)
{
    Drag(3000, 2000);
    EXPECT_EQ(Outer().cx, Pixels(5700));
    EXPECT_EQ(Outer().cy, Pixels(4000));
    EXPECT_THAT(Width(Main().List1), About(Pixels(5700 - 2255)));
    EXPECT_THAT(Height(Main().List1), About(Pixels(4000 - 1915 - 240)));
}

TEST_F(WindowSize, SnapsBackInEachDirectionSeparately)
{
    Drag(3000, 6000);
    EXPECT_EQ(Outer().cx, Pixels(5700));
    EXPECT_EQ(Outer().cy, Pixels(6000));
    Drag(6000, 3000);
    EXPECT_EQ(Outer().cx, Pixels(6000));
    EXPECT_EQ(Outer().cy, Pixels(4000));
}

TEST_F(WindowSize, IsNotLimitedByTheFrameItself)
{
    // The user may drag the frame as small as he likes; it is put back when he has.
    MINMAXINFO limits{};
    limits.ptMinTrackSize = {1, 1};
    SendMessageW(Main().Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_LT(limits.ptMinTrackSize.x, Pixels(5700));
    EXPECT_LT(limits.ptMinTrackSize.y, Pixels(4000));
}

TEST_F(WindowSize, IsUnchangedAfterMinimisingAndRestoring)
{
    Drag(7500, 6000);
    const RECT list = PlaceOf(Main().List1);
    const RECT tree = PlaceOf(Main().TreeView1);
    ShowWindow(Main().Handle(), SW_MINIMIZE);
    Await([] { return IsIconic(Main().Handle()) != FALSE; }, "the minimised window");
    const RECT listMeanwhile = PlaceOf(Main().List1);
    EXPECT_EQ(listMeanwhile.right - listMeanwhile.left, list.right - list.left);
    RestoreForGood();
    const RECT listAfter = PlaceOf(Main().List1);
    const RECT treeAfter = PlaceOf(Main().TreeView1);
    EXPECT_TRUE(EqualRect(&list, &listAfter));
    EXPECT_TRUE(EqualRect(&tree, &treeAfter));
    EXPECT_EQ(Outer().cx, Pixels(7500));
}

TEST_F(WindowSize, OpensWithItsPartsAlreadyInPlace)
{
    EXPECT_EQ(Outer().cx, Pixels(10800));
    EXPECT_EQ(Outer().cy, Pixels(7500));
    EXPECT_THAT(Width(Main().List1), About(Pixels(10800 - 2255)));
    EXPECT_THAT(Height(Main().List1), About(Pixels(7500 - 1915 - 240)));
}

TEST_F(WindowSize, FollowsTheDpiOfAnotherMonitor)
{
    constexpr int dpi = 192;
    const RECT place{0, 0, ToPixels(7500, dpi), ToPixels(6000, dpi)};
    SendMessageW(Main().Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    EXPECT_THAT(Width(Main().List1), About(ToPixels(7500 - 2255, dpi)));
    EXPECT_THAT(Height(Main().List1), About(ToPixels(6000 - 1915 - 240, dpi)));
    EXPECT_THAT(Width(Main().TreeView1), About(ToPixels(Main().TreeView1.Width(), dpi)));
    EXPECT_THAT(PlaceOf(Main().deleteButton).top, About(PlaceOf(Main().List1).bottom + ToPixels(300, dpi)));
}
