#include "forms/prefs/frmSettings.h"

#include "app/Module1.h"
#include "forms/Guide.h"
#include "forms/LocalText.h"
#include "settings/TextIds.h"
#include "settings/registerModule.h"

namespace {

constexpr std::int16_t english = 0;
constexpr std::int16_t swedish = 100;

// The pages of TabStrip1.
constexpr int unitPage = 1;
constexpr int languagePage = 2;

constexpr std::array<LayoutRow, 12> rows{{
    {"Frame1", {195, 525, 5310, 1935}},
    {"Label1", {345, 690, 5010, 270}, "Frame1"},
    {"Option1(0)", {345, 1020, 5010, 270}, "Frame1"},
    {"Option1(1)", {345, 1320, 5010, 270}, "Frame1"},
    {"Label2", {345, 1695, 5010, 735}, "Frame1"},
    {"Frame2", {195, 525, 5310, 1935}},
    {"Label3", {345, 690, 5010, 270}, "Frame2"},
    {"Option2(0)", {345, 1020, 5010, 270}, "Frame2"},
    {"Option2(1)", {345, 1320, 5010, 270}, "Frame2"},
    {"addButton", {3180, 2655, 1125, 345}},
    {"cancelButton", {4410, 2655, 1125, 345}},
    {"TabStrip1", {165, 165, 5370, 2325}},
}};

constexpr FormLayout layout{.kind = FormKind::Dialog,
                            .width = 5700,
                            .height = 3165,
                            .rows = rows,
                            .defaultButton = "addButton",
                            .cancelButton = "cancelButton",
                            .firstFocus = "TabStrip1"};

} // namespace

const FormLayout& frmSettings::Layout() const
{
    return layout;
}

void frmSettings::Wire()
{
    On(TabStrip1.Click, &frmSettings::TabStrip1_Click);
    On(addButton.Click, &frmSettings::addButton_Click);
    On(cancelButton.Click, &frmSettings::cancelButton_Click);
}

void frmSettings::Form_Load()
{
    ApplyLanguage();
    // Kept on purpose: "Any other unit counts as the second".
    Option1[Option1[0].Caption() == Module1::distanceUnit ? 0 : 1].SetValue(true);
    Option2[Module1::languageOffset != english ? 1 : 0].SetValue(true);
    Frame1.SetVisible(true);
    Frame2.SetVisible(false);
}

void frmSettings::Form_Help()
{
    ShowGuide(*this, L"settings");
}

void frmSettings::TabStrip1_Click()
{
    const int page = TabStrip1.SelectedTab();
    Frame1.SetVisible(page == unitPage);
    Frame2.SetVisible(page == languagePage);
}

void frmSettings::addButton_Click()
{
    Module1::languageOffset = Option2[0].Value() ? english : swedish;
    registerModule::SaveRegistryValue(L"Settings", L"Language", Module1::languageOffset);
    // The text is in the language just chosen. Kept on purpose: "Any other unit counts as the second".
    Module1::distanceUnit = LocalText(Option1[0].Value() ? text::main::kilometres : text::main::milesOrMil);
    registerModule::SaveRegistryValue(L"Settings", L"Langdenhet", Module1::distanceUnit);
    Unload();
}

void frmSettings::cancelButton_Click()
{
    Unload();
}

void frmSettings::ApplyLanguage()
{
    SetCaption(LocalText(text::settings::caption));
    addButton.SetCaption(L"OK");
    cancelButton.SetCaption(LocalText(text::settings::cancel));
    TabStrip1.SetTabCaption(unitPage, LocalText(text::settings::unit));
    Label1.SetCaption(LocalText(text::settings::chooseUnit));
    Label2.SetCaption(LocalText(text::settings::routesAreNotRecalculated));
    Option1[0].SetCaption(LocalText(text::main::kilometres));
    Option1[1].SetCaption(LocalText(text::main::milesOrMil));
    TabStrip1.SetTabCaption(languagePage, LocalText(text::settings::language));
    Label3.SetCaption(LocalText(text::settings::chooseLanguage));
    Option2[0].SetCaption(LocalText(text::settings::english));
    Option2[1].SetCaption(LocalText(text::settings::swedish));
}
