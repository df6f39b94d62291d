#include "tests/forms/print/PrintedReport.h"

#include "app/Module1.h"
#include "settings/registerModule.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

constexpr double device = 2.4; // twips in a pixel of the machine's printer

bool Near(double a, double b)
{
    return std::abs(a - b) <= 1.5 * device;
}

bool Joins(const DrawnLine& line, double x1, double y1, double x2, double y2)
{
    return Near(line.x1, x1) && Near(line.y1, y1) && Near(line.x2, x2) && Near(line.y2, y2);
}

} // namespace

ReportTest::ReportTest()
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Velmora");
    Module1::languageOffset = 0;
    Module1::distanceUnit = L"miles";
    form_ = std::make_shared<frmInterval>();
    form_->Load();
    Printer printer(RecordPages(std::make_shared<Recording>()));
    width_ = printer.ScaleWidth();
    line_ = printer.TextHeight();
    printer.SetFontSize(20);
    bigLine_ = printer.TextHeight();
}

ReportTest::~ReportTest()
{
    form_->Unload();
    while (DataInterface::dayCount > 0) {
        const DayEntry& first = DataInterface::days.front();
        DataInterface::DeleteDay(first.year, first.month, first.day);
    }
}

void ReportTest::SpeakSwedish()
{
    Module1::languageOffset = 100;
    Module1::distanceUnit = L"mil";
    form_->Unload();
    form_ = std::make_shared<frmInterval>();
    form_->Load();
}

void ReportTest::SetUserInfo(const std::wstring& value, const std::wstring& text)
{
    registerModule::SaveRegistryValue(L"Userinfo", value, text);
}

void ReportTest::Choose(frmInterval& form, const CalendarDay& from, const CalendarDay& to)
{
    std::size_t index = 0;
    for (const CalendarDay& date : {from, to}) {
        form.UpDown1[index].SetValue(date.year);
        form.Combo1[index].SetListIndex(date.month - 1);
        form.Combo3[index].SetListIndex(date.day - 1);
        ++index;
    }
}

const std::vector<RecordedPage>& ReportTest::Print(const CalendarDay& from, const CalendarDay& to)
{
    Choose(*form_, from, to);
    recording_ = std::make_shared<Recording>();
    form_->SelectPrinter(Printer(RecordPages(recording_)));
    form_->PrintJournal();
    return recording_->pages;
}

const DrawnText& TextOf(const RecordedPage& page, const std::wstring& text)
{
    const auto found = std::ranges::find(page.texts, text, &DrawnText::text);
    if (found == page.texts.end()) {
        static const DrawnText nothing{};
        ADD_FAILURE() << "not printed: " << testing::PrintToString(text);
        return nothing;
    }
    return *found;
}

bool HasText(const RecordedPage& page, const std::wstring& text)
{
    return std::ranges::find(page.texts, text, &DrawnText::text) != page.texts.end();
}

bool HasLine(const RecordedPage& page, double x1, double y1, double x2, double y2, int width)
{
    return std::ranges::any_of(page.lines, [=](const DrawnLine& line) {
        return line.width == width && !line.dotted && line.colour == printBlack && Joins(line, x1, y1, x2, y2);
    });
}

std::string LinesAt(const RecordedPage& page, double y)
{
    std::ostringstream out;
    for (const DrawnLine& line : page.lines) {
        if (std::abs(line.y1 - y) < 400) {
            out << line.x1 << ',' << line.y1 << " - " << line.x2 << ',' << line.y2 << " width " << line.width << '\n';
        }
    }
    return out.str();
}
