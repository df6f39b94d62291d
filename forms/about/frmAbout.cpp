#include "forms/about/frmAbout.h"

#include "forms/Guide.h"
#include "forms/LocalText.h"
#include "forms/Product.h"
#include "platform/system/Application.h"
#include "platform/system/Conversions.h"
#include "platform/system/Shell.h"
#include "platform/windows/ModalOwner.h"
#include "platform/windows/MsgBox.h"
#include "settings/TextIds.h"

#include <array>

namespace {

constexpr std::array<LayoutRow, 7> rows{{
    {"Image1", {0, 0, 4800, 1920}},
    {"Label2", {165, 2070, 4470, 435}},
    {"Label4", {165, 2520, 4470, 270}},
    {"MinVersion", {165, 2895, 4470, 510}},
    {"lblDescription", {165, 3480, 4470, 270}},
    {"Label3", {165, 3915, 2850, 270}},
    {"cmdOK", {3510, 3870, 1125, 345}},
}};

constexpr std::array keys{
    KeyRow{CommandKey::Enter, "Label3", "Label3"},
    KeyRow{CommandKey::Space, "Label3", "Label3"},
};

constexpr FormLayout layout{.kind = FormKind::Dialog,
                            .width = 4800,
                            .height = 4380,
                            .rows = rows,
                            .keys = keys,
                            .defaultButton = "cmdOK",
                            .cancelButton = "cmdOK",
                            .firstFocus = "cmdOK"};

} // namespace

const FormLayout& frmAbout::Layout() const
{
    return layout;
}

void frmAbout::Wire()
{
    On(Label3.MouseMove, &frmAbout::Label3_MouseMove);
    On(Label3.Click, &frmAbout::Label3_Click);
    On(cmdOK.Click, &frmAbout::cmdOK_Click);
}

void frmAbout::Form_Load()
{
    Label2.SetFont({.face = L"", .points = 16, .bold = true});
    Label2.SetCaption(ProductName());
    Label4.SetCaption(product::longName);
    lblDescription.SetCaption(product::notice);
    // Kept on purpose: "The link shows one address and opens another".
    Label3.SetCaption(FromUserCodePage(product::makerHomePage));
    Label3.SetForeColor(SystemColor::Link);
    Label3.FitToText();
    cmdOK.SetCaption(L"OK");

    const Version version = VersionNumbers();
    MinVersion.SetCaption(L"Version " + ToText(version.major) + L"." + ToText(version.minor) + L"\r\nBuild #" +
                          ToText(version.revision));
}

void frmAbout::Form_Activate()
{
    SetCaption(LocalText(text::about::caption) + L" " + ApplicationTitle());
    Label3.SetMouseIcon(ODOMIRA_HAND_CURSOR);
}

void frmAbout::Form_MouseMove()
{
    UnderlineLink(false);
}

void frmAbout::Form_Help()
{
    ShowGuide(*this, L"about");
}

/// Kept on purpose: "The link stays underlined".
void frmAbout::Label3_MouseMove()
{
    UnderlineLink(true);
}

void frmAbout::Label3_Click()
{
    if (!AskOverForm([this] { return ShellOpen(Handle(), product::homePage); })) {
        // The same words in every language. Kept on purpose: "Texts stay as they are".
        MsgBox(L"Label3_Click: ShellExecute ERROR.\r\nCouldn't open browser. Please manually goto the adress:\r\n" +
               FromUserCodePage(product::homePage));
    }
}

void frmAbout::cmdOK_Click()
{
    Unload();
}

void frmAbout::UnderlineLink(bool underlined)
{
    ControlFont font = Label3.Font();
    if (font.underline != underlined) {
        font.underline = underlined;
        Label3.SetFont(font);
    }
}
