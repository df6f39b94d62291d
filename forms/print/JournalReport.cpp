// The printed report: a header, a table with a row for every calendar day, the sum, and lines to sign on. All positions
// are twips; they are fixed, whatever the size of the paper. On paper that is too short for them the printer draws the
// whole page smaller.
#include "app/Module1.h"
#include "forms/LocalText.h"
#include "forms/print/ReportRows.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Conversions.h"
#include "settings/TextIds.h"
#include "settings/registerModule.h"

#include <cmath>

namespace {

constexpr double margin = 800; // on either side; also the left edge of the week column
constexpr double dateColumn = 1400;
constexpr double distanceColumn = 2700;
constexpr double routeColumn = 3830;

constexpr double firstLine = 800;
constexpr double continuationTop = 900;
constexpr double pageLimit = 13500; // a row that ends below is the last one of its page
constexpr double signatureLine = 14900;
constexpr double signatureCaption = 14980;
constexpr double footerRule = 15350;
constexpr double pageHeight = 15856; // here the footer's text ends

constexpr double rowPadding = 30; // between the rule above a row and its text
constexpr double routeText = 3900;
constexpr double routeTextToRightEdge = 4700; // what the route's text leaves of the printable width

constexpr int thick = 10; // device pixels
constexpr int thin = 1;

std::wstring UserInfo(const std::wstring& valueName)
{
    return registerModule::GetRegistryValue(L"Userinfo", valueName, L"");
}

/// Whether the user wants the social security number on the report. Only a number that rounds to 1 counts as yes.
bool NumberIsWanted()
{
    return TryToInt16(registerModule::GetRegistryValue(L"Userinfo", L"Aktiverat_personnummer", L"0")) == 1;
}

} // namespace

void frmInterval::PrintJournal()
{
    sum_ = 0;
    printer_->FitHeight(pageHeight);
    PrintReportHeader();
    PrintDayTable();
    PrintSignatureBlock();
    PrintPageFooter();
    printer_->EndDoc();
}

void frmInterval::PrintReportHeader()
{
    const std::wstring title = LocalText(text::print::journalTitle);
    printer_->SetDrawWidth(thick);
    printer_->SetCurrentY(firstLine);
    printer_->SetFontSize(20);
    printer_->SetFontBold(true);
    printer_->SetCurrentX(margin);
    printer_->Print(UserInfo(L"Company"));
    printer_->SetCurrentX(RightMargin() - printer_->TextWidth(title));
    printer_->PrintLine(title);

    printer_->SetFontSize(12);
    printer_->SetCurrentY(printer_->CurrentY() + 100);
    DrawRule(margin, RightMargin(), printer_->CurrentY());
    printer_->PrintLine();
    PrintHeaderLine(text::print::referTo, Heading());
    PrintHeaderLine(text::print::name, UserInfo(L"Name") + L" " + UserInfo(L"Surname"));
    if (NumberIsWanted()) {
        PrintHeaderLine(text::print::socialSecurityNumber, UserInfo(L"Personnummer"));
    }
    printer_->SetCurrentY(printer_->CurrentY() + 200);
    DrawRule(margin, RightMargin(), printer_->CurrentY());
    printer_->PrintLine();
}

void frmInterval::PrintHeaderLine(std::int16_t label, const std::wstring& value)
{
    printer_->SetFontBold(true);
    printer_->Skip(10);
    printer_->Print(LocalText(label));
    printer_->SetFontBold(false);
    printer_->Skip(2);
    printer_->PrintLine(value);
}

void frmInterval::PrintDayTable()
{
    printer_->PrintLine();
    PrintTableHeading();
    const std::chrono::sys_days last = ReportDate(1);
    for (std::chrono::sys_days day = ReportDate(0); day <= last;) {
        PrintDayRow(RowOfDay(day));
        day += std::chrono::days(1);
        if (printer_->CurrentY() > pageLimit) {
            BreakPage(day <= last);
        }
        if (progress_) {
            progress_->DayIsPrinted(printer_->Page());
        }
    }
    if (printer_->CurrentY() != continuationTop) {
        CloseWeekColumn();
    }
    PrintTotalLine();
}

void frmInterval::PrintTableHeading()
{
    printer_->SetFontSize(12);
    printer_->SetFontBold(true);
    printer_->SetDrawWidth(thick);
    const double top = printer_->CurrentY();
    printer_->SetCurrentX(1450);
    printer_->Print(LocalText(text::main::date));
    printer_->SetCurrentX(3000);
    printer_->Print(Module1::distanceUnit);
    printer_->SetCurrentX(6700);
    printer_->PrintLine(LocalText(text::main::route));
    const double bottom = printer_->CurrentY();

    DrawRule(margin, RightMargin(), top);
    DrawRule(margin, RightMargin(), bottom);
    for (const double x : {margin, distanceColumn, routeColumn, RightMargin()}) {
        printer_->Line(x, top, x, bottom);
    }
    ruleAbove_ = bottom;
    ruleAboveWidth_ = thick;
    printer_->SetFontBold(false);
    printer_->SetDrawWidth(thin);
    printer_->SetCurrentY(bottom + 12);
}

void frmInterval::PrintDayRow(const ReportRow& row)
{
    printer_->SetCurrentY(printer_->CurrentY() + rowPadding);
    const double top = std::nearbyint(printer_->CurrentY());
    const std::vector<double> widths = printer_->TextWidths(row.route);
    const auto routeLines = WrapRoute(row.route, widths, printer_->ScaleWidth() - routeTextToRightEdge);
    const double lineHeight = printer_->TextHeight();
    if (row.weekend) {
        printer_->SetCurrentY(top);
    }
    const double bottom = printer_->CurrentY() + static_cast<double>(routeLines.size()) * lineHeight;
    if (row.weekend) {
        ShadeDateCell(top - rowPadding, bottom);
    }
    printer_->SetCurrentX(830);
    printer_->Print(row.week);
    printer_->SetCurrentX(1430);
    printer_->Print(row.date);
    printer_->SetCurrentX(3750 - printer_->TextWidth(row.distance));
    printer_->Print(row.distance);
    sum_ += row.amount;
    for (const std::wstring_view line : routeLines) {
        printer_->SetCurrentX(routeText);
        printer_->Print(line);
        printer_->SetCurrentY(printer_->CurrentY() + lineHeight);
    }
    DrawRowRules(ruleAbove_, bottom);
    if (!row.week.empty()) {
        DrawRule(margin, dateColumn, top - rowPadding);
    }
    ruleAbove_ = bottom;
    ruleAboveWidth_ = thin;
}

void frmInterval::ShadeDateCell(double top, double bottom)
{
    printer_->SetFillStyle(FillStyle::Solid);
    printer_->Box(dateColumn, top, distanceColumn, bottom, printButtonFace);
    printer_->SetFillStyle(FillStyle::Transparent);
    // The shading reaches into the rule above it, which is drawn once more.
    printer_->SetDrawWidth(ruleAboveWidth_);
    DrawRule(dateColumn, distanceColumn, ruleAbove_);
    printer_->SetDrawWidth(thin);
}

/// The borders of a row. The week column gets no rule below: the days of a week share its cell.
void frmInterval::DrawRowRules(double top, double bottom)
{
    for (const double x : {margin, dateColumn, distanceColumn, routeColumn, RightMargin()}) {
        printer_->Line(x, top, x, bottom);
    }
    DrawRule(dateColumn, RightMargin(), bottom);
}

void frmInterval::BreakPage(bool tableGoesOn)
{
    CloseWeekColumn();
    PrintPageFooter();
    printer_->NewPage();
    printer_->SetCurrentY(continuationTop);
    if (tableGoesOn) {
        PrintTableHeading();
    }
}

void frmInterval::PrintTotalLine()
{
    printer_->SetFontBold(true);
    printer_->SetDrawWidth(thick);
    printer_->SetFontSize(12);
    printer_->PrintLine();
    const double top = printer_->CurrentY();
    printer_->SetCurrentX(1000);
    printer_->Print(LocalText(text::print::sum));
    const std::wstring sum = SumText(sum_);
    printer_->SetCurrentX(3650 - printer_->TextWidth(sum));
    printer_->PrintLine(sum);
    const double rule = printer_->CurrentY() - 55;
    DrawRule(margin, routeColumn, rule);
    printer_->Line(2300, top, 2300, rule);
    printer_->SetDrawWidth(thin);
    printer_->SetFontBold(false);
}

void frmInterval::PrintSignatureBlock()
{
    printer_->SetDrawStyle(LineStyle::Dotted);
    DrawRule(1500, 4000, signatureLine);
    DrawRule(4300, printer_->ScaleWidth() - 1500, signatureLine);
    printer_->SetCurrentY(signatureCaption);
    printer_->SetFontItalic(true);
    printer_->SetCurrentX(1500);
    printer_->Print(LocalText(text::print::date));
    printer_->SetCurrentX(4300);
    printer_->Print(LocalText(text::print::signature));
    printer_->SetFontItalic(false);
}

void frmInterval::PrintPageFooter()
{
    printer_->SetDrawStyle(LineStyle::Solid);
    printer_->SetCurrentY(footerRule);
    DrawRule(margin, RightMargin(), footerRule);
    printer_->PrintLine();
    printer_->SetFontSize(10);
    const std::wstring label = LocalText(text::print::page) + L" " + ToText(printer_->Page());
    printer_->SetCurrentX(printer_->ScaleWidth() / 2 - printer_->TextWidth(label) / 2);
    printer_->Print(label);
}

std::wstring frmInterval::TwoDigits(int number)
{
    return ToDigits(number, 2);
}

std::chrono::sys_days frmInterval::ReportDate(std::size_t index) const
{
    return ReportDay(Text1[index].Text() + L"-" + TwoDigits(dates_[index].getMonth()) + L"-" +
                     TwoDigits(dates_[index].getDay()));
}

int frmInterval::DaysOfReport() const
{
    return static_cast<int>((ReportDate(1) - ReportDate(0)).count()) + 1;
}

std::wstring frmInterval::Heading() const
{
    return Option1[0].Value() ? Label2.Caption() : Text2.Text();
}

void frmInterval::CloseWeekColumn()
{
    DrawRule(margin, dateColumn, printer_->CurrentY());
}

void frmInterval::DrawRule(double left, double right, double y)
{
    printer_->Line(left, y, right, y);
}

double frmInterval::RightMargin()
{
    return printer_->ScaleWidth() - margin;
}
