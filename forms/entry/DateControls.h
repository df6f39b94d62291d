#pragma once

#include "platform/windows/Controls.h"

#include <cstdint>
#include <functional>

/// The range of the up-down control. The journal may contain other years.
inline constexpr int firstYear = 1950;
inline constexpr int lastYear = 2100;
inline constexpr int designYear = 2000;

/// The four controls for a date: a year box with its up-down control, a list of months and a list of days. The dialog
/// fills the list of days (FillDayList).
///
/// FillDayList gets the year of the up-down control, getYear returns that of the box.
/// Kept on purpose: "The year has two controls".
class DateControls {
public:
    using FillDayList = std::function<void(std::int16_t year, std::int16_t month)>;

    DateControls(TextBox& year, UpDown& spin, ComboBox& months, ComboBox& days, FillDayList fillDayList);

    /// Sets the initial state: year 2000, the twelve months with none selected, no days.
    void Prepare();

    /// Updates the names of the months after a change of the region. Keeps the selection.
    void RenameMonths();

    /// Sets the year of the box and of the up-down control, which calls SpinChanged.
    void ShowYear(std::int16_t year);
    /// Selects month 1..12, which calls MonthClicked.
    void ShowMonth(std::int16_t month);

    /// Handles a change of the up-down control: sets the box and, if a month is selected, fills the list of days.
    void SpinChanged();
    /// Handles the selection of a month: fills the list of days.
    void MonthClicked();

    bool DayIsSelected() const;
    /// These throw TypeMismatch if nothing is selected.
    std::int16_t getYear() const;
    std::int16_t getMonth() const;
    std::int16_t getDay() const;

private:
    std::int16_t SpinYear() const;

    TextBox& year_;
    UpDown& spin_;
    ComboBox& months_;
    ComboBox& days_;
    FillDayList fillDayList_;
};
