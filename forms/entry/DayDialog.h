#pragma once

#include "forms/entry/DateControls.h"
#include "platform/Controls.h"
#include "platform/Form.h"

#include <array>
#include <cstdint>
#include <string>

/// What the dialogs that add and edit a day share: their controls and layout, the captions, the checks of what was
/// typed, and the date that they answer with. Their texts are the same items under two bases.
class DayDialog : public Form {
public:
    const FormLayout& Layout() const override;

    /// The date in the dialog; needs a month and a day to be picked.
    std::int16_t getYear() const { return date_.getYear(); }
    std::int16_t getMonth() const { return date_.getMonth(); }
    std::int16_t getDay() const { return date_.getDay(); }
    /// True only after the journal was changed in this opening of the dialog.
    bool hasChanged() const noexcept { return changed_; }

    std::array<Label, 3> Label1{{{*this, "Label1(0)"}, {*this, "Label1(1)"}, {*this, "Label1(2)"}}};
    TextBox Text1{*this, "Text1"}; ///< year
    UpDown UpDown1{*this, "UpDown1", firstYear, lastYear, designYear};
    ComboBox Combo1{*this, "Combo1"}; ///< months
    ComboBox Combo3{*this, "Combo3"}; ///< days
    Label Label3{*this, "Label3"};
    TextBox Text3{*this, "Text3"}; ///< distance
    Label Label2{*this, "Label2"};
    TextBox Text2{*this, "Text2"}; ///< route
    CommandButton addButton{*this, "addButton"};
    CommandButton cancelButton{*this, "cancelButton"};

protected:
    /// textBase: 3000 or 4000, the number of the dialog's caption.
    explicit DayDialog(std::int16_t textBase) : textBase_(textBase) {}

    void Wire() override;
    void Form_Load() override;
    void UpDown1_Change();
    void Combo1_Click();
    virtual void addButton_Click() = 0;
    void cancelButton_Click();

    /// Fills Combo3 with the days that this dialog offers for the month.
    virtual void FillDayList(std::int16_t year, std::int16_t month) = 0;

    void ApplyLanguage();
    /// Whether the year is that of a month of the journal; what the main window passes below 1900 means that it shows
    /// none.
    static bool ShowsJournalMonth(std::int16_t year) noexcept;
    /// Shows a month of the journal or, where the main window shows none, today's.
    void ShowMonth(std::int16_t year, std::int16_t month);
    /// Checks the day and the distance; tells the user what is wrong. An empty distance becomes "-2", the journal's
    /// number for a day without one.
    bool InputIsAcceptable();
    double Distance() const;
    /// The route as the journal's code page holds it.
    std::wstring Route() const;
    /// The journal has the day: the dialog is done.
    void HideChanged();

private:
    bool DistanceIsAcceptable();
    void RefuseDistance(const std::wstring& message);
    std::wstring DialogText(std::int16_t item) const;

    std::int16_t textBase_;
    DateControls date_{Text1, UpDown1, Combo1, Combo3,
                       [this](std::int16_t year, std::int16_t month) { FillDayList(year, month); }};
    bool changed_ = false;
};
