#include "forms/prefs/frmSettings.h"
#include "tests/forms/FormFixture.h"
#include "tests/support/ErrorOf.h"

#include <commctrl.h>

#include <array>

namespace {

constexpr std::int16_t english = 0;
constexpr std::int16_t swedish = 100;

class SettingsDialog : public FormFixture {
protected:
    using Script = std::function<void(frmSettings&)>;
    static void WhileOpen(const Script& script) { FormFixture::WhileOpen<frmSettings>(script); }

    static bool ShowsUnitPage(const frmSettings& form)
    {
        const bool unit = IsWindowVisible(form.Option1[0].Handle()) != FALSE;
        const bool language = IsWindowVisible(form.Option2[0].Handle()) != FALSE;
        EXPECT_NE(unit, language) << "exactly one page";
        return unit;
    }

    static void ClickTab(const frmSettings& form, int tab)
    {
        RECT place{};
        SendMessageW(form.TabStrip1.Handle(), TCM_GETITEMRECT, static_cast<WPARAM>(tab - 1),
                     reinterpret_cast<LPARAM>(&place));
        ClickAt(form.TabStrip1.Handle(), {(place.left + place.right) / 2, (place.top + place.bottom) / 2});
        EXPECT_TRUE(form.TabStrip1.SelectedTab() == tab);
    }

    /// Chooses a unit and a language with the mouse.
    static void Choose(frmSettings& form, std::size_t unit, std::size_t language)
    {
        ClickOn(form.Option1[unit]);
        EXPECT_TRUE(form.Option1[unit].Value());
        ClickTab(form, 2);
        ClickOn(form.Option2[language]);
        EXPECT_TRUE(form.Option2[language].Value());
    }

    static void PressOkWith(std::size_t unit, std::size_t language)
    {
        WhileOpen([&](frmSettings& form) {
            Choose(form, unit, language);
            ClickOn(form.addButton);
            AwaitClosed(form);
        });
    }

    static void PressOkUnchanged()
    {
        WhileOpen([&](frmSettings& form) {
            PressKey(VK_RETURN);
            AwaitClosed(form);
        });
    }

    static void ExpectUntouched()
    {
        EXPECT_FALSE(AnythingIsStored());
        EXPECT_EQ(Module1::languageOffset, english);
        EXPECT_EQ(Module1::distanceUnit, L"km");
    }
};

} // namespace

TEST_F(SettingsDialog, OpensOnTheUnitPageWithKilometresAndEnglish_WhenNothingIsStored)
{
    WhileOpen([](frmSettings& form) {
        EXPECT_TRUE(ShowsUnitPage(form));
        EXPECT_TRUE(form.Option1[0].Value());
        EXPECT_FALSE(form.Option1[1].Value());
        EXPECT_TRUE(form.Option2[0].Value());
        EXPECT_FALSE(form.Option2[1].Value());
    });
}

TEST_F(SettingsDialog, HasItsTextsInEnglish)
{
    WhileOpen([](frmSettings& form) {
        EXPECT_EQ(form.Caption(), L"Settings");
        EXPECT_EQ(form.TabStrip1.TabCaption(1), L"Unit");
        EXPECT_EQ(form.TabStrip1.TabCaption(2), L"Language");
        EXPECT_EQ(form.Label1.Caption(), L"Choose the unit you want the program to work with:");
        EXPECT_EQ(form.Label2.Caption(), L"Note that the earlier entered routes won't be recalculated on unit "
                                         L"change. Every route must be recalculated by hand.");
        EXPECT_EQ(form.Option1[0].Caption(), L"km");
        EXPECT_EQ(form.Option1[1].Caption(), L"miles");
        EXPECT_EQ(form.Label3.Caption(), L"Choose the language in which the program will run:");
        EXPECT_EQ(form.Option2[0].Caption(), L"English (Engelska)");
        EXPECT_EQ(form.Option2[1].Caption(), L"Swedish (Svenska)");
        EXPECT_EQ(form.addButton.Caption(), L"OK");
        EXPECT_EQ(form.cancelButton.Caption(), L"Cancel");
    });
}

TEST_F(SettingsDialog, HasItsTextsInSwedish)
{
    Module1::languageOffset = swedish;
    WhileOpen([](frmSettings& form) {
        EXPECT_EQ(form.Caption(), L"Inställningar");
        EXPECT_EQ(form.TabStrip1.TabCaption(1), L"Enhet");
        EXPECT_EQ(form.TabStrip1.TabCaption(2), L"Språk");
        EXPECT_EQ(form.Label1.Caption(), L"Välj den enhet du vill att programmet skall arbeta i:");
        EXPECT_EQ(form.Label2.Caption(), L"Observera att de tidigare angivna dagarnas sträckor ej räknas om vid "
                                         L"enhetsbyte. Varje enskild dag måste räknas om för hand.");
        EXPECT_EQ(form.Option1[0].Caption(), L"km");
        EXPECT_EQ(form.Option1[1].Caption(), L"mil");
        EXPECT_EQ(form.Label3.Caption(), L"Välj det språk du vill att programmet skall arbeta i:");
        EXPECT_EQ(form.Option2[0].Caption(), L"Engelska (English)");
        EXPECT_EQ(form.Option2[1].Caption(), L"Svenska (Swedish)");
        EXPECT_EQ(form.addButton.Caption(), L"OK");
        EXPECT_EQ(form.cancelButton.Caption(), L"Avbryt");
    });
}

TEST_F(SettingsDialog, SelectsTheSecondUnitForAnyOtherText)
{
    for (const wchar_t* unit : {L"miles", L"mil", L"KM", L"km ", L""}) {
        Module1::distanceUnit = unit;
        WhileOpen([&](frmSettings& form) {
            EXPECT_FALSE(form.Option1[0].Value()) << testing::PrintToString(std::wstring(unit));
            EXPECT_TRUE(form.Option1[1].Value()) << testing::PrintToString(std::wstring(unit));
        });
    }
}

TEST_F(SettingsDialog, SelectsSwedishIfItIsTheLanguageOfTheProgram)
{
    Module1::languageOffset = swedish;
    WhileOpen([](frmSettings& form) {
        EXPECT_FALSE(form.Option2[0].Value());
        EXPECT_TRUE(form.Option2[1].Value());
    });
}

TEST_F(SettingsDialog, DoesNotOpenInALanguageThatHasNoTexts)
{
    Module1::languageOffset = 7;
    EXPECT_EQ(ErrorOf([] { Instance<frmSettings>()->ShowModal(); }), ErrorNumber::ResourceNotFound);
    EXPECT_EQ(OpenDialogs(), 0U);
    EXPECT_TRUE(IsWindowEnabled(Instance<PlainMainForm>()->Handle()));
}

TEST_F(SettingsDialog, TurnsItsPagesByTheTabs)
{
    WhileOpen([](frmSettings& form) {
        ClickTab(form, 2);
        EXPECT_FALSE(ShowsUnitPage(form));
        ClickTab(form, 2);
        EXPECT_FALSE(ShowsUnitPage(form)) << "a click on the tab that is chosen already";
        ClickTab(form, 1);
        EXPECT_TRUE(ShowsUnitPage(form));
        ClickTab(form, 1);
        EXPECT_TRUE(ShowsUnitPage(form)) << "a click on the tab that is chosen already";
    });
}

TEST_F(SettingsDialog, TurnsItsPagesByCtrlTabAndPutsTheFocusOnTheNewPage)
{
    WhileOpen([](frmSettings& form) {
        PressKey(VK_TAB);
        EXPECT_TRUE(HasFocus(form.Option1[0]));
        PressKeyWith(VK_CONTROL, VK_TAB);
        EXPECT_TRUE(HasFocus(form.Option2[0]));
        EXPECT_FALSE(ShowsUnitPage(form));
        PressKeyWith(VK_CONTROL, VK_TAB);
        EXPECT_TRUE(HasFocus(form.Option1[0])) << "after the last page comes the first";
        EXPECT_TRUE(ShowsUnitPage(form));
    });
}

TEST_F(SettingsDialog, WalksThroughOneQuestionByTheArrowKeys)
{
    WhileOpen([](frmSettings& form) {
        PressKey(VK_TAB);
        PressKey(VK_DOWN);
        EXPECT_TRUE(form.Option1[1].Value() && !form.Option1[0].Value());
        PressKey(VK_DOWN);
        EXPECT_TRUE(form.Option1[0].Value() && !form.Option1[1].Value());
        EXPECT_TRUE(form.Option2[0].Value()) << "the other question is left alone";
    });
}

TEST_F(SettingsDialog, WalksFromTheTabsToTheChoiceAndTheButtonsByTheTabKey)
{
    Module1::distanceUnit = L"miles";
    WhileOpen([](frmSettings& form) {
        const std::array<const Control*, 5> order{&form.TabStrip1, &form.Option1[1], &form.addButton,
                                                  &form.cancelButton, &form.TabStrip1};
        for (const Control* control : order) {
            EXPECT_TRUE(HasFocus(*control)) << control->Name();
            PressKey(VK_TAB);
        }
    });
}

TEST_F(SettingsDialog, StoresTheSecondUnitByItsEnglishText)
{
    PressOkWith(1, 0);
    EXPECT_EQ(Module1::languageOffset, english);
    EXPECT_EQ(Module1::distanceUnit, L"miles");
    EXPECT_EQ(Stored(L"Settings", L"Language"), L"0");
    EXPECT_EQ(Stored(L"Settings", L"Langdenhet"), L"miles");
}

TEST_F(SettingsDialog, StoresTheUnitInTheLanguageJustChosen)
{
    PressOkWith(1, 1);
    EXPECT_EQ(Module1::languageOffset, swedish);
    EXPECT_EQ(Module1::distanceUnit, L"mil");
    EXPECT_EQ(Stored(L"Settings", L"Language"), L"100");
    EXPECT_EQ(Stored(L"Settings", L"Langdenhet"), L"mil");
}

TEST_F(SettingsDialog, ChangesBackToEnglishAndKilometres)
{
    Module1::languageOffset = swedish;
    Module1::distanceUnit = L"mil";
    PressOkWith(0, 0);
    EXPECT_EQ(Module1::languageOffset, english);
    EXPECT_EQ(Module1::distanceUnit, L"km");
    EXPECT_EQ(Stored(L"Settings", L"Language"), L"0");
    EXPECT_EQ(Stored(L"Settings", L"Langdenhet"), L"km");
}

TEST_F(SettingsDialog, TurnsMilesIntoMil_WhenConfirmedUnchangedInSwedish)
{
    Module1::languageOffset = swedish;
    Module1::distanceUnit = L"miles";
    PressOkUnchanged();
    EXPECT_EQ(Module1::distanceUnit, L"mil");
    EXPECT_EQ(Stored(L"Settings", L"Langdenhet"), L"mil");
    EXPECT_EQ(Stored(L"Settings", L"Language"), L"100");
}

TEST_F(SettingsDialog, OpensInTheNewLanguage)
{
    PressOkWith(1, 1);
    WhileOpen([](frmSettings& form) {
        EXPECT_EQ(form.Caption(), L"Inställningar");
        EXPECT_TRUE(ShowsUnitPage(form));
        EXPECT_TRUE(form.Option1[1].Value());
        EXPECT_TRUE(form.Option2[1].Value());
    });
}

TEST_F(SettingsDialog, KeepsItsOwnTextsUntilItIsClosed)
{
    WhileOpen([](frmSettings& form) {
        Choose(form, 1, 1);
        EXPECT_EQ(form.Option1[1].Caption(), L"miles");
        EXPECT_EQ(form.cancelButton.Caption(), L"Cancel");
    });
}

TEST_F(SettingsDialog, ChangesThePrograms_EvenWhenNothingCanBeStored)
{
    RefuseToStore();
    PressOkWith(1, 1);
    EXPECT_EQ(Stored(L"Settings", L"Language"), std::nullopt);
    EXPECT_EQ(Module1::languageOffset, swedish);
    EXPECT_EQ(Module1::distanceUnit, L"mil");
}

TEST_F(SettingsDialog, ChangesNothingOnCancel)
{
    WhileOpen([](frmSettings& form) {
        Choose(form, 1, 1);
        ClickOn(form.cancelButton);
        AwaitClosed(form);
    });
    ExpectUntouched();
}

TEST_F(SettingsDialog, ChangesNothingOnEsc)
{
    WhileOpen([](frmSettings& form) {
        Choose(form, 1, 1);
        PressKey(VK_ESCAPE);
        AwaitClosed(form);
    });
    ExpectUntouched();
}

TEST_F(SettingsDialog, ChangesNothingWhenClosedByItsBox)
{
    WhileOpen([](frmSettings& form) {
        Choose(form, 1, 1);
        CloseByItsBox(form);
    });
    ExpectUntouched();
}

TEST_F(SettingsDialog, BelongsToTheMainWindowAndKeepsItFromInput)
{
    WhileOpen([](frmSettings& form) {
        HWND mainWindow = Instance<PlainMainForm>()->Handle();
        EXPECT_EQ(GetWindow(form.Handle(), GW_OWNER), mainWindow);
        EXPECT_FALSE(IsWindowEnabled(mainWindow));
    });
    EXPECT_TRUE(IsWindowEnabled(Instance<PlainMainForm>()->Handle()));
    EXPECT_EQ(GetActiveWindow(), Instance<PlainMainForm>()->Handle());
}
