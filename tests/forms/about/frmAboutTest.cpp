#include "forms/about/frmAbout.h"
#include "tests/forms/FormFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/RecordingBrowser.h"

namespace {

constexpr const wchar_t* couldNotOpen =
    L"Label3_Click: ShellExecute ERROR.\r\nCouldn't open browser. Please manually goto the adress:\r\n"
    L"https://odomira.example.com/";

class AboutBox : public FormFixture {
protected:
    static void WhileOpen(const std::function<void(frmAbout&)>& script) { FormFixture::WhileOpen<frmAbout>(script); }

    static void MoveOver(const Control& control)
    {
        RECT area{};
        GetClientRect(control.Handle(), &area);
        MoveTo(control.Handle(), {area.right / 2, area.bottom / 2});
    }

    /// Below the link there is nothing but the form.
    static void MoveOverTheForm(const frmAbout& form)
    {
        MoveTo(form.Handle(), {ToPixels(form.Label3.Left() + 150, form.Dpi()),
                               ToPixels(form.Label3.Top() + form.Label3.Height() + 60, form.Dpi())});
    }

    static bool IsUnderlined(const Label& label)
    {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(label.Handle(), WM_GETFONT, 0, 0)), sizeof font, &font);
        return font.lfUnderline != 0;
    }

    /// What the screen shows of a control.
    static std::vector<COLORREF> Pixels(const Control& control)
    {
        RedrawWindow(control.Handle(), nullptr, nullptr, RDW_UPDATENOW);
        RECT area{};
        GetClientRect(control.Handle(), &area);
        HDC surface = GetDC(control.Handle());
        std::vector<COLORREF> pixels;
        for (int y = 0; y < area.bottom; ++y) {
            for (int x = 0; x < area.right; ++x) {
                pixels.push_back(GetPixel(surface, x, y));
            }
        }
        ReleaseDC(control.Handle(), surface);
        return pixels;
    }

    static HCURSOR Hand()
    {
        return static_cast<HCURSOR>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(103), IMAGE_CURSOR, 0, 0,
                                               LR_DEFAULTSIZE | LR_SHARED));
    }
};

} // namespace

TEST_F(AboutBox, ShowsTheProductTheVersionAndTheCopyright)
{
    WhileOpen([](frmAbout& form) {
        EXPECT_EQ(form.Caption(), L"About Odomira");
        EXPECT_EQ(form.Label2.Caption(), L"Odomira");
        EXPECT_EQ(form.Label4.Caption(), L"Odomira Mileage Journal");
        EXPECT_EQ(form.MinVersion.Caption(), L"Version " + std::to_wstring(ODOMIRA_MAJOR) + L"." +
                                                 std::to_wstring(ODOMIRA_MINOR) + L"\r\nBuild #" +
                                                 std::to_wstring(ODOMIRA_REVISION));
        EXPECT_NE(form.lblDescription.Caption().find(L"Brenholt"), std::wstring::npos);
        EXPECT_EQ(form.Label3.Caption(), L"https://brenholt.example.com/") << "the maker's address, not where it leads";
        EXPECT_EQ(form.cmdOK.Caption(), L"OK");
    });
}

TEST_F(AboutBox, HasASwedishCaptionOnly)
{
    Module1::languageOffset = 100;
    WhileOpen([](frmAbout& form) {
        EXPECT_EQ(form.Caption(), L"Om Odomira");
        EXPECT_EQ(form.MinVersion.Caption().substr(0, 8), L"Version ");
        EXPECT_EQ(form.cmdOK.Caption(), L"OK");
    });
}

TEST_F(AboutBox, UnderlinesTheLinkWhileTheMouseIsOverIt)
{
    WhileOpen([](frmAbout& form) {
        MoveOverTheForm(form);
        EXPECT_FALSE(IsUnderlined(form.Label3));
        MoveOver(form.Label3);
        EXPECT_TRUE(IsUnderlined(form.Label3));
        MoveOverTheForm(form);
        EXPECT_FALSE(IsUnderlined(form.Label3));
    });
}

TEST_F(AboutBox, KeepsTheUnderlineUntilTheMouseIsOverTheForm)
{
    WhileOpen([](frmAbout& form) {
        for (const Control* other : std::initializer_list<const Control*>{
                 &form.cmdOK, &form.Image1, &form.Label2, &form.Label4, &form.MinVersion, &form.lblDescription}) {
            MoveOver(form.Label3);
            MoveOver(*other);
            EXPECT_TRUE(IsUnderlined(form.Label3)) << other->Name();
        }
        MoveOver(form.Label3);
        MoveTo(GetDesktopWindow(), {5, 5});
        EXPECT_TRUE(IsUnderlined(form.Label3)) << "outside the window";
        MoveOverTheForm(form);
        EXPECT_FALSE(IsUnderlined(form.Label3));
    });
}

TEST_F(AboutBox, HasAHandCursorOverTheLinkOnly)
{
    WhileOpen([](frmAbout& form) {
        ASSERT_NE(Hand(), nullptr);
        MoveOver(form.Label3);
        EXPECT_EQ(GetCursor(), Hand());
        MoveOverTheForm(form);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
    });
}

TEST_F(AboutBox, HasTheLinkOnlyWhereItsTextIs)
{
    WhileOpen([](frmAbout& form) {
        RECT link{};
        GetClientRect(form.Label3.Handle(), &link);
        MoveTo(form.Label3.Handle(), {link.right - 2, link.bottom / 2});
        EXPECT_TRUE(IsUnderlined(form.Label3));
        MoveTo(form.Label3.Handle(), {link.right + 4, link.bottom / 2});
        EXPECT_FALSE(IsUnderlined(form.Label3));
    });
}

TEST_F(AboutBox, OpensTheProductsHomePageInTheBrowser)
{
    const RecordingBrowser browser;
    const MessageBoxWatcher watcher;
    WhileOpen([&](frmAbout& form) {
        ClickOn(form.Label3);
        Await([&] { return !browser.Shown().empty(); }, "the browser");
        EXPECT_EQ(browser.Shown(), std::vector<std::string>{"https://odomira.example.com/"});
        EXPECT_TRUE(form.IsLoaded());
    });
    EXPECT_TRUE(watcher.Seen().empty());
}

TEST_F(AboutBox, OpensTheLinkWithTheKeyboard)
{
    const RecordingBrowser browser;
    WhileOpen([&](frmAbout& form) {
        for (const WORD key : std::initializer_list<WORD>{VK_RETURN, VK_SPACE}) {
            SCOPED_TRACE(key);
            const std::size_t before = browser.Shown().size();
            form.cmdOK.SetFocus();
            PressKey(VK_TAB);
            ASSERT_TRUE(HasFocus(form.Label3));
            EXPECT_EQ(browser.Shown().size(), before);
            PressKey(key);
            Await([&] { return browser.Shown().size() > before; }, "the browser");
            EXPECT_EQ(browser.Shown().back(), "https://odomira.example.com/");
            ASSERT_TRUE(form.IsLoaded());
            BringToFront(form);
        }
    });
}

TEST_F(AboutBox, ShowsWhetherTheLinkHasTheKeyboard)
{
    WhileOpen([&](frmAbout& form) {
        MoveOverTheForm(form);
        const std::vector<COLORREF> plain = Pixels(form.Label3);
        PressKey(VK_TAB);
        ASSERT_TRUE(HasFocus(form.Label3));
        const std::vector<COLORREF> marked = Pixels(form.Label3);
        EXPECT_NE(marked, plain);
        for (int time = 1; time <= 3; ++time) {
            RECT corner{0, 0, 5, 5 * time};
            InvalidateRect(form.Label3.Handle(), &corner, TRUE);
            EXPECT_EQ(Pixels(form.Label3), marked) << "painted again in part";
        }
        MoveOver(form.Label3);
        MoveOverTheForm(form);
        EXPECT_EQ(Pixels(form.Label3), marked) << "after the mouse";
        EXPECT_FALSE(IsUnderlined(form.Label3));
        PressKey(VK_TAB);
        ASSERT_TRUE(HasFocus(form.cmdOK));
        EXPECT_EQ(Pixels(form.Label3), plain);
    });
}

TEST_F(AboutBox, KeepsTheKeyboardWhereItIsWhenTheMouseClicksTheLink)
{
    const RecordingBrowser browser;
    WhileOpen([&](frmAbout& form) {
        ClickOn(form.Label3);
        Await([&] { return !browser.Shown().empty(); }, "the browser");
        EXPECT_FALSE(HasFocus(form.Label3));
    });
}

TEST_F(AboutBox, SaysInEnglishThatThereIsNoBrowserAndStaysOpen)
{
    const MissingBrowser browser;
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        SCOPED_TRACE(language);
        Module1::languageOffset = language;
        const MessageBoxWatcher watcher;
        WhileOpen([&](frmAbout& form) {
            ClickOn(form.Label3);
            ASSERT_EQ(watcher.Texts(), std::vector<std::wstring>{couldNotOpen});
            const SeenMessageBox box = watcher.Seen().front();
            EXPECT_EQ(box.title, L"Odomira");
            EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
            EXPECT_FALSE(box.hasIcon);
            EXPECT_EQ(box.owner, form.Handle());
            EXPECT_TRUE(form.IsLoaded());
            EXPECT_TRUE(IsWindowVisible(form.Handle()));
        });
    }
}

TEST_F(AboutBox, SetsItsCaptionAtEachActivation)
{
    const MissingBrowser browser;
    const MessageBoxWatcher watcher;
    WhileOpen([](frmAbout& form) {
        EXPECT_EQ(form.Caption(), L"About Odomira");
        Module1::languageOffset = 100;
        ClickOn(form.Label3); // the message takes the activity away and gives it back
        EXPECT_EQ(form.Caption(), L"Om Odomira");
    });
    EXPECT_EQ(watcher.Seen().size(), 1U);
}

TEST_F(AboutBox, ClosesByOkEnterEscAndItsBox)
{
    const std::initializer_list<std::function<void(frmAbout&)>> ways{
        [](frmAbout& form) { ClickOn(form.cmdOK); }, [](frmAbout&) { PressKey(VK_RETURN); },
        [](frmAbout&) { PressKey(VK_ESCAPE); }, [](frmAbout& form) { CloseByItsBox(form); }};
    for (const auto& way : ways) {
        WhileOpen([&](frmAbout& form) {
            way(form);
            AwaitClosed(form);
        });
        EXPECT_EQ(OpenDialogs(), 0U);
    }
}
