// Changes of monitor, fonts and colours while the program runs, and long operations.
#include "tests/forms/desktop/Walk.h"

#include "forms/about/frmAbout.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "platform/windows/WaitCursor.h"
#include "tests/support/PrinterDialogUser.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <vector>

using testing::Contains;
using testing::IsEmpty;

namespace {

constexpr const char* journal = "2004-12-31  392.2 Depot 4 to site, return\r\n2004-09-30     -2 Home\r\n";

/// Sends WM_DPICHANGED with the suggested rectangle, as Windows does for a window that is moved to another monitor.
void MoveToScreenOf(const Form& form, int dpi)
{
    RECT place{};
    GetWindowRect(form.Handle(), &place);
    place.right = place.left + MulDiv(place.right - place.left, dpi, form.Dpi());
    place.bottom = place.top + MulDiv(place.bottom - place.top, dpi, form.Dpi());
    const WORD both = static_cast<WORD>(dpi);
    SendMessageW(form.Handle(), WM_DPICHANGED, MAKEWPARAM(both, both), reinterpret_cast<LPARAM>(&place));
    DoEvents();
}

LONG FontHeight(const Control& control)
{
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(control.Handle(), WM_GETFONT, 0, 0)), sizeof font, &font);
    return std::abs(font.lfHeight);
}

SIZE ClientSize(HWND window)
{
    RECT area{};
    GetClientRect(window, &area);
    return {area.right, area.bottom};
}

/// The colours that the form returns for a control.
struct Colors {
    COLORREF text;
    COLORREF background;
};
Colors ColorsOf(const Form& form, const Control& control)
{
    HDC surface = GetDC(control.Handle());
    SendMessageW(form.Handle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(surface),
                 reinterpret_cast<LPARAM>(control.Handle()));
    const Colors colors{GetTextColor(surface), GetBkColor(surface)};
    ReleaseDC(control.Handle(), surface);
    return colors;
}

/// A pixel of the screen.
COLORREF PixelAt(HWND window, int x, int y)
{
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    HDC surface = GetDC(window);
    const COLORREF color = GetPixel(surface, x, y);
    ReleaseDC(window, surface);
    return color;
}

/// Dark system colours during its lifetime.
class DarkColors {
public:
    DarkColors()
    {
        for (std::size_t i = 0; i < which.size(); ++i) {
            before_.at(i) = GetSysColor(which.at(i));
        }
        SetSysColors(static_cast<int>(which.size()), which.data(), dark.data());
        DoEvents();
    }
    ~DarkColors() { SetSysColors(static_cast<int>(which.size()), which.data(), before_.data()); }
    DarkColors(const DarkColors&) = delete;
    DarkColors& operator=(const DarkColors&) = delete;

    static constexpr COLORREF face = RGB(10, 0, 30);
    static constexpr COLORREF faceText = RGB(255, 255, 0);
    static constexpr COLORREF window = RGB(0, 20, 0);
    static constexpr COLORREF windowText = RGB(0, 255, 0);

private:
    static constexpr std::array<int, 4> which{COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_WINDOW, COLOR_WINDOWTEXT};
    static constexpr std::array<COLORREF, 4> dark{face, faceText, window, windowText};
    std::array<COLORREF, 4> before_{};
};

/// The windows for which SetDialogDpiChangeBehavior was called.
std::vector<HWND> selfScaling;

BOOL WINAPI NoteSelfScaling(HWND dialog, DIALOG_DPI_CHANGE_BEHAVIORS mask, DIALOG_DPI_CHANGE_BEHAVIORS values)
{
    if (mask == DDC_DISABLE_ALL && values == DDC_DISABLE_ALL) {
        selfScaling.push_back(dialog);
    }
    return TRUE;
}

/// Replaces GetProcAddress and finds the function above. Wine: SetDialogDpiChangeBehavior does not exist.
decltype(GetProcAddress)* systemFind = nullptr;

FARPROC WINAPI FindOrNote(HMODULE library, LPCSTR name)
{
    const bool noted =
        reinterpret_cast<std::uintptr_t>(name) > 0xFFFF && std::string_view(name) == "SetDialogDpiChangeBehavior";
    return noted ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(NoteSelfScaling)) : systemFind(library, name);
}

class AnotherScreen : public ProgramUnderTest {};
class OtherFonts : public ProgramUnderTest {
protected:
    void SetUp() override { UseMessageFontOfWindows(); }
    void TearDown() override { UseMessageFontOfWindows(); }
};
class OtherColors : public ProgramUnderTest {};
class LongWork : public ProgramUnderTest {};

} // namespace

TEST_F(AnotherScreen, ScalesTheMainWindowAndItsControls)
{
    Start({.journal = journal});
    const LONG font = FontHeight(Main().addButton);
    const LONG listFont = FontHeight(Main().List1);
    for (const int dpi : {144, 192, 120, 96}) {
        SCOPED_TRACE(dpi);
        MoveToScreenOf(Main(), dpi);
        EXPECT_EQ(Main().Dpi(), dpi);
        EXPECT_NEAR(FontHeight(Main().addButton), MulDiv(font, dpi, 96), 1);
        EXPECT_NEAR(FontHeight(Main().List1), MulDiv(listFont, dpi, 96), 1);
        EXPECT_EQ(Main().List1.Height(), Main().Height() - 1915 - 240);
        EXPECT_EQ(Main().List1.Width(), Main().Width() - 2255);
        EXPECT_EQ(Main().TreeView1.Height(), Main().List1.Height() + 480);
        EXPECT_THAT(FindingsIn(Main()), IsEmpty());
    }
}

TEST_F(AnotherScreen, KeepsTheSmallestSizeOfTheMainWindowInTwips)
{
    Start({.journal = journal});
    MoveToScreenOf(Main(), 192);
    SetWindowPos(Main().Handle(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_NEAR(Main().Width(), 5700, 8);
    EXPECT_NEAR(Main().Height(), 4000, 8);
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
}

TEST_F(AnotherScreen, ScalesEveryDialogAndItsControls)
{
    Start({.journal = journal});
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        const SIZE before = ClientSize(form.Handle());
        for (const int dpi : {192, 120, 144, 96}) {
            SCOPED_TRACE(dpi);
            MoveToScreenOf(form, dpi);
            EXPECT_EQ(form.Dpi(), dpi);
            EXPECT_THAT(FindingsIn(form), IsEmpty());
        }
        const SIZE after = ClientSize(form.Handle());
        EXPECT_EQ(after.cx, before.cx);
        EXPECT_EQ(after.cy, before.cy);
    });
}

TEST_F(AnotherScreen, DisablesTheScalingOfDialogsByWindows)
{
    const ReplacedImport replaced("GetProcAddress", FindOrNote);
    systemFind = replaced.Original();
    selfScaling.clear();
    Start({.journal = journal});
    EXPECT_THAT(selfScaling, Contains(Main().Handle()));
    InEveryDialog(user,
                  [](Form& form, const char* name) { EXPECT_THAT(selfScaling, Contains(form.Handle())) << name; });
}

TEST_F(AnotherScreen, DrawsThePictureOfTheAboutBoxInItsNewSize)
{
    Start();
    user.In<frmAbout>([](frmAbout& form) {
        MoveToScreenOf(form, 144);
        const SIZE room = ClientSize(form.Image1.Handle());
        BITMAP drawn{};
        GetObjectW(reinterpret_cast<HBITMAP>(SendMessageW(form.Image1.Handle(), STM_GETIMAGE, IMAGE_BITMAP, 0)),
                   sizeof drawn, &drawn);
        EXPECT_EQ(drawn.bmWidth, room.cx);
        EXPECT_EQ(drawn.bmHeight, room.cy);
        EXPECT_EQ(room.cx, ToPixels(4800, 144));
        form.Unload();
    });
    Instance<frmAbout>()->ShowModal();
}

TEST_F(OtherFonts, AreAppliedToTheOpenMainWindowAndItsLayout)
{
    Start({.journal = journal});
    const int dpi = Main().Dpi();
    const LONG font = FontHeight(Main().addButton);
    const SIZE size = ClientSize(Main().Handle());
    UseMessageFont(14);
    DoEvents();
    EXPECT_GT(FontHeight(Main().addButton), font * 4 / 3);
    EXPECT_GT(Main().Dpi(), dpi * 4 / 3);
    EXPECT_GT(ClientSize(Main().Handle()).cx, size.cx);
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
    UseMessageFontOfWindows();
    DoEvents();
    EXPECT_EQ(Main().Dpi(), dpi);
    EXPECT_EQ(FontHeight(Main().addButton), font);
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
}

TEST_F(OtherFonts, ScaleTheRestoredSizeOfAMinimisedMainWindow)
{
    Start({.journal = journal});
    const int height = Main().Height();
    const int width = Main().Width();
    ShowWindow(Main().Handle(), SW_MINIMIZE);
    UseMessageFont(14);
    DoEvents();
    EXPECT_TRUE(IsIconic(Main().Handle())) << "the window stays minimised";
    ShowWindow(Main().Handle(), SW_RESTORE);
    EXPECT_NEAR(Main().Height(), height, 20);
    EXPECT_NEAR(Main().Width(), width, 20);
    DoEvents(); // Wine 10: X11 restores the former size here; on Windows and Wine 8 the size does not change
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
}

TEST_F(OtherFonts, AreAppliedToAnOpenDialog)
{
    Start({.journal = journal});
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        UseMessageFont(12);
        DoEvents();
        EXPECT_THAT(FindingsIn(form), IsEmpty());
        UseMessageFontOfWindows();
        DoEvents();
        EXPECT_THAT(FindingsIn(form), IsEmpty());
    });
}

TEST_F(OtherFonts, AreUsedWhenTheProgramStarts)
{
    UseMessageFont(16);
    Start({.journal = journal});
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        EXPECT_THAT(FindingsIn(form), IsEmpty());
    });
}

TEST_F(OtherFonts, DoNotChangeTheLayoutIfTheyAreSmaller)
{
    Start({.journal = journal});
    const int dpi = Main().Dpi();
    UseMessageFont(7);
    DoEvents();
    EXPECT_EQ(Main().Dpi(), dpi);
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
}

TEST_F(OtherColors, AreAppliedToTheOpenMainWindow)
{
    Start({.journal = journal});
    const DarkColors dark;
    const SIZE client = ClientSize(Main().Handle());
    EXPECT_EQ(PixelAt(Main().Handle(), client.cx - 3, client.cy / 2), DarkColors::face);
    const SIZE list = ClientSize(Main().List1.Handle());
    EXPECT_EQ(PixelAt(Main().List1.Handle(), list.cx / 2, list.cy - 20), DarkColors::window);
    const SIZE tree = ClientSize(Main().TreeView1.Handle());
    EXPECT_EQ(PixelAt(Main().TreeView1.Handle(), tree.cx / 2, tree.cy - 20), DarkColors::window);
    EXPECT_EQ(ColorsOf(Main(), Main().Label1).background, DarkColors::face);
}

TEST_F(OtherColors, AreUsedByEveryDialog)
{
    Start({.journal = journal});
    const DarkColors dark;
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        const SIZE client = ClientSize(form.Handle());
        EXPECT_EQ(PixelAt(form.Handle(), 2, client.cy - 3), DarkColors::face);
        for (const Control* control : form.Controls()) {
            if (dynamic_cast<const Label*>(control) != nullptr && GetParent(control->Handle()) == form.Handle()) {
                EXPECT_EQ(ColorsOf(form, *control).background, DarkColors::face) << control->Name();
            }
        }
    });
}

TEST_F(OtherColors, AreUsedByADisabledBox)
{
    Start();
    const DarkColors dark;
    user.In<frmUserinfo>([](frmUserinfo& form) {
        EXPECT_EQ(ColorsOf(form, form.Text3).background, DarkColors::face);
        SendMessageW(form.Check1.Handle(), BM_CLICK, 0, 0);
        const Colors colors = ColorsOf(form, form.Text3);
        EXPECT_EQ(colors.background, DarkColors::window);
        EXPECT_EQ(colors.text, DarkColors::windowText);
        form.Unload();
    });
    Instance<frmUserinfo>()->ShowModal();
}

TEST_F(OtherColors, GiveTheLinkAColorWithEnoughContrast)
{
    Start();
    user.In<frmAbout>([](frmAbout& form) {
        EXPECT_EQ(ColorsOf(form, form.Label3).text, RGB(0, 102, 204)) << "blue on a light background";
        const DarkColors dark;
        EXPECT_EQ(ColorsOf(form, form.Label3).text, GetSysColor(COLOR_HOTLIGHT));
        form.Unload();
    });
    Instance<frmAbout>()->ShowModal();
}

TEST_F(LongWork, ShowsTheHourglassOverPaintedWindows)
{
    Start({.journal = journal});
    BringToFront(Main());
    HCURSOR hourglass = LoadCursorW(nullptr, IDC_WAIT);
    ASSERT_NE(GetCursor(), hourglass);
    HCURSOR before = GetCursor();
    RedrawWindow(Main().Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    ASSERT_TRUE(GetUpdateRect(Main().List1.Handle(), nullptr, FALSE));
    {
        const WaitCursor busy;
        EXPECT_EQ(GetCursor(), hourglass);
        SettleWindows();
        for (const Control* control : Main().Controls()) {
            EXPECT_FALSE(GetUpdateRect(control->Handle(), nullptr, FALSE)) << control->Name();
        }
    }
    EXPECT_EQ(GetCursor(), before);
}

TEST_F(LongWork, ShowsTheHourglassOnlyWhilePrinting)
{
    Start({.journal = journal});
    BringToFront(Main());
    std::atomic<bool> hourglassSeen = false;
    std::atomic<bool> stopping = false;
    std::thread watcher([&] {
        HCURSOR hourglass = LoadCursorW(nullptr, IDC_WAIT);
        while (!stopping && !hourglassSeen) {
            CURSORINFO info{};
            info.cbSize = sizeof info;
            hourglassSeen = GetCursorInfo(&info) != FALSE && info.hCursor == hourglass;
            std::this_thread::yield();
        }
    });
    auto printer = PrinterDialogUser::ToPrint(2);
    user.In<frmInterval>([](frmInterval& form) { Press(form.addButton); });
    ChooseCommand(Main(), {L"File", L"Print..."});
    printer.WaitUntilGone();
    stopping = true;
    watcher.join();
    EXPECT_TRUE(hourglassSeen);
    EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    for (const Control* control : Main().Controls()) {
        DoEvents();
        EXPECT_FALSE(GetUpdateRect(control->Handle(), nullptr, FALSE)) << control->Name();
    }
}

TEST_F(LongWork, KeepsKeysInTheQueueUntilItIsDone)
{
    Start({.journal = journal});
    BringToFront(Main());
    const auto chosen = [] { return Main().TreeView1.SelectedNode(); };
    const int before = chosen();
    PostMessageW(Main().TreeView1.Handle(), WM_KEYDOWN, VK_DOWN, 0);
    {
        const WaitCursor busy;
        SettleWindows();
        EXPECT_EQ(chosen(), before);
    }
    EXPECT_EQ(chosen(), before);
    DoEvents();
    EXPECT_NE(chosen(), before);
}
