#include "forms/prefs/frmUserinfo.h"

#include "forms/Guide.h"
#include "forms/LocalText.h"
#include "platform/system/Conversions.h"
#include "platform/windows/SendKeys.h"
#include "settings/TextIds.h"
#include "settings/registerModule.h"

namespace {

constexpr const wchar_t* section = L"Userinfo";
constexpr const wchar_t* selectAll = L"{HOME}+{END}";
constexpr std::int16_t checked = 1;

constexpr std::array<LayoutRow, 10> rows{{
    {"Label1(0)", {165, 150, 4650, 270}},
    {"Text9", {165, 435, 4650, 345}},
    {"Label1(1)", {165, 915, 2250, 270}},
    {"Text1", {165, 1200, 2250, 345}},
    {"Label2", {2565, 915, 2250, 270}},
    {"Text2", {2565, 1200, 2250, 345}},
    {"Check1", {165, 1740, 4650, 270}},
    {"Text3", {165, 2055, 2250, 345}},
    {"cmdOK", {2460, 2640, 1125, 345}},
    {"cmdCancel", {3690, 2640, 1125, 345}},
}};

constexpr FormLayout layout{.kind = FormKind::Dialog,
                            .width = 4980,
                            .height = 3150,
                            .rows = rows,
                            .defaultButton = "cmdOK",
                            .cancelButton = "cmdCancel",
                            .firstFocus = "Text9"};

} // namespace

const FormLayout& frmUserinfo::Layout() const
{
    return layout;
}

void frmUserinfo::Wire()
{
    On(Text9.GotFocus, &frmUserinfo::Text9_GotFocus);
    On(Text1.GotFocus, &frmUserinfo::Text1_GotFocus);
    On(Text2.GotFocus, &frmUserinfo::Text2_GotFocus);
    On(Check1.Click, &frmUserinfo::Check1_Click);
    On(Text3.GotFocus, &frmUserinfo::Text3_GotFocus);
    On(cmdOK.Click, &frmUserinfo::cmdOK_Click);
    On(cmdCancel.Click, &frmUserinfo::cmdCancel_Click);
}

void frmUserinfo::Form_Load()
{
    ApplyLanguage();
    Text9.SetText(registerModule::GetRegistryValue(section, L"Company", L""));
    Text1.SetText(registerModule::GetRegistryValue(section, L"Name", L""));
    Text2.SetText(registerModule::GetRegistryValue(section, L"Surname", L""));
    Check1.SetValue(ToInt16(registerModule::GetRegistryValue(section, L"Aktiverat_personnummer", L"0")));
    ApplyNumberBoxState();
    Text3.SetText(registerModule::GetRegistryValue(section, L"Personnummer", L""));
}

void frmUserinfo::Form_Help()
{
    ShowGuide(*this, L"employee");
}

void frmUserinfo::Text9_GotFocus()
{
    SendKeys(selectAll);
}

void frmUserinfo::Text1_GotFocus()
{
    SendKeys(selectAll);
}

void frmUserinfo::Text2_GotFocus()
{
    SendKeys(selectAll);
}

void frmUserinfo::Check1_Click()
{
    ApplyNumberBoxState();
}

void frmUserinfo::Text3_GotFocus()
{
    SendKeys(selectAll);
}

void frmUserinfo::cmdOK_Click()
{
    // The number is stored also if the box is not checked.
    registerModule::SaveRegistryValue(section, L"Personnummer", Text3.Text());
    registerModule::SaveRegistryValue(section, L"Aktiverat_personnummer", Check1.Value());
    registerModule::SaveRegistryValue(section, L"Company", Text9.Text());
    registerModule::SaveRegistryValue(section, L"Name", Text1.Text());
    registerModule::SaveRegistryValue(section, L"Surname", Text2.Text());
    Unload();
}

void frmUserinfo::cmdCancel_Click()
{
    Unload();
}

void frmUserinfo::ApplyLanguage()
{
    SetCaption(LocalText(text::userinfo::caption));
    Label1[0].SetCaption(LocalText(text::userinfo::company));
    Label1[1].SetCaption(LocalText(text::userinfo::firstName));
    Label2.SetCaption(LocalText(text::userinfo::surname));
    Check1.SetCaption(LocalText(text::userinfo::useSocialSecurityNumber));
    cmdOK.SetCaption(L"OK");
    cmdCancel.SetCaption(LocalText(text::userinfo::cancel));
    Text3.SetAccessibleName(LocalText(text::print::socialSecurityNumber));
}

/// The box of the number is enabled if the check box is checked.
void frmUserinfo::ApplyNumberBoxState()
{
    const bool used = Check1.Value() == checked;
    Text3.SetEnabled(used);
    Text3.SetBackColor(used ? SystemColor::WindowBackground : SystemColor::ButtonFace);
}
