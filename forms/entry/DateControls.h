#pragma once

#include "platform/Controls.h"

#include <cstdint>
#include <functional>

/// The years that the spin control reaches; the journal itself may hold others.
inline constexpr int firstYear = 1950;
inline constexpr int lastYear = 2100;
inline constexpr int designYear = 2000;

/// The days of a month: 28 to 31, and 31 for a month number that does not exist.
std::int16_t DaysInMonth(std::int16_t year, std::int16_t month);

/// The four controls by which every dialog names a date: a year box with its spin control, a list of months and a list
/// of days. This class has the rules that they share; which days the list offers is the dialog's own rule, its
/// FillDayList.
///
/// The spin control and the year box are two things: what follows a change takes the year from the spin control,
/// getYear takes it from the box. They differ for a year that the spin control cannot reach.
class DateControls {
public:
    using FillDayList = std::function<void(std::int16_t year, std::int16_t month)>;

    DateControls(TextBox& year, UpDown& spin, ComboBox& months, ComboBox& days, FillDayList fillDayList);

    /// The state in which every dialog opens: year 2000, the twelve months with none picked, no days.
    void Prepare();

    /// Puts a year into the box and on the spin control; SpinChanged follows.
    void ShowYear(std::int16_t year);
    /// Picks month 1..12; MonthClicked follows.
    void ShowMonth(std::int16_t month);

    /// The spin control has a new value: the box shows it, and with a month picked the days are filled anew.
    void SpinChanged();
    /// A month was picked: the days are filled anew.
    void MonthClicked();

    bool DayIsSelected() const;
    /// These throw TypeMismatch when nothing is picked.
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
