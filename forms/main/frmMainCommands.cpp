// What the buttons and menu commands of the main window do.

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
#include "platform/MsgBox.h"
#include "platform/Shell.h"
#include "platform/UnhandledError.h"
#include "settings/TextIds.h"

namespace {

/// Unloads a dialog when a command is done with it, also when an error ends the command: the next opening starts
/// afresh.
template <class T>
class UnloadedAtEnd {
public:
    UnloadedAtEnd() = default;
    UnloadedAtEnd(const UnloadedAtEnd&) = delete;
    UnloadedAtEnd& operator=(const UnloadedAtEnd&) = delete;
    ~UnloadedAtEnd()
    {
        Guarded([] { UnloadThe<T>(); });
    }
};

bool ConfirmedByUser(const std::wstring& question)
{
    return MsgBox(question, MsgBoxButtons::YesNo, MsgBoxIcon::Critical, 2) != MsgBoxResult::No;
}

} // namespace

void frmMain::addButton_Click()
{
    const UnloadedAtEnd<frmAdd> unloaded;
    if (List1.ListCount() == 0) {
        The<frmAdd>()->showMeNow(0, 0);
    } else {
        // The month on show is that of any line; the chosen one may be none.
        const DayEntry first = EntryOfDayLine(List1.List(0));
        The<frmAdd>()->showMeNow(first.year, first.month);
    }
    if (const auto dialog = The<frmAdd>(); dialog->hasChanged()) {
        ShowChangedDay(dialog->getYear(), dialog->getMonth(), dialog->getDay());
    }
}

void frmMain::editButton_Click()
{
    if (NoDayIsChosen(text::main::chooseDayToEdit)) {
        return;
    }
    const UnloadedAtEnd<frmEdit> unloaded;
    const DayEntry chosen = EntryOfDayLine(List1.List(List1.ListIndex()));
    The<frmEdit>()->showMeNow(chosen.year, chosen.month, chosen.day, chosen.distance, chosen.route);
    if (const auto dialog = The<frmEdit>(); dialog->hasChanged()) {
        ShowChangedDay(dialog->getYear(), dialog->getMonth(), dialog->getDay());
    }
}

void frmMain::deleteButton_Click()
{
    if (NoDayIsChosen(text::main::chooseDayToDelete) || !ConfirmedByUser(LocalText(text::main::confirmDelete))) {
        return;
    }
    const DayEntry chosen = EntryOfDayLine(List1.List(List1.ListIndex()));
    DataInterface::DeleteDay(chosen.year, chosen.month, chosen.day);
    RebuildJournalTree();
    ShowMonthDays(chosen.year, chosen.month);
    SelectMonthNode(chosen.year, chosen.month);
    // No line is chosen now and the buttons stay enabled: the next press asks the user to choose a day.
    EnableUnsavedCommands(true);
}

bool frmMain::NoDayIsChosen(std::int16_t messageId)
{
    if (List1.ListIndex() >= 0) {
        return false;
    }
    MsgBox(LocalText(messageId));
    List1.SetFocus();
    return true;
}

void frmMain::ShowChangedDay(std::int16_t year, std::int16_t month, std::int16_t day)
{
    RebuildJournalTree();
    ShowMonthDays(year, month);
    SelectMonthNode(year, month);
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
    RebuildJournalTree();
    EnableUnsavedCommands(false);
}

void frmMain::mnuFileSaveAll_Click()
{
    DataInterface::SaveJournal();
    EnableUnsavedCommands(false);
}

void frmMain::mnuFilePrint_Click()
{
    The<frmInterval>()->ShowModal();
}

void frmMain::mnuFileExit_Click()
{
    Unload();
}

void frmMain::mnuSettings_Click()
{
    The<frmSettings>()->ShowModal();
    if (!IsLoaded()) {
        return; // the user's session has ended meanwhile, and this window with it
    }
    ApplyLanguage();
    RelabelUnitOfTotal();
}

void frmMain::RelabelUnitOfTotal()
{
    // The number stays as it is, and so does the word in front of it: only the unit at the end is exchanged, its length
    // told by its last letter: "mil", "km", "miles".
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
    The<frmUserinfo>()->ShowModal();
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
    if (ShellOpen(*this, address)) {
        return;
    }
    // The message's text would be number 10034, which the table does not have: the user is told that it is missing.
    constexpr std::int16_t noBrowserText = 10034;
    const std::wstring wideAddress(address.begin(), address.end());
    MsgBox(LocalText(noBrowserText) + L":\r\n\r\n" + wideAddress);
}

void frmMain::mnuHelpAbout_Click()
{
    The<frmAbout>()->ShowModal();
}
