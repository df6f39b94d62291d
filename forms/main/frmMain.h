#pragma once

#include "platform/Controls.h"
#include "platform/Form.h"
#include "platform/Menu.h"
#include "platform/PrinterDialog.h"

#include <cstdint>
#include <string>

/// The main window: the journal as a tree of years and months beside the days of one month, and every command of the
/// program. It shows the journal store as it is and keeps nothing of it: which day is chosen is read back from the
/// chosen line of the list.
class frmMain : public Form {
public:
    const FormLayout& Layout() const override;

    Line Line3{*this, "Line3", Line::Shade::Shadow};
    Line Line4{*this, "Line4", Line::Shade::Highlight};
    TreeView TreeView1{*this, "TreeView1"};
    Label Label6{*this, "Label6"};                          ///< heading of the dates
    Label Label4{*this, "Label4", Label::Alignment::Right}; ///< heading of the distances: the unit
    Label Label5{*this, "Label5"};                          ///< heading of the routes
    ListBox List1{*this, "List1"};
    Label Label1{*this, "Label1"}; ///< the month's total
    CommandButton addButton{*this, "addButton"};
    CommandButton editButton{*this, "editButton"};
    CommandButton deleteButton{*this, "deleteButton"};
    StatusBar sbStatusBar{*this, "sbStatusBar"};
    PrinterDialog dlgCommonDialog; ///< on the form, used by none of its commands: printing brings its own

    MenuItem mnuFile{*this, "mnuFile"};
    MenuItem mnuRevert{*this, "mnuRevert"};
    MenuItem mnuFileSaveAll{*this, "mnuFileSaveAll"};
    MenuItem mnuFileBar4{*this, "mnuFileBar4", MenuItem::Kind::Separator};
    MenuItem mnuFilePrint{*this, "mnuFilePrint"};
    MenuItem mnuFileBar1{*this, "mnuFileBar1", MenuItem::Kind::Separator};
    MenuItem mnuFileExit{*this, "mnuFileExit"};
    MenuItem mnuEdit{*this, "mnuEdit"};
    MenuItem mnuSettings{*this, "mnuSettings"};
    MenuItem mnuUserInfo{*this, "mnuUserInfo"};
    MenuItem mnuHelp{*this, "mnuHelp"};
    MenuItem mnuWeb{*this, "mnuWeb"};
    MenuItem mnuTavWeb{*this, "mnuTavWeb"};
    MenuItem mnuOther{*this, "mnuOther"};
    MenuItem mnuHelpBar1{*this, "mnuHelpBar1", MenuItem::Kind::Separator};
    MenuItem mnuHelpAbout{*this, "mnuHelpAbout"};

protected:
    void Wire() override;

    // The window: frmMain.cpp
    void Form_Load() override;
    void Form_Resize() override;
    void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
    void Form_Unload() override;

    // The tree and the list: frmMainJournal.cpp
    void TreeView1_NodeClick(int node);
    void List1_Click();
    void List1_DblClick();

    // The commands: frmMainCommands.cpp
    void addButton_Click();
    void editButton_Click();
    void deleteButton_Click();
    void mnuRevert_Click();
    void mnuFileSaveAll_Click();
    void mnuFilePrint_Click();
    void mnuFileExit_Click();
    void mnuSettings_Click();
    void mnuUserInfo_Click();
    void mnuTavWeb_Click();
    void mnuOther_Click();
    void mnuHelpAbout_Click();

private:
    void ApplyLanguage();
    /// Puts each heading over its column, whatever the width of a character is on this screen.
    void PlaceHeadings();

    /// Builds the tree anew from the journal and lists the first month of the first year.
    void FillJournalTree();
    /// The same; a month that the file has and the calendar lacks is told to the user and stops the tree there, not the
    /// program: saving keeps every day of the journal, shown or not.
    void RebuildJournalTree();
    /// Lists the days of a month, latest first, and their total. Leaves tree and buttons as they are.
    void ShowMonthDays(std::int16_t year, std::int16_t month);
    /// Marks the month's node, without the consequences of a click.
    void SelectMonthNode(std::int16_t year, std::int16_t month);
    /// Chooses the line of a day; leaves the choice as it is when no line has it.
    void SelectDayInList(std::int16_t day);

    /// After a dialog changed the journal: shows the month of the day it wrote, that day chosen.
    void ShowChangedDay(std::int16_t year, std::int16_t month, std::int16_t day);
    void EnableUnsavedCommands(bool enabled);
    void EnableDayCommands(bool enabled);
    /// Tells the user to choose a day first. Returns false when one is chosen.
    bool NoDayIsChosen(std::int16_t messageId);
    /// Exchanges the unit at the end of the total line, without converting the number.
    void RelabelUnitOfTotal();
    void OpenWebPage(const std::string& address);
};
