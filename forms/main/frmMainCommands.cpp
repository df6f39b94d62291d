// The buttons and menu commands of the main window.

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/LocalText.h"
#include "forms/Product.h"
#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/main/DayLine.h"
#include "forms/main/frmMain.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Shell.h"
#include "platform/windows/ModalOwner.h"
#include "platform/windows/MsgBox.h"
#include "platform/windows/UnhandledError.h"
#include "settings/TextIds.h"

namespace {

/// Unloads a dialog at the end of a command, also after an exception.
template <class T>
class UnloadedAtEnd {
public:
    UnloadedAtEnd() = default;
    UnloadedAtEnd(const UnloadedAtEnd&) = delete;
    UnloadedAtEnd& operator=(const UnloadedAtEnd&) = delete;
    ~UnloadedAtEnd()
    {
        Guarded([] { UnloadInstance<T>(); });
    }
};

bool ConfirmedByUser(const std::wstring& question)
{
    return MsgBox(question, MsgBoxButtons::YesNo, MsgBoxIcon::Critical, 2) == MsgBoxResult::Yes;
}

} // namespace

void frmMain::addButton_Click()
{
    const UnloadedAtEnd<frmAdd> unloaded;
    if (List1.ListCount() == 0) {
        Instance<frmAdd>()->showMeNow(0, 0);
    } else {
        // All lines are of the listed month. There may be no selected line.
        const DayEntry first = EntryOfDayLine(List1.List(0));
        Instance<frmAdd>()->showMeNow(first.year, first.month);
    }
    if (const auto dialog = Instance<frmAdd>(); dialog->hasChanged()) {
        ShowChangedDay(dialog->getYear(), dialog->getMonth(), dialog->getDay());
    }
}

void frmMain::editButton_Click()
{
    if (!RequireSelectedDay(text::main::chooseDayToEdit)) {
        return;
    }
    const UnloadedAtEnd<frmEdit> unloaded;
    const DayEntry chosen = EntryOfDayLine(List1.List(List1.ListIndex()));
    Instance<frmEdit>()->showMeNow(chosen.year, chosen.month, chosen.day, chosen.distance, chosen.route);
    if (const auto dialog = Instance<frmEdit>(); dialog->hasChanged()) {
        ShowChangedDay(dialog->getYear(), dialog->getMonth(), dialog->getDay());
    }
}

void frmMain::deleteButton_Click()
{
    if (!RequireSelectedDay(text::main::chooseDayToDelete) || !ConfirmedByUser(LocalText(text::main::confirmDelete))) {
        return;
    }
    const DayEntry chosen = EntryOfDayLine(List1.List(List1.ListIndex()));
    DataInterface::DeleteDay(chosen.year, chosen.month, chosen.day);
    ShowChangedMonth(chosen.year, chosen.month);
    // No line is selected now. Kept on purpose: "A year leaves the buttons enabled".
    EnableUnsavedCommands(true);
}

bool frmMain::RequireSelectedDay(std::int16_t messageId)
{
    if (List1.ListIndex() >= 0) {
        return true;
    }
    MsgBox(LocalText(messageId));
    List1.SetFocus();
    return false;
}

void frmMain::ShowChangedMonth(std::int16_t year, std::int16_t month)
{
    const PaintedOnce list(List1);
    const PaintedOnce tree(TreeView1);
    RebuildJournalTree();
    ShowMonthDays(year, month);
    SelectMonthNode(year, month);
}

void frmMain::ShowChangedDay(std::int16_t year, std::int16_t month, std::int16_t day)
{
    const PaintedOnce list(List1);
    ShowChangedMonth(year, month);
    SelectDayInList(day);
    EnableUnsavedCommands(true);
}

void frmMain::EnableUnsavedCommands(bool enabled)
{
    mnuRevert.SetEnabled(enabled);
    mnuFileSaveAll.SetEnabled(enabled);
}

void frmMain::mnuRevert_Click()
{
    if (!ConfirmedByUser(LocalText(text::main::confirmRevert))) {
        return;
    }
    DataInterface::LoadJournal();
    givenUpForSession_ = false;
    RebuildJournalTree();
    EnableUnsavedCommands(false);
}

void frmMain::mnuFileSaveAll_Click()
{
    DataInterface::SaveJournal();
    givenUpForSession_ = false;
    EnableUnsavedCommands(false);
}

void frmMain::mnuFilePrint_Click()
{
    Instance<frmInterval>()->ShowModal();
}

void frmMain::mnuFileExit_Click()
{
    Unload();
}

void frmMain::mnuSettings_Click()
{
    Instance<frmSettings>()->ShowModal();
    ApplyLanguage();
    RelabelUnitOfTotal();
}

void frmMain::RelabelUnitOfTotal()
{
    // Kept on purpose: "The total keeps its number and word".
    const std::wstring total = Label1.Caption();
    if (total.empty()) {
        return;
    }
    std::size_t unitLength = 5;
    if (total.back() == L'l') {
        unitLength = 3;
    } else if (total.back() != L's') {
        unitLength = 2;
    }
    const std::size_t kept = total.size() > unitLength ? total.size() - unitLength : 0;
    Label1.SetCaption(total.substr(0, kept) + Module1::distanceUnit);
}

void frmMain::mnuUserInfo_Click()
{
    Instance<frmUserinfo>()->ShowModal();
}

void frmMain::mnuTavWeb_Click()
{
    OpenWebPage(product::homePage);
}

void frmMain::mnuOther_Click()
{
    OpenWebPage(product::makerHomePage);
}

void frmMain::OpenWebPage(const std::string& address)
{
    if (AskOverForm([&] { return ShellOpen(Handle(), address); })) {
        return;
    }
    // Kept on purpose: "A missing browser shows a missing text".
    constexpr std::int16_t noBrowserText = 10034;
    const std::wstring wideAddress(address.begin(), address.end());
    MsgBox(LocalText(noBrowserText) + L":\r\n\r\n" + wideAddress);
}

void frmMain::mnuHelpAbout_Click()
{
    Instance<frmAbout>()->ShowModal();
}
