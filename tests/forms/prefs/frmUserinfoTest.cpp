#include "forms/prefs/frmUserinfo.h"
#include "platform/windows/UnhandledError.h"
#include "tests/forms/FormFixture.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/MessageBoxWatcher.h"

#include <array>

namespace {

constexpr const wchar_t* section = L"Userinfo";

class UserinfoDialog : public FormFixture {
protected:
    using Script = std::function<void(frmUserinfo&)>;
    static void WhileOpen(const Script& script) { FormFixture::WhileOpen<frmUserinfo>(script); }

    static void Close(const frmUserinfo& form, WORD key)
    {
        PressKey(key);
        AwaitClosed(form);
    }

    static bool AllIsSelected(const TextBox& box)
    {
        DWORD from = 1;
        DWORD to = 0;
        SendMessageW(box.Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return GetFocus() == box.Handle() && from == 0 && to == box.Text().size();
    }

    /// Keys take their way through the system: the text is selected a moment after the box got the focus.
    static void AwaitSelected(const TextBox& box)
    {
        Await([&] { return AllIsSelected(box); }, box.Name());
    }

    /// The colour that a box shows where it has no text.
    static COLORREF GroundOf(const TextBox& box)
    {
        UpdateWindow(box.Handle());
        RECT area{};
        GetClientRect(box.Handle(), &area);
        HDC surface = GetDC(box.Handle());
        const COLORREF color = GetPixel(surface, area.right - 4, area.bottom / 2);
        ReleaseDC(box.Handle(), surface);
        return color;
    }

    static void ExpectNumberBox(const frmUserinfo& form, bool enabled)
    {
        EXPECT_EQ(form.Text3.Enabled(), enabled);
        EXPECT_EQ(GroundOf(form.Text3), GetSysColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
    }

    static void FillStore()
    {
        Store(section, L"Company", L"Åkeriet AB");
        Store(section, L"Name", L"Eva");
        Store(section, L"Surname", L"Öberg");
        Store(section, L"Aktiverat_personnummer", L"1");
        Store(section, L"Personnummer", L"640823-3234");
    }

    static void TypeInto(const TextBox& box, const std::wstring& text)
    {
        ClickOn(box);
        AwaitSelected(box);
        Type(box, text);
        EXPECT_TRUE(box.Text() == text) << box.Name();
    }
};

} // namespace

TEST_F(UserinfoDialog, IsEmptyAndHasTheNumberGrey_WhenNothingIsStored)
{
    WhileOpen([](frmUserinfo& form) {
        EXPECT_EQ(form.Text9.Text(), L"");
        EXPECT_EQ(form.Text1.Text(), L"");
        EXPECT_EQ(form.Text2.Text(), L"");
        EXPECT_EQ(form.Text3.Text(), L"");
        EXPECT_EQ(form.Check1.Value(), 0);
        ExpectNumberBox(form, false);
    });
    EXPECT_FALSE(AnythingIsStored());
}

TEST_F(UserinfoDialog, HasItsTextsInEnglish)
{
    WhileOpen([](frmUserinfo& form) {
        EXPECT_EQ(form.Caption(), L"Employee information");
        EXPECT_EQ(form.Label1[0].Caption(), L"Company");
        EXPECT_EQ(form.Label1[1].Caption(), L"First name");
        EXPECT_EQ(form.Label2.Caption(), L"Surname");
        EXPECT_EQ(form.Check1.Caption(), L"Use social security number");
        EXPECT_EQ(form.cmdOK.Caption(), L"OK");
        EXPECT_EQ(form.cmdCancel.Caption(), L"Cancel");
    });
}

TEST_F(UserinfoDialog, HasItsTextsInSwedish)
{
    Module1::languageOffset = 100;
    WhileOpen([](frmUserinfo& form) {
        EXPECT_EQ(form.Caption(), L"Personinformation");
        EXPECT_EQ(form.Label1[0].Caption(), L"Företag");
        EXPECT_EQ(form.Label1[1].Caption(), L"Förnamn");
        EXPECT_EQ(form.Label2.Caption(), L"Efternamn");
        EXPECT_EQ(form.Check1.Caption(), L"Använd personnummer");
        EXPECT_EQ(form.cmdOK.Caption(), L"OK");
        EXPECT_EQ(form.cmdCancel.Caption(), L"Avbryt");
    });
}

TEST_F(UserinfoDialog, ShowsTheStoredValues)
{
    FillStore();
    WhileOpen([](frmUserinfo& form) {
        EXPECT_EQ(form.Text9.Text(), L"Åkeriet AB");
        EXPECT_EQ(form.Text1.Text(), L"Eva");
        EXPECT_EQ(form.Text2.Text(), L"Öberg");
        EXPECT_EQ(form.Check1.Value(), 1);
        EXPECT_EQ(form.Text3.Text(), L"640823-3234");
        ExpectNumberBox(form, true);
    });
}

TEST_F(UserinfoDialog, StoresTheTextAsItWasTyped)
{
    WhileOpen([](frmUserinfo& form) {
        TypeInto(form.Text9, L"  Ärlig & Co \"AB\" ");
        TypeInto(form.Text1, L"Åsa");
        TypeInto(form.Text2, L"af Ö");
        ClickOn(form.Check1);
        EXPECT_TRUE(form.Text3.Enabled());
        TypeInto(form.Text3, L"not a number");
        Close(form, VK_RETURN);
    });
    EXPECT_EQ(Stored(section, L"Company"), L"  Ärlig & Co \"AB\" ");
    EXPECT_EQ(Stored(section, L"Name"), L"Åsa");
    EXPECT_EQ(Stored(section, L"Surname"), L"af Ö");
    EXPECT_EQ(Stored(section, L"Aktiverat_personnummer"), L"1");
    EXPECT_EQ(Stored(section, L"Personnummer"), L"not a number");
}

TEST_F(UserinfoDialog, StoresEmptyFieldsAsEmptyTexts)
{
    FillStore();
    WhileOpen([](frmUserinfo& form) {
        for (const TextBox* box : {&form.Text1, &form.Text2, &form.Text9}) {
            ClickOn(*box);
            AwaitSelected(*box);
            PressKey(VK_DELETE);
            EXPECT_TRUE(box->Text().empty()) << box->Name();
        }
        ClickOn(form.cmdOK);
        AwaitClosed(form);
    });
    EXPECT_EQ(Stored(section, L"Company"), L"");
    EXPECT_EQ(Stored(section, L"Name"), L"");
    EXPECT_EQ(Stored(section, L"Surname"), L"");
    EXPECT_EQ(Stored(section, L"Personnummer"), L"640823-3234");
}

TEST_F(UserinfoDialog, KeepsANumberThatIsNotUsed)
{
    FillStore();
    WhileOpen([](frmUserinfo& form) {
        ClickOn(form.Check1);
        EXPECT_TRUE(!form.Text3.Enabled());
        ExpectNumberBox(form, false);
        EXPECT_EQ(form.Text3.Text(), L"640823-3234");
        Close(form, VK_RETURN);
    });
    EXPECT_EQ(Stored(section, L"Aktiverat_personnummer"), L"0");
    EXPECT_EQ(Stored(section, L"Personnummer"), L"640823-3234");

    WhileOpen([](frmUserinfo& form) {
        EXPECT_EQ(form.Check1.Value(), 0);
        EXPECT_EQ(form.Text3.Text(), L"640823-3234");
        ExpectNumberBox(form, false);
    });
}

TEST_F(UserinfoDialog, OpensTheNumberBoxBySpaceOnTheCheckBox)
{
    WhileOpen([](frmUserinfo& form) {
        form.Check1.SetFocus();
        PressKey(VK_SPACE);
        EXPECT_TRUE(form.Text3.Enabled());
        ExpectNumberBox(form, true);
        PressKey(VK_TAB);
        EXPECT_TRUE(HasFocus(form.Text3));
    });
}

TEST_F(UserinfoDialog, SelectsTheWholeTextOfABoxThatTheTabKeyReaches)
{
    FillStore();
    WhileOpen([](frmUserinfo& form) {
        AwaitSelected(form.Text9);
        for (const TextBox* box : {&form.Text1, &form.Text2}) {
            PressKey(VK_TAB);
            AwaitSelected(*box);
        }
        PressKey(VK_TAB);
        PressKey(VK_TAB);
        AwaitSelected(form.Text3);
        PressKey('N');
        EXPECT_TRUE(form.Text3.Text() == L"n") << "typing replaces it";
    });
}

TEST_F(UserinfoDialog, SelectsTheWholeTextOnShiftTab)
{
    FillStore();
    WhileOpen([](frmUserinfo& form) {
        AwaitSelected(form.Text9);
        PressKey(VK_END);
        PressKey(VK_TAB);
        AwaitSelected(form.Text1);
        PressKeyWith(VK_SHIFT, VK_TAB);
        AwaitSelected(form.Text9);
    });
}

TEST_F(UserinfoDialog, SelectsTheWholeTextWhileShiftIsStillHeld)
{
    FillStore();
    WhileOpen([](frmUserinfo& form) {
        AwaitSelected(form.Text9);
        PressKey(VK_END);
        PressKey(VK_TAB);
        AwaitSelected(form.Text1);
        for (const WORD held : {WORD{VK_LSHIFT}, WORD{VK_RSHIFT}}) {
            const WORD other = held == VK_LSHIFT ? VK_RSHIFT : VK_LSHIFT;
            form.Text1.SetFocus();
            HoldKey(held);
            PressKey(VK_TAB);
            AwaitSelected(form.Text9);
            EXPECT_TRUE(GetAsyncKeyState(held) < 0) << "the user still holds the key";
            EXPECT_FALSE(GetAsyncKeyState(other) < 0) << "and not the other one";
            ReleaseKey(held);
            EXPECT_FALSE(GetAsyncKeyState(VK_SHIFT) < 0) << "no Shift is down now";
        }
    });
}

TEST_F(UserinfoDialog, StoresNothingOnCancelEscAndCloseBox)
{
    const auto change = [](frmUserinfo& form) {
        TypeInto(form.Text9, L"Other");
        ClickOn(form.Check1);
        EXPECT_TRUE(form.Check1.Value() == 1);
    };
    WhileOpen([&](frmUserinfo& form) {
        change(form);
        ClickOn(form.cmdCancel);
        AwaitClosed(form);
    });
    WhileOpen([&](frmUserinfo& form) {
        EXPECT_EQ(form.Text9.Text(), L"") << "the dialog starts afresh";
        change(form);
        Close(form, VK_ESCAPE);
    });
    WhileOpen([&](frmUserinfo& form) {
        change(form);
        CloseByItsBox(form);
    });
    EXPECT_FALSE(AnythingIsStored());
}

TEST_F(UserinfoDialog, ReadsBackUpTo254Characters)
{
    Store(section, L"Company", std::wstring(254, L'a'));
    Store(section, L"Name", std::wstring(255, L'b'));
    Store(section, L"Surname", std::wstring(256, L'c'));
    WhileOpen([](frmUserinfo& form) {
        EXPECT_EQ(form.Text9.Text(), std::wstring(254, L'a'));
        EXPECT_EQ(form.Text1.Text(), L"");
        EXPECT_EQ(form.Text2.Text(), L"");
    });
}

TEST_F(UserinfoDialog, StoresLongTextsWhole)
{
    const std::wstring name(300, L'ö');
    WhileOpen([&](frmUserinfo& form) {
        TypeInto(form.Text1, name);
        Close(form, VK_RETURN);
    });
    EXPECT_EQ(Stored(section, L"Name"), name);
}

TEST_F(UserinfoDialog, ShowsNoMessageIfValuesCannotBeStored)
{
    RefuseToStore();
    const MessageBoxWatcher watcher;
    WhileOpen([](frmUserinfo& form) {
        TypeInto(form.Text9, L"Lost");
        Close(form, VK_RETURN);
    });
    EXPECT_EQ(Stored(section, L"Company"), std::nullopt);
    EXPECT_TRUE(watcher.Seen().empty());
}

TEST_F(UserinfoDialog, DisablesTheNumberForEveryStateButChecked)
{
    for (const wchar_t* state : {L"0", L"2", L"-1", L"0.4"}) {
        Store(section, L"Aktiverat_personnummer", state);
        WhileOpen([&](frmUserinfo& form) {
            EXPECT_FALSE(form.Text3.Enabled()) << testing::PrintToString(std::wstring(state));
        });
    }
}

TEST_F(UserinfoDialog, ShowsAnErrorAndStaysClosedIfTheStateIsNotANumber)
{
    FillStore();
    const MessageBoxWatcher watcher;
    Store(section, L"Aktiverat_personnummer", L"yes");
    Guarded([] { Instance<frmUserinfo>()->ShowModal(); });
    Store(section, L"Aktiverat_personnummer", L"");
    Guarded([] { Instance<frmUserinfo>()->ShowModal(); });
    Store(section, L"Aktiverat_personnummer", L"40000");
    Guarded([] { Instance<frmUserinfo>()->ShowModal(); });
    EXPECT_EQ(watcher.Texts(), (std::vector<std::wstring>{L"Run-time error '13':\r\n\r\nType mismatch",
                                                          L"Run-time error '13':\r\n\r\nType mismatch",
                                                          L"Run-time error '6':\r\n\r\nOverflow"}));
    EXPECT_EQ(OpenDialogs(), 0U);
    EXPECT_TRUE(IsWindowEnabled(Instance<PlainMainForm>()->Handle()));

    Store(section, L"Aktiverat_personnummer", L"1");
    WhileOpen(
        [](frmUserinfo& form) { EXPECT_EQ(form.Text9.Text(), L"Åkeriet AB") << "the next opening starts afresh"; });
}

TEST_F(UserinfoDialog, RaisesAnErrorForARegistryValueOfTypeDword)
{
    const DWORD one = 1;
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Velmora\\Tav\\Userinfo", L"Aktiverat_personnummer", REG_DWORD, &one,
                    sizeof one);
    EXPECT_EQ(ErrorOf([] { Instance<frmUserinfo>()->ShowModal(); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(UserinfoDialog, KeepsItsSizeWhenAnotherIsRequested)
{
    WhileOpen([](frmUserinfo& form) {
        const int width = form.Width();
        const int height = form.Height();
        SetWindowPos(form.Handle(), nullptr, 40, 50, 10, 10, SWP_NOZORDER);
        EXPECT_EQ(form.Width(), width);
        EXPECT_EQ(form.Height(), height);
        RECT place{};
        GetWindowRect(form.Handle(), &place);
        EXPECT_EQ(place.left, 40) << "but it can be moved";
        EXPECT_EQ(place.top, 50) << "but it can be moved";
    });
}
