#pragma once

#include "forms/entry/DateControls.h"
#include "forms/print/PrintProgress.h"
#include "forms/print/ReportRows.h"
#include "platform/print/Printer.h"
#include "platform/print/PrinterDialog.h"
#include "platform/system/Clock.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

/// Prints the journal: the user chooses the first and the last day and the heading, picks a printer, and gets the
/// report once for each copy asked for.
///
/// The handlers are in frmInterval.cpp, the report in JournalReport.cpp.
class frmInterval : public Form {
public:
    const FormLayout& Layout() const override;

    /// "2003-04-17 to 2003-05-16": what the two date groups show.
    std::wstring GetIntervalText() const;

    /// The printer that the next PrintJournal draws on and whose document it ends.
    void SelectPrinter(Printer printer) { printer_.emplace(std::move(printer)); }

    /// Prints the whole report of the chosen interval as one document. Throws PrinterError; then no document comes out.
    void PrintJournal();

    /// A number of a date, with a 0 in front when it has one digit.
    static std::wstring TwoDigits(int number);

    // In each array, index 0 is the first day and index 1 the last, unless said otherwise.
    Frame Frame1{*this, "Frame1"};
    Frame Frame2{*this, "Frame2"};
    std::array<Label, 6> Label1{{{*this, "Label1(0)"},
                                 {*this, "Label1(1)"},
                                 {*this, "Label1(2)"},
                                 {*this, "Label1(3)"},
                                 {*this, "Label1(4)"},
                                 {*this, "Label1(5)"}}}; ///< 0..2 year, month, day; 3..5 day, month, year
    std::array<TextBox, 2> Text1{{{*this, "Text1(0)"}, {*this, "Text1(1)"}}}; ///< years
    std::array<UpDown, 2> UpDown1{{{*this, "UpDown1(0)", firstYear, lastYear, designYear},
                                   {*this, "UpDown1(1)", firstYear, lastYear, designYear}}};
    std::array<ComboBox, 2> Combo1{{{*this, "Combo1(0)"}, {*this, "Combo1(1)"}}}; ///< months
    std::array<ComboBox, 2> Combo3{{{*this, "Combo3(0)"}, {*this, "Combo3(1)"}}}; ///< days
    Frame Frame3{*this, "Frame3"};
    std::array<OptionButton, 2> Option1{{{*this, "Option1(0)"}, {*this, "Option1(1)"}}}; ///< interval, own heading
    Label Label2{*this, "Label2"};                                                       ///< the interval as a heading
    TextBox Text2{*this, "Text2"};                                                       ///< the user's own heading
    CommandButton addButton{*this, "addButton"};
    CommandButton cancelButton{*this, "cancelButton"};
    PrinterDialog CommonDialog1;

protected:
    void Wire() override;
    void Form_Load() override;
    void Form_Help() override;
    void Form_RegionChanged() override;
    void Form_Unload() override;
    void UpDown1_Change(std::size_t index);
    void Combo1_Click(std::size_t index);
    void Combo3_Click();
    void Text2_KeyPress();
    void addButton_Click();
    void cancelButton_Click();

private:
    void ApplyLanguage();
    void FillDayList(std::size_t index, std::int16_t year, std::int16_t month);
    /// Shows the interval as the suggested heading. It is also the accessible name of its option button.
    void ShowIntervalText();
    void ShowDate(std::size_t index, const CalendarDay& date);
    std::wstring DateText(std::size_t index) const;
    std::int32_t ComparableDate(std::size_t index) const;
    void PrintCopies();
    void AbortDocument();
    void EndPrinting();

    // The report.
    void PrintReportHeader();
    void PrintDayTable();
    void PrintTableHeading();
    void PrintTotalLine();
    void PrintSignatureBlock();
    void PrintPageFooter();
    void PrintHeaderLine(std::int16_t label, const std::wstring& value);
    void PrintDayRow(const ReportRow& row);
    void ShadeDateCell(double top, double bottom);
    void DrawRowRules(double top, double bottom);
    void BreakPage(bool tableGoesOn);
    void CloseWeekColumn();
    void DrawRule(double left, double right, double y);
    std::chrono::sys_days ReportDate(std::size_t index) const;
    int DaysOfReport() const;
    std::wstring Heading() const;
    double RightMargin();

    std::array<DateControls, 2> dates_{
        {{Text1[0], UpDown1[0], Combo1[0], Combo3[0],
          [this](std::int16_t year, std::int16_t month) { FillDayList(0, year, month); }},
         {Text1[1], UpDown1[1], Combo1[1], Combo3[1],
          [this](std::int16_t year, std::int16_t month) { FillDayList(1, year, month); }}}};
    bool headingWasTyped_ = false; ///< a key was pressed in the heading box since the dialog opened

    std::optional<Printer> printer_;
    std::optional<PrintProgress> progress_;
    double sum_ = 0;       ///< of the distances printed so far in this document
    double ruleAbove_ = 0; ///< y of the rule that the next row stands under
    int ruleAboveWidth_ = 0;
};
