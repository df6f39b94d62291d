#include "forms/print/frmInterval.h"

#include "data/Calendar.h"
#include "forms/Guide.h"
#include "forms/LocalText.h"
#include "forms/print/DefaultInterval.h"
#include "platform/system/CheckedArithmetic.h"
#include "platform/system/Clock.h"
#include "platform/system/Conversions.h"
#include "platform/windows/MsgBox.h"
#include "settings/TextIds.h"
#include "settings/registerModule.h"

#include <algorithm>
#include <exception>

using registerModule::GetRegistryValue;
using registerModule::SaveRegistryValue;

namespace {

// The two dates, as members of the control arrays.
constexpr std::size_t from = 0;
constexpr std::size_t to = 1;

constexpr std::array rows{
    LayoutRow{"Frame1", {165, 120, 5295, 1095}},        LayoutRow{"Label1(0)", {330, 405, 1140, 270}},
    LayoutRow{"Text1(0)", {330, 690, 840, 345}},        LayoutRow{"UpDown1(0)", {1170, 690, 240, 345}},
    LayoutRow{"Label1(1)", {1575, 405, 2400, 270}},     LayoutRow{"Combo1(0)", {1575, 690, 2400, 345}},
    LayoutRow{"Label1(2)", {4140, 405, 1155, 270}},     LayoutRow{"Combo3(0)", {4140, 690, 1155, 345}},
    LayoutRow{"Frame2", {165, 1335, 5295, 1095}},       LayoutRow{"Label1(5)", {330, 1620, 1140, 270}},
    LayoutRow{"Text1(1)", {330, 1905, 840, 345}},       LayoutRow{"UpDown1(1)", {1170, 1905, 240, 345}},
    LayoutRow{"Label1(4)", {1575, 1620, 2400, 270}},    LayoutRow{"Combo1(1)", {1575, 1905, 2400, 345}},
    LayoutRow{"Label1(3)", {4140, 1620, 1155, 270}},    LayoutRow{"Combo3(1)", {4140, 1905, 1155, 345}},
    LayoutRow{"Frame3", {165, 2550, 5295, 1200}},       LayoutRow{"Option1(0)", {330, 2850, 240, 255}},
    LayoutRow{"Option1(1)", {330, 3285, 240, 255}},     LayoutRow{"Label2", {645, 2865, 4650, 270}},
    LayoutRow{"Text2", {645, 3240, 4650, 345}},         LayoutRow{"addButton", {3000, 3915, 1170, 345}},
    LayoutRow{"cancelButton", {4290, 3915, 1170, 345}},
};

constexpr FormLayout layout{
    .kind = FormKind::Dialog,
    .width = 5625,
    .height = 4425,
    .rows = rows,
    .defaultButton = "addButton",
    .cancelButton = "cancelButton",
    .firstFocus = "Combo1(0)",
};

} // namespace

const FormLayout& frmInterval::Layout() const
{
    return layout;
}

void frmInterval::Wire()
{
    for (const std::size_t index : {from, to}) {
        On(UpDown1[index].Change, &frmInterval::UpDown1_Change, index);
        On(Combo1[index].Click, &frmInterval::Combo1_Click, index);
        On(Combo3[index].Click, &frmInterval::Combo3_Click);
    }
    On(Text2.KeyPress, &frmInterval::Text2_KeyPress);
    On(addButton.Click, &frmInterval::addButton_Click);
    On(cancelButton.Click, &frmInterval::cancelButton_Click);
}

void frmInterval::Form_Load()
{
    ApplyLanguage();
    for (DateControls& date : dates_) {
        date.Prepare();
    }
    const CalendarDay today = Clock::Today();
    ShowDate(to, today);
    ShowDate(from, DefaultFromDate(today));
    Text2.SetText(GetRegistryValue(L"Print", L"Heading", L""));
    ShowIntervalText();
    // Only this spelling counts. Kept on purpose: "The heading is stored before printing".
    const bool useDefault = GetRegistryValue(L"Print", L"UseDefaultHeading", L"True") == L"True";
    Option1[useDefault ? 0 : 1].SetValue(true);
}

void frmInterval::Form_Help()
{
    ShowGuide(*this, L"print");
}

void frmInterval::Form_RegionChanged()
{
    for (DateControls& date : dates_) {
        date.RenameMonths();
    }
}

/// The program may end during a print: discards the document.
void frmInterval::Form_Unload()
{
    AbortDocument();
    UnloadInstance<frmProgress>();
}

void frmInterval::AbortDocument()
{
    if (printer_) {
        printer_->Abort();
    }
}

void frmInterval::UpDown1_Change(std::size_t index)
{
    dates_[index].SpinChanged();
    ShowIntervalText();
}

void frmInterval::Combo1_Click(std::size_t index)
{
    dates_[index].MonthClicked();
    ShowIntervalText();
}

void frmInterval::Combo3_Click()
{
    ShowIntervalText();
}

void frmInterval::Text2_KeyPress()
{
    headingWasTyped_ = true; // Kept on purpose: "A key in the heading box sets a flag only".
}

void frmInterval::addButton_Click()
{
    if (progress_) {
        return; // a print is in progress; the end of the session may get here
    }
    if (ComparableDate(from) > ComparableDate(to)) {
        MsgBoxTitled(LocalText(text::print::canNotPrintRange) + L"\r\n" + LocalText(text::print::fromDateIsPastToDate),
                     L"");
        return;
    }
    // Kept on purpose: "The heading is stored before printing".
    SaveRegistryValue(L"Print", L"Heading", Text2.Text());
    SaveRegistryValue(L"Print", L"UseDefaultHeading", Option1[0].Value());
    try {
        PrintCopies();
        EndPrinting();
        Unload();
    } catch (const std::exception&) {
        // Cancelled, or the printing failed. Kept on purpose: "A failed print shows no message".
        EndPrinting();
        if (IsLoaded()) {
            addButton.SetFocus(); // the next Enter tries again
        }
    }
}

void frmInterval::cancelButton_Click()
{
    Unload();
}

/// Asks for a printer and prints each copy as a document of its own.
void frmInterval::PrintCopies()
{
    const PrinterChoice choice = CommonDialog1.ShowPrinter();
    progress_.emplace(*this, DaysOfReport(), choice.copies, [this] { AbortDocument(); });
    SettleWindows();
    for (int copy = 1; copy <= choice.copies; ++copy) {
        SelectPrinter(Printer(OpenPrintJob(choice.device, LocalText(text::print::journalTitle))));
        PrintJournal();
    }
}

void frmInterval::EndPrinting()
{
    printer_.reset();
    if (progress_) {
        SettleWindows();
        progress_.reset();
    }
}

void frmInterval::ApplyLanguage()
{
    SetCaption(LocalText(text::print::caption));
    Frame1.SetCaption(LocalText(text::print::asFrom));
    Label1[1].SetCaption(LocalText(text::print::month));
    Label1[2].SetCaption(LocalText(text::print::day));
    Label1[0].SetCaption(LocalText(text::print::year));
    // Kept on purpose: "Captions are set twice".
    Label1[1].SetCaption(LocalText(text::print::month));
    Label1[2].SetCaption(LocalText(text::print::day));
    Frame2.SetCaption(LocalText(text::print::upTo));
    Label1[5].SetCaption(LocalText(text::print::year));
    Label1[4].SetCaption(LocalText(text::print::month));
    Label1[3].SetCaption(LocalText(text::print::day));
    Frame3.SetCaption(LocalText(text::print::heading));
    addButton.SetCaption(LocalText(text::print::print));
    cancelButton.SetCaption(LocalText(text::print::cancel));
    const std::wstring ownHeading = LocalText(text::print::heading);
    Option1[1].SetAccessibleName(ownHeading);
    Text2.SetAccessibleName(ownHeading);
}

void frmInterval::ShowDate(std::size_t index, const CalendarDay& date)
{
    dates_[index].ShowYear(date.year);
    dates_[index].ShowMonth(date.month);
    Combo3[index].SetListIndex(date.day - 1);
}

/// Offers the days of the month. The chosen day stays chosen, as far as the month reaches.
void frmInterval::FillDayList(std::size_t index, std::int16_t year, std::int16_t month)
{
    ComboBox& days = Combo3[index];
    const int chosen = days.ListIndex();
    const std::int16_t last = DaysInMonth(year, month);
    days.Clear();
    for (int day = 1; day <= last; ++day) {
        days.AddItem(ToText(day));
    }
    if (chosen >= 0) {
        days.SetListIndex(std::min(chosen, last - 1));
    }
}

void frmInterval::ShowIntervalText()
{
    const std::wstring interval = GetIntervalText();
    Label2.SetCaption(interval);
    Option1[0].SetAccessibleName(interval);
}

std::wstring frmInterval::GetIntervalText() const
{
    return DateText(from) + LocalText(text::print::to) + DateText(to);
}

std::wstring frmInterval::DateText(std::size_t index) const
{
    return Text1[index].Text() + L"-" + TwoDigits(Combo1[index].ListIndex() + 1) + L"-" +
           TwoDigits(Combo3[index].ListIndex() + 1);
}

/// The date as a number that grows with time, such as 20030417.
std::int32_t frmInterval::ComparableDate(std::size_t index) const
{
    const std::int64_t year = dates_[index].getYear();
    const std::int64_t month = dates_[index].getMonth();
    return CheckedInt32(year * 10000 + month * 100 + Combo3[index].ListIndex() + 1);
}
