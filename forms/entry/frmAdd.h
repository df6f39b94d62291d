#pragma once

#include "forms/entry/DayDialog.h"

/// Adds a day to the journal. Offers the days without an entry.
class frmAdd : public DayDialog {
public:
    frmAdd();

    /// Shows the dialog with this month or, for a year below 1900, with the current month. Returns when the dialog is
    /// hidden.
    void showMeNow(std::int16_t aret, std::int16_t manad);

protected:
    void Form_Help() override;
    void addButton_Click() override;
    void FillDayList(std::int16_t year, std::int16_t month) override;
};
