#pragma once

#include "platform/print/PrinterDialog.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"
#include "platform/windows/Menu.h"

#include <cstdint>
#include <string>

/// The main window: a tree of years and months, the days of one month, and the commands of the program. It keeps the
/// listed month only: the commands read the selected day from its line in the list.
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
    PrinterDialog dlgCommonDialog; ///< Kept on purpose: "The printer dialog of the main window is unused".

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
    void Form_Help() override;
    void Form_SessionGoesOn() override;

    // The tree and the list: frmMainJournal.cpp
    /// Fills tree, list and total again: a line with the former separator would be read as another number.
    void Form_RegionChanged() override;
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
    /// Moves each heading over its column, which depends on the width of a character.
    void PlaceHeadings();

    /// Fills the tree from the journal and lists the first month of the first year.
    void FillJournalTree();
    /// The same, but shows its exception. Kept on purpose: "A month outside 1 to 12 ends the tree".
    void RebuildJournalTree();
    /// Lists the days of a month, latest first, and shows their total. Does not change the tree and the buttons.
    void ShowMonthDays(std::int16_t year, std::int16_t month);
    /// Selects the node of the month. Raises no NodeClick.
    void SelectMonthNode(std::int16_t year, std::int16_t month);
    /// Selects the line of a day, if there is one.
    void SelectDayInList(std::int16_t day);

    /// Rebuilds tree and list and shows the month of a changed day. Both are painted once.
    void ShowChangedMonth(std::int16_t year, std::int16_t month);
    /// The same, and selects the day.
    void ShowChangedDay(std::int16_t year, std::int16_t month, std::int16_t day);
    void EnableUnsavedCommands(bool enabled);
    void EnableDayCommands(bool enabled);
    /// Returns true if a day is selected. Otherwise shows the message, moves the focus to the list and returns false.
    bool RequireSelectedDay(std::int16_t messageId);
    /// Replaces the unit at the end of the total. Does not convert the number.
    void RelabelUnitOfTotal();
    void OpenWebPage(const std::string& address);

    std::int16_t listedYear_ = 0; ///< the argument of the last ShowMonthDays
    std::int16_t listedMonth_ = 0;
    bool givenUpForSession_ = false; ///< the session was about to end, and the user discarded the unsaved changes
};
