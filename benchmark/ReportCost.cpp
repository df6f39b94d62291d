// Measures the report as the print dialog prints it after the user has chosen a printer.
#include "benchmark/Measure.h"

#include "data/DataInterface.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Conversions.h"

namespace {

void Choose(frmInterval& dialog, std::size_t index, const DayEntry& day)
{
    dialog.UpDown1[index].SetValue(day.year);
    dialog.Combo1[index].SetListIndex(day.month - 1);
    dialog.Combo3[index].SetListIndex(day.day - 1);
}

/// Builds the rows without printing them: finds each day and formats its texts.
void WorkOutRows(const DayEntry& first, const DayEntry& last)
{
    const auto day = [](const DayEntry& entry) {
        return std::chrono::sys_days(std::chrono::year(entry.year) / entry.month / entry.day);
    };
    double sum = 0;
    for (auto date = day(first); date <= day(last); date += std::chrono::days(1)) {
        sum += RowOfDay(date).amount;
    }
    Record("sum", sum);
}

/// Prints the words of the rows and of the table's heading with plain GDI calls, without lines, shading and text
/// measurement. Every program that prints these pages needs at least this time.
void PrintWords(const wchar_t* printer, int entries)
{
    constexpr int rowsOnPage = 42;
    constexpr int rowHeight = 128; // dots of the printer, as are all positions here
    constexpr int typeHeight = -100;
    const auto text = [](HDC page, int x, int y, const std::wstring& words) {
        TextOutW(page, x, y, words.c_str(), static_cast<int>(words.size()));
    };
    const auto font = [](LONG weight) {
        return CreateFontW(typeHeight, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial");
    };
    HFONT plain = font(FW_NORMAL);
    HFONT bold = font(FW_BOLD);
    const auto job = OpenPrintJob({.name = printer}, L"Words");
    for (int i = 0; i < entries; i += rowsOnPage) {
        const HDC page = static_cast<HDC>(job->StartPage());
        SelectObject(page, bold);
        text(page, 600, 400, L"Date");
        text(page, 1200, 400, L"km");
        text(page, 2800, 400, L"Route");
        SelectObject(page, plain);
        for (int row = 0; row < rowsOnPage && i + row < entries; ++row) {
            const DayEntry& entry = DataInterface::days[static_cast<std::size_t>(i) + static_cast<std::size_t>(row)];
            const int y = 400 + (row + 1) * rowHeight;
            text(page, 600, y, L"2004-02-12");
            text(page, 1200, y, ToText(entry.distance));
            text(page, 1650, y, entry.route);
        }
        text(page, 2325, 6586, L"Page " + ToText(i));
        SelectObject(page, GetStockObject(SYSTEM_FONT));
        job->EndPage();
    }
    job->End();
    DeleteObject(bold);
    DeleteObject(plain);
}

} // namespace

void MeasureWords(const wchar_t* printer, int entries)
{
    DataInterface::LoadJournal();
    Record("ready", entries);
    Measure("words", [=] { PrintWords(printer, entries); });
}

void MeasureReport(const wchar_t* printer, int entries)
{
    DataInterface::LoadJournal();
    const DayEntry& newest = DataInterface::days.front();
    const DayEntry& oldest = DataInterface::days[static_cast<std::size_t>(entries) - 1];
    const auto dialog = Instance<frmInterval>();
    dialog->Load();
    Choose(*dialog, 0, oldest);
    Choose(*dialog, 1, newest);
    Measure("report rows", [&] { WorkOutRows(oldest, newest); });
    Record("ready", entries);
    Measure("report", [&] {
        dialog->SelectPrinter(Printer(OpenPrintJob({.name = printer}, L"Odomira")));
        dialog->PrintJournal();
    });
    dialog->Unload();
}
