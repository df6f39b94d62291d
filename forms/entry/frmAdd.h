#pragma once

#include "forms/entry/DayDialog.h"

/// Enters a new day of the journal. Offers only days that are still free.
class frmAdd : public DayDialog {
public:
    frmAdd();

    /// Shows the dialog over the main window, starting in a month of the journal or, with a year below 1900, in the
    /// current month; returns when it is hidden. The user has to pick the day.
    void showMeNow(std::int16_t aret, std::int16_t manad);

protected:
    void addButton_Click() override;
    void FillDayList(std::int16_t year, std::int16_t month) override;
};
