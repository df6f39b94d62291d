#pragma once

#include "forms/entry/DayDialog.h"

/// Changes the date, the distance and the route of a day. Offers the days 1 to 31 for every month, because the journal
/// may contain any of them.
class frmEdit : public DayDialog {
public:
    frmEdit();

    /// Shows the dialog with a day as the day list shows it. A distance below 0 is an empty box. Returns when the
    /// dialog is hidden.
    void showMeNow(std::int16_t aret, std::int16_t manad, std::int16_t dag, double km, const std::wstring& stracka);

protected:
    void Form_Help() override;
    void addButton_Click() override;
    void FillDayList(std::int16_t year, std::int16_t month) override;

private:
    bool DateIsUnchanged() const;

    std::int16_t storedYear_ = 0;
    std::int16_t storedMonth_ = 0;
    std::int16_t storedDay_ = 0; ///< FillDayList selects it
};
