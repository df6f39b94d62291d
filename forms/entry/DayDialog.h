#pragma once

#include "data/DataInterface.h"
#include "forms/entry/DateControls.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"

#include <array>
#include <cstdint>
#include <string>

/// The base class of the dialogs that add and edit a day: controls, layout, captions, and checks of the input. Both
/// have the same text items, under two bases.
class DayDialog : public Form {
public:
    const FormLayout& Layout() const override;

    /// The date in the dialog. These throw TypeMismatch if no month or no day is selected.
    std::int16_t getYear() const { return date_.getYear(); }
    std::int16_t getMonth() const { return date_.getMonth(); }
    std::int16_t getDay() const { return date_.getDay(); }
    /// True if the dialog has changed the journal.
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
    /// textBase: 3000 or 4000, the number of the dialog's caption. firstFocus: the control that the user needs first.
    DayDialog(std::int16_t textBase, const char* firstFocus);

    void Wire() override;
    void Form_Load() override;
    /// Keeps the typed text and its number: a distance is read with the decimal separator with which it was typed.
    void Form_RegionChanged() override;
    void UpDown1_Change();
    void Combo1_Click();
    virtual void addButton_Click() = 0;
    void cancelButton_Click();

    /// Fills Combo3 with days of the month.
    virtual void FillDayList(std::int16_t year, std::int16_t month) = 0;

    void ApplyLanguage();
    /// False for a year below 1900, which means that the main window shows no month.
    static bool ShowsJournalMonth(std::int16_t year) noexcept;
    /// Selects the month or, if the main window shows none, the current month.
    void ShowMonth(std::int16_t year, std::int16_t month);
    /// Returns true if a day is selected and the distance is valid, and writes "-2" into an empty distance box: the
    /// journal's number for a day without a distance. Otherwise shows a message, moves the focus and returns false.
    bool AcceptInput();
    /// The input, with the route as the code page holds it. It is read completely before the journal is changed, so an
    /// error in it changes nothing.
    DayEntry EnteredDay() const;
    /// Shows a distance in its box; a negative distance is an empty box.
    void ShowDistance(double distance);
    /// Sets hasChanged and hides the dialog.
    void HideChanged();

private:
    double Distance() const;
    bool AcceptDistance();
    void RefuseDistance(const std::wstring& message);
    /// The text of this dialog for an item of text::add.
    std::wstring DialogText(std::int16_t addDialogId) const;

    std::int16_t textBase_;
    FormLayout layout_;
    DateControls date_{Text1, UpDown1, Combo1, Combo3,
                       [this](std::int16_t year, std::int16_t month) { FillDayList(year, month); }};
    bool changed_ = false;

    /// A text of the distance box with its number. The dialog may show a text that IsDistance does not accept
    /// ("1E-05"), and a text may have been typed before a change of the region.
    struct KnownDistance {
        std::wstring text;
        double distance = 0;
    };
    KnownDistance known_;
    std::wstring decimalSeparator_; ///< with which the distance is typed
};
