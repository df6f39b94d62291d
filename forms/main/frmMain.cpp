// The main window: loading, texts, resizing and closing.

#include "forms/main/frmMain.h"

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/Guide.h"
#include "forms/LocalText.h"
#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Application.h"
#include "platform/windows/MsgBox.h"
#include "platform/windows/ShutdownReason.h"
#include "settings/TextIds.h"

#include <array>
#include <optional>
#include <utility>

namespace {

// Form_Resize sets the values that are 0 here.
constexpr std::array rows{
    LayoutRow{"Line3", {0, 0, 0, 15}},
    LayoutRow{"Line4", {0, 15, 0, 15}},
    LayoutRow{"TreeView1", {90, 75, 1740, 0}},
    LayoutRow{"Label6", {0, 30, 0, 255}},
    LayoutRow{"Label4", {0, 30, 0, 255}},
    LayoutRow{"Label5", {0, 30, 0, 255}},
    LayoutRow{"List1", {1920, 285, 0, 0}},
    LayoutRow{"Label1", {1920, 0, 0, 270}},
    LayoutRow{"addButton", {1920, 0, 1110, 315}},
    LayoutRow{"editButton", {3105, 0, 1110, 315}},
    LayoutRow{"deleteButton", {4290, 0, 1110, 315}},
    LayoutRow{"sbStatusBar", {0, 0, 0, 0}},
};

constexpr std::array menu{
    MenuRow{"mnuFile", nullptr},        MenuRow{"mnuRevert", "mnuFile"},    MenuRow{"mnuFileSaveAll", "mnuFile"},
    MenuRow{"mnuFileBar4", "mnuFile"},  MenuRow{"mnuFilePrint", "mnuFile"}, MenuRow{"mnuFileBar1", "mnuFile"},
    MenuRow{"mnuFileExit", "mnuFile"},  MenuRow{"mnuEdit", nullptr},        MenuRow{"mnuSettings", "mnuEdit"},
    MenuRow{"mnuUserInfo", "mnuEdit"},  MenuRow{"mnuHelp", nullptr},        MenuRow{"mnuWeb", "mnuHelp"},
    MenuRow{"mnuTavWeb", "mnuWeb"},     MenuRow{"mnuOther", "mnuWeb"},      MenuRow{"mnuHelpBar1", "mnuHelp"},
    MenuRow{"mnuHelpAbout", "mnuHelp"},
};

constexpr std::array keys{
    KeyRow{CommandKey::Enter, "editButton", "List1"},
    KeyRow{CommandKey::Delete, "deleteButton", "List1"},
    KeyRow{CommandKey::N, "addButton"},
    KeyRow{CommandKey::S, "mnuFileSaveAll"},
    KeyRow{CommandKey::P, "mnuFilePrint"},
};

constexpr FormLayout layout{
    .kind = FormKind::Main,
    .width = 10800,
    .height = 7500,
    .rows = rows,
    .menu = menu,
    .keys = keys,
    .firstFocus = "TreeView1",
};

constexpr int smallestWidth = 5700;
constexpr int smallestHeight = 4000;

} // namespace

const FormLayout& frmMain::Layout() const
{
    return layout;
}

void frmMain::Wire()
{
    On(TreeView1.NodeClick, &frmMain::TreeView1_NodeClick);
    On(List1.Click, &frmMain::List1_Click);
    On(List1.DblClick, &frmMain::List1_DblClick);
    On(addButton.Click, &frmMain::addButton_Click);
    On(editButton.Click, &frmMain::editButton_Click);
    On(deleteButton.Click, &frmMain::deleteButton_Click);
    On(mnuRevert.Click, &frmMain::mnuRevert_Click);
    On(mnuFileSaveAll.Click, &frmMain::mnuFileSaveAll_Click);
    On(mnuFilePrint.Click, &frmMain::mnuFilePrint_Click);
    On(mnuFileExit.Click, &frmMain::mnuFileExit_Click);
    On(mnuSettings.Click, &frmMain::mnuSettings_Click);
    On(mnuUserInfo.Click, &frmMain::mnuUserInfo_Click);
    On(mnuTavWeb.Click, &frmMain::mnuTavWeb_Click);
    On(mnuOther.Click, &frmMain::mnuOther_Click);
    On(mnuHelpAbout.Click, &frmMain::mnuHelpAbout_Click);
}

void frmMain::Form_Load()
{
    ApplyLanguage();
    SetCaption(ApplicationTitle());
    mnuTavWeb.SetCaption(ProductName());
    List1.SetFont({.face = L"Courier New", .points = 9});
    Label1.SetCaption(L"");
    RebuildJournalTree();
    EnableDayCommands(false);
    EnableUnsavedCommands(false);
}

void frmMain::ApplyLanguage()
{
    mnuFile.SetCaption(LocalText(text::main::file));
    mnuEdit.SetCaption(LocalText(text::main::edit));
    mnuHelp.SetCaption(LocalText(text::main::help));
    mnuRevert.SetCaption(LocalText(text::main::revert));
    mnuFileSaveAll.SetCaption(LocalText(text::main::save));
    mnuFilePrint.SetCaption(LocalText(text::main::print));
    mnuFileExit.SetCaption(LocalText(text::main::exit));
    mnuSettings.SetCaption(LocalText(text::main::settings));
    mnuUserInfo.SetCaption(LocalText(text::main::employeeInformation));
    mnuWeb.SetCaption(LocalText(text::main::onTheWeb));
    mnuOther.SetCaption(LocalText(text::main::otherPrograms));
    mnuHelpAbout.SetCaption(LocalText(text::main::about) + L" " + ProductName() + L"...");
    Label6.SetCaption(LocalText(text::main::date));
    Label4.SetCaption(Module1::distanceUnit);
    Label5.SetCaption(LocalText(text::main::route));
    deleteButton.SetCaption(LocalText(text::main::deleteDay));
    editButton.SetCaption(LocalText(text::main::editDay));
    addButton.SetCaption(LocalText(text::main::addDay));
    TreeView1.SetAccessibleName(LocalText(text::add::year) + L", " + LocalText(text::add::month));
    List1.SetAccessibleName(Label6.Caption() + L", " + Label4.Caption() + L", " + Label5.Caption());
}

void frmMain::Form_Resize()
{
    if (IsMinimised()) {
        return;
    }
    // Kept on purpose: "The window snaps back to its smallest size".
    if (Width() < smallestWidth) {
        SetWidth(smallestWidth);
    }
    if (Height() < smallestHeight) {
        SetHeight(smallestHeight);
    }
    const int width = Width();
    const int height = Height();
    List1.SetHeight(height - 1915 - 240);
    TreeView1.SetHeight(List1.Height() + 480);
    Label1.SetTop(List1.Top() + List1.Height());
    deleteButton.SetTop(List1.Top() + List1.Height() + 300);
    editButton.SetTop(deleteButton.Top());
    addButton.SetTop(deleteButton.Top());
    List1.SetWidth(width - 2255);
    Label1.SetWidth(List1.Width());
    PlaceHeadings();
    Line3.SetX2(width + 200);
    Line4.SetX2(width + 200);
    sbStatusBar.FollowForm();
}

void frmMain::PlaceHeadings()
{
    const int date = List1.LeftOfCharacter(0);
    const int endOfDate = List1.LeftOfCharacter(9);
    const int endOfDistance = List1.LeftOfCharacter(17);
    const int route = List1.LeftOfCharacter(18);
    Label6.Move({date, Label6.Top(), endOfDate - date, Label6.Height()});
    // The unit is right-aligned with the numbers, and may begin right after the heading of the dates.
    Label4.Move({endOfDate, Label4.Top(), endOfDistance - endOfDate, Label4.Height()});
    Label5.Move({route, Label5.Top(), List1.Width() - 1920, Label5.Height()});
}

void frmMain::Form_QueryUnload(bool& cancel, UnloadMode mode)
{
    if (!DataInterface::IsJournalChanged()) {
        return;
    }
    const std::wstring question = LocalText(text::main::saveLastChanges);
    const bool sessionEnds = mode == UnloadMode::WindowsIsClosing;
    std::optional<ShutdownReason> reason;
    if (sessionEnds) {
        reason.emplace(Handle(), question);
    }
    switch (MsgBox(question, MsgBoxButtons::YesNoCancel, MsgBoxIcon::Critical, 3)) {
    case MsgBoxResult::Yes:
        // If the save throws, the window stays open and nothing is lost.
        mnuFileSaveAll_Click();
        break;
    case MsgBoxResult::No:
        DataInterface::ClearJournalChanged();
        givenUpForSession_ = sessionEnds;
        break;
    default:
        cancel = true;
        break;
    }
}

void frmMain::Form_SessionGoesOn()
{
    if (std::exchange(givenUpForSession_, false)) {
        DataInterface::MarkJournalChanged();
    }
}

void frmMain::Form_Unload()
{
    UnloadInstance<frmAbout>();
    UnloadInstance<frmAdd>();
    UnloadInstance<frmEdit>();
    UnloadInstance<frmInterval>();
    UnloadInstance<frmSettings>();
    UnloadInstance<frmUserinfo>();
    // The other open forms. The first form is this one.
    const auto open = OpenForms();
    for (std::size_t index = open.size(); index-- > 1;) {
        open[index]->Unload();
    }
}

void frmMain::Form_Help()
{
    ShowGuide(*this, L"main-window");
}
