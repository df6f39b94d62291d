#pragma once

#include "forms/entry/DayDialog.h"

/// Changes a day of the journal: its date, distance or route. Offers the days 1 to 31 whatever the month, so that a
/// date that stands in the journal can always be shown.
class frmEdit : public DayDialog {
public:
    frmEdit();

    /// Shows the dialog over the main window for the day as the day list has it; a distance below 0 shows as an empty
    /// box. Returns when the dialog is hidden.
    void showMeNow(std::int16_t aret, std::int16_t manad, std::int16_t dag, double km, const std::wstring& stracka);

protected:
    void addButton_Click() override;
    void FillDayList(std::int16_t year, std::int16_t month) override;

private:
    bool DateIsUnchanged() const;

    std::int16_t storedYear_ = 0;
    std::int16_t storedMonth_ = 0;
    std::int16_t storedDay_ = 0; ///< selected anew whenever the day list is filled
};
