// The drawing of the report, read from the recorded pages.
#include "tests/forms/print/PrintedReport.h"

#include "platform/system/RuntimeError.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>

using testing::ElementsAre;

namespace {

constexpr double device = 2.4; // twips in a pixel of the machine's printer
constexpr double exact = 1.5 * device;

CalendarDay Plus(const CalendarDay& day, int days)
{
    namespace chrono = std::chrono;
    const auto start = chrono::year(day.year) / day.month / day.day;
    const chrono::year_month_day then = chrono::sys_days(start) + chrono::days(days);
    return {static_cast<std::int16_t>(static_cast<int>(then.year())),
            static_cast<std::int16_t>(static_cast<unsigned>(then.month())),
            static_cast<std::int16_t>(static_cast<unsigned>(then.day()))};
}

class JournalReport : public ReportTest {
protected:
    /// Top of the table's heading on the first page, below the header of two or three lines.
    double TableTop(int headerLines = 2) const { return 800 + bigLine_ + 100 + line_ * (headerLines + 3) + 200; }

    /// Top of the first row's text on the first page and on the following ones.
    double FirstRow(int headerLines = 2) const { return TableTop(headerLines) + line_ + 12 + 30; }
    double FirstContinuedRow() const { return 900 + line_ + 12 + 30; }
    double RowStep() const { return line_ + 30; }

    /// The number of one-line rows on the first page: the last is the first row that ends below 13500.
    int RowsOnFirstPage(int headerLines = 2) const
    {
        return 1 + static_cast<int>(std::floor((13500 - (FirstRow(headerLines) + line_)) / RowStep())) + 1;
    }

    static double Width(const std::wstring& text, bool bold = false, double points = 12)
    {
        Printer printer(RecordPages(std::make_shared<Recording>()));
        printer.SetFontBold(bold);
        printer.SetFontSize(points);
        return printer.TextWidth(text);
    }

    static std::vector<std::wstring> Dates(const RecordedPage& page)
    {
        std::vector<std::wstring> dates;
        for (const DrawnText& text : page.texts) {
            if (std::abs(text.x - 1430) < exact && text.text.size() == 10) {
                dates.push_back(text.text);
            }
        }
        return dates;
    }

    static bool HasTableHeading(const RecordedPage& page) { return HasText(page, L"route"); }
};

} // namespace

TEST_F(JournalReport, PutsTheCompanyAndTheTitleOnTheFirstLineInBigBoldArial)
{
    SetUserInfo(L"Company", L"Åkeri AB");
    const auto& page = Print({2003, 4, 1}, {2003, 4, 1}).front();
    const DrawnText company = TextOf(page, L"Åkeri AB");
    EXPECT_NEAR(company.x, 800, exact);
    EXPECT_NEAR(company.y, 800, exact);
    EXPECT_NEAR(company.points, 20, 0.1);
    EXPECT_TRUE(company.bold);
    EXPECT_EQ(company.font, L"Arial");
    const DrawnText title = TextOf(page, L"Driver's journal");
    EXPECT_NEAR(title.x + Width(title.text, true, 20), width_ - 800, exact);
    EXPECT_NEAR(title.y, 800, exact);
    EXPECT_NEAR(title.points, 20, 0.1);
    EXPECT_TRUE(title.bold);
}

TEST_F(JournalReport, DrawsAThickLineAboveAndBelowTheHeader)
{
    const auto& page = Print({2003, 4, 1}, {2003, 4, 1}).front();
    const double first = 800 + bigLine_ + 100;
    EXPECT_TRUE(HasLine(page, 800, first, width_ - 800, first, 10)) << LinesAt(page, first);
    const double second = first + 3 * line_ + 200;
    EXPECT_TRUE(HasLine(page, 800, second, width_ - 800, second, 10)) << LinesAt(page, second);
}

TEST_F(JournalReport, IndentsBoldLabelsByTenSpaces)
{
    SetUserInfo(L"Name", L"Alice");
    SetUserInfo(L"Surname", L"Hargreave");
    const auto& page = Print({2003, 4, 17}, {2003, 5, 16}).front();
    const double firstLine = 800 + bigLine_ + 100 + line_;
    for (const auto& [label, value, y] : {std::tuple{L"Refer to:", L"2003-04-17 to 2003-05-16", firstLine},
                                          {L"Name:", L"Alice Hargreave", firstLine + line_}}) {
        const DrawnText bold = TextOf(page, label);
        EXPECT_NEAR(bold.x, 10 * Width(L" ", true), exact);
        EXPECT_NEAR(bold.y, y, exact);
        EXPECT_NEAR(bold.points, 12, 0.1);
        EXPECT_TRUE(bold.bold);
        const DrawnText plain = TextOf(page, value);
        EXPECT_NEAR(plain.x, bold.x + Width(label, true) + 2 * Width(L" "), 2 * exact);
        EXPECT_NEAR(plain.y, y, exact);
        EXPECT_FALSE(plain.bold);
    }
}

TEST_F(JournalReport, PrintsTheUsersOwnHeadingWhenThatIsChosen)
{
    Form().Text2.SetText(L"Journeys in spring");
    Form().Option1[1].SetValue(true);
    const auto& page = Print({2003, 4, 1}, {2003, 4, 1}).front();
    EXPECT_TRUE(HasText(page, L"Journeys in spring"));
    EXPECT_FALSE(HasText(page, L"2003-04-01 to 2003-04-01"));
}

TEST_F(JournalReport, PrintsTheSocialSecurityNumberOnlyIfItIsEnabled)
{
    SetUserInfo(L"Personnummer", L"700101-0000");
    EXPECT_FALSE(HasText(Print({2003, 4, 1}, {2003, 4, 1}).front(), L"Social security number:"));
    for (const wchar_t* off : {L"0", L"2", L"-1", L"", L"True", L"99999"}) {
        SetUserInfo(L"Aktiverat_personnummer", off);
        const auto& page = Print({2003, 4, 1}, {2003, 4, 1}).front();
        EXPECT_FALSE(HasText(page, L"Social security number:")) << testing::PrintToString(off);
        EXPECT_FALSE(HasText(page, L"700101-0000"));
        EXPECT_NEAR(TextOf(page, L"2003-04-01").y, FirstRow(2), exact);
    }
    SetUserInfo(L"Aktiverat_personnummer", L"1");
    const auto& page = Print({2003, 4, 1}, {2003, 4, 1}).front();
    const double y = 800 + bigLine_ + 100 + 3 * line_;
    EXPECT_TRUE(TextOf(page, L"Social security number:").bold);
    EXPECT_NEAR(TextOf(page, L"Social security number:").y, y, exact);
    EXPECT_FALSE(TextOf(page, L"700101-0000").bold);
    EXPECT_NEAR(TextOf(page, L"700101-0000").y, y, exact);
    EXPECT_NEAR(TextOf(page, L"2003-04-01").y, FirstRow(3), exact);
}

TEST_F(JournalReport, DrawsATableHeadingOfDateUnitAndRouteInAThickBox)
{
    const auto& page = Print({2003, 4, 1}, {2003, 4, 1}).front();
    const double top = TableTop();
    for (const auto& [text, x] : {std::pair{L"date", 1450.0}, {L"miles", 3000.0}, {L"route", 6700.0}}) {
        const DrawnText heading = TextOf(page, text);
        EXPECT_NEAR(heading.x, x, exact);
        EXPECT_NEAR(heading.y, top, exact);
        EXPECT_NEAR(heading.points, 12, 0.1);
        EXPECT_TRUE(heading.bold);
    }
    EXPECT_TRUE(HasLine(page, 800, top, width_ - 800, top, 10)) << LinesAt(page, top);
    EXPECT_TRUE(HasLine(page, 800, top + line_, width_ - 800, top + line_, 10));
    for (const double x : {800.0, 2700.0, 3830.0, width_ - 800}) {
        EXPECT_TRUE(HasLine(page, x, top, x, top + line_, 10)) << x;
    }
    EXPECT_FALSE(HasLine(page, 1400, top, 1400, top + line_, 10)) << "week and date have one heading cell";
}

TEST_F(JournalReport, PrintsARowForEveryCalendarDay)
{
    const auto& pages = Print({2004, 2, 26}, {2004, 3, 2});
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_THAT(Dates(pages[0]),
                ElementsAre(L"2004-02-26", L"2004-02-27", L"2004-02-28", L"2004-02-29", L"2004-03-01", L"2004-03-02"));
    int row = 0;
    for (const std::wstring& date : Dates(pages[0])) {
        const DrawnText text = TextOf(pages[0], date);
        EXPECT_NEAR(text.y, FirstRow() + row++ * RowStep(), exact) << testing::PrintToString(date);
        EXPECT_NEAR(text.points, 12, 0.1);
        EXPECT_FALSE(text.bold);
        EXPECT_TRUE(text.transparent);
    }
}

TEST_F(JournalReport, LabelsMondaysByTheirWeek)
{
    const auto& page = Print({2003, 4, 12}, {2003, 4, 22}).front();
    EXPECT_NEAR(TextOf(page, L"v 16").x, 830, exact);
    EXPECT_NEAR(TextOf(page, L"v 16").y, TextOf(page, L"2003-04-14").y, exact);
    EXPECT_NEAR(TextOf(page, L"v 17").y, TextOf(page, L"2003-04-21").y, exact);
    const auto labels =
        std::ranges::count_if(page.texts, [](const DrawnText& text) { return text.text.starts_with(L"v "); });
    EXPECT_EQ(labels, 2);
}

TEST_F(JournalReport, AlignsDistancesRightAndRoutesLeft)
{
    DataInterface::AddDay(2003, 4, 1, 7, L"Bank");
    DataInterface::AddDay(2003, 4, 2, 1234.5, L"Airport");
    DataInterface::AddDay(2003, 4, 3, 0, L"Depot");
    const auto& page = Print({2003, 4, 1}, {2003, 4, 3}).front();
    for (const auto& [date, distance, route] : {std::tuple{L"2003-04-01", L"7", L"Bank"},
                                                {L"2003-04-02", L"1234.5", L"Airport"},
                                                {L"2003-04-03", L"0", L"Depot"}}) {
        const double y = TextOf(page, date).y;
        EXPECT_NEAR(TextOf(page, distance).x + Width(distance), 3750, exact);
        EXPECT_NEAR(TextOf(page, distance).y, y, exact);
        EXPECT_NEAR(TextOf(page, route).x, 3900, exact);
        EXPECT_NEAR(TextOf(page, route).y, y, exact);
    }
}

TEST_F(JournalReport, LeavesOutANegativeDistanceButPrintsItsRoute)
{
    DataInterface::AddDay(2003, 4, 2, -2, L"Trade fair");
    const auto& page = Print({2003, 4, 1}, {2003, 4, 3}).front();
    EXPECT_TRUE(HasText(page, L"Trade fair"));
    EXPECT_FALSE(HasText(page, L"-2"));
    EXPECT_TRUE(HasText(page, L" 0")) << "the sum";
}

TEST_F(JournalReport, DrawsTheBordersOfARowFromAboveItsTextToItsBottom)
{
    const auto& page = Print({2003, 4, 15}, {2003, 4, 17}).front();
    const double top = TextOf(page, L"2003-04-16").y - 30;
    const double bottom = top + 30 + line_;
    for (const double x : {800.0, 1400.0, 2700.0, 3830.0, width_ - 800}) {
        EXPECT_TRUE(HasLine(page, x, top, x, bottom, 1)) << x << '\n' << LinesAt(page, top);
    }
    EXPECT_TRUE(HasLine(page, 1400, bottom, width_ - 800, bottom, 1)) << LinesAt(page, bottom);
    EXPECT_FALSE(HasLine(page, 800, bottom, 1400, bottom, 1)) << "the cell of the week has no bottom border here";
}

TEST_F(JournalReport, DrawsTheFirstRowDirectlyBelowTheHeadingBox)
{
    const auto& page = Print({2003, 4, 15}, {2003, 4, 15}).front();
    for (const double x : {800.0, 1400.0, 2700.0, 3830.0, width_ - 800}) {
        EXPECT_TRUE(HasLine(page, x, TableTop() + line_, x, FirstRow() + line_, 1)) << x;
    }
}

TEST_F(JournalReport, DrawsTheBottomOfTheWeekCellOnMondaysAndBelowTheLastRow)
{
    const auto& page = Print({2003, 4, 12}, {2003, 4, 16}).front();
    const double monday = TextOf(page, L"2003-04-14").y - 30;
    EXPECT_TRUE(HasLine(page, 800, monday, 1400, monday, 1));
    const double tuesday = TextOf(page, L"2003-04-15").y - 30;
    EXPECT_FALSE(HasLine(page, 800, tuesday, 1400, tuesday, 1));
    const double end = TextOf(page, L"2003-04-16").y + line_;
    EXPECT_TRUE(HasLine(page, 800, end, 1400, end, 1));
}

TEST_F(JournalReport, ShadesTheDateOfSaturdaysAndSundaysOnly)
{
    const auto& page = Print({2003, 4, 17}, {2003, 4, 23}).front();
    ASSERT_EQ(page.boxes.size(), 2U);
    const double saturday = TextOf(page, L"2003-04-19").y;
    const double sunday = TextOf(page, L"2003-04-20").y;
    for (const auto& [box, y] : {std::pair{page.boxes[0], saturday}, {page.boxes[1], sunday}}) {
        EXPECT_NEAR(box.left, 1400, exact);
        EXPECT_NEAR(box.right, 2700, 2 * exact);
        EXPECT_NEAR(box.top, y - 30, exact);
        EXPECT_NEAR(box.bottom, y + line_, 2 * exact);
        EXPECT_TRUE(box.filled);
        EXPECT_EQ(box.fill, GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(box.outline, GetSysColor(COLOR_BTNFACE));
    }
}

TEST_F(JournalReport, DrawsTheBordersOfAShadedCell)
{
    const auto& page = Print({2003, 4, 18}, {2003, 4, 20}).front();
    const DrawnBox& box = page.boxes.at(0);
    const auto drawnAfter = [&](double x1, double y1, double x2, double y2) {
        return std::ranges::any_of(page.lines, [&](const DrawnLine& line) {
            return line.when > box.when && std::abs(line.x1 - x1) < exact && std::abs(line.y1 - y1) < exact &&
                   std::abs(line.x2 - x2) < exact && std::abs(line.y2 - y2) < exact;
        });
    };
    const double top = TextOf(page, L"2003-04-19").y - 30;
    EXPECT_TRUE(drawnAfter(1400, top, 2700, top));
    EXPECT_TRUE(drawnAfter(1400, top, 1400, top + 30 + line_));
    EXPECT_TRUE(drawnAfter(2700, top, 2700, top + 30 + line_));
    EXPECT_TRUE(drawnAfter(1400, top + 30 + line_, width_ - 800, top + 30 + line_));
}

TEST_F(JournalReport, MakesARowAsHighAsTheLinesOfItsRoute)
{
    const std::wstring route(150, L'm'); // each 0.83 of 12 points wide
    DataInterface::AddDay(2003, 4, 19, 10, route);
    const auto& page = Print({2003, 4, 18}, {2003, 4, 20}).front();
    const auto fitting = static_cast<std::size_t>((width_ - 4700) / Width(L"m"));
    const auto lines = static_cast<int>((route.size() + fitting - 1) / fitting);
    ASSERT_EQ(lines, 5);
    const double top = TextOf(page, L"2003-04-19").y;
    std::vector<DrawnText> parts;
    for (const DrawnText& text : page.texts) {
        if (text.text.starts_with(L"mm")) {
            parts.push_back(text);
        }
    }
    ASSERT_EQ(parts.size(), 5U);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        EXPECT_EQ(parts[i].text.size(), i < 4 ? fitting : route.size() - 4 * fitting);
        EXPECT_NEAR(parts[i].x, 3900, exact);
        EXPECT_NEAR(parts[i].y, top + static_cast<double>(i) * line_, exact);
    }
    EXPECT_NEAR(page.boxes.at(0).bottom, top + lines * line_, 2 * exact);
    EXPECT_NEAR(TextOf(page, L"2003-04-20").y, top + lines * line_ + 30, exact);
    EXPECT_TRUE(HasLine(page, 3830, top - 30, 3830, top + lines * line_, 1));
}

TEST_F(JournalReport, PutsAtMost70CharactersOnALineExceptTheLast)
{
    ASSERT_LT(Width(std::wstring(130, L'i')), width_ - 4700);
    ASSERT_GT(Width(std::wstring(160, L'i')), width_ - 4700);
    DataInterface::AddDay(2003, 4, 17, 10, std::wstring(130, L'i'));
    DataInterface::AddDay(2003, 4, 18, 10, std::wstring(300, L'i'));
    const auto& page = Print({2003, 4, 17}, {2003, 4, 18}).front();
    std::vector<std::size_t> lengths;
    for (const DrawnText& text : page.texts) {
        if (text.text.starts_with(L"ii")) {
            lengths.push_back(text.text.size());
        }
    }
    EXPECT_THAT(lengths, ElementsAre(130, 70, 70, 70, 90));
}

TEST_F(JournalReport, AddsUpTheDistancesThatItPrints)
{
    DataInterface::AddDay(2003, 4, 1, 0.1, L"");
    DataInterface::AddDay(2003, 4, 2, 0.2, L"");
    DataInterface::AddDay(2003, 4, 3, -2, L"");
    DataInterface::AddDay(2003, 4, 4, 1200, L"");
    DataInterface::AddDay(2003, 3, 31, 5000, L"the day before the interval");
    DataInterface::AddDay(2003, 4, 5, 5000, L"the day after it");
    const auto& page = Print({2003, 4, 1}, {2003, 4, 4}).front();
    const double top = FirstRow() + 4 * RowStep() - 30 + line_;
    const DrawnText label = TextOf(page, L"Sum:");
    EXPECT_NEAR(label.x, 1000, exact);
    EXPECT_NEAR(label.y, top, exact) << "an empty line below the table";
    EXPECT_TRUE(label.bold);
    EXPECT_NEAR(label.points, 12, 0.1);
    const DrawnText sum = TextOf(page, L" 1200.3");
    EXPECT_NEAR(sum.x + Width(sum.text, true), 3650, exact);
    EXPECT_NEAR(sum.y, top, exact);
    EXPECT_TRUE(sum.bold);
    const double rule = top + line_ - 55;
    EXPECT_TRUE(HasLine(page, 800, rule, 3830, rule, 10)) << LinesAt(page, rule);
    EXPECT_TRUE(HasLine(page, 2300, top, 2300, rule, 10));
}

TEST_F(JournalReport, EndsWithDottedLinesForDateAndSignature)
{
    const auto& pages = Print({2003, 1, 1}, {2003, 3, 31});
    ASSERT_EQ(pages.size(), 3U);
    for (const RecordedPage& page : pages) {
        std::vector<std::tuple<double, double, double>> dotted;
        for (const DrawnLine& line : page.lines) {
            if (line.dotted) {
                dotted.emplace_back(line.x1, line.x2, line.y1);
                EXPECT_EQ(line.width, 1);
            }
        }
        if (&page != &pages.back()) {
            EXPECT_TRUE(dotted.empty());
            EXPECT_FALSE(HasText(page, L"Signature"));
            continue;
        }
        ASSERT_EQ(dotted.size(), 2U);
        EXPECT_NEAR(std::get<0>(dotted[0]), 1500, exact);
        EXPECT_NEAR(std::get<1>(dotted[0]), 4000, exact);
        EXPECT_NEAR(std::get<0>(dotted[1]), 4300, exact);
        EXPECT_NEAR(std::get<1>(dotted[1]), width_ - 1500, exact);
        EXPECT_NEAR(std::get<2>(dotted[0]), 14900, exact);
        EXPECT_NEAR(std::get<2>(dotted[1]), 14900, exact);
    }
    for (const auto& [text, x] : {std::pair{L"Date", 1500.0}, {L"Signature", 4300.0}}) {
        const DrawnText caption = TextOf(pages.back(), text);
        EXPECT_NEAR(caption.x, x, exact);
        EXPECT_NEAR(caption.y, 14980, exact);
        EXPECT_TRUE(caption.italic);
        EXPECT_FALSE(caption.bold);
        EXPECT_NEAR(caption.points, 12, 0.1);
    }
}

TEST_F(JournalReport, NumbersEveryPageInItsFooter)
{
    const auto& pages = Print({2003, 1, 1}, {2003, 3, 31});
    ASSERT_EQ(pages.size(), 3U);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const DrawnText footer = TextOf(pages[i], L"Page " + std::to_wstring(i + 1));
        EXPECT_NEAR(footer.x, width_ / 2 - Width(footer.text, false, 10) / 2, exact);
        EXPECT_NEAR(footer.y, 15350 + line_, exact);
        EXPECT_NEAR(footer.points, 10, 0.1);
        EXPECT_FALSE(footer.italic);
        EXPECT_TRUE(HasLine(pages[i], 800, 15350, width_ - 800, 15350, 1));
    }
}

TEST_F(JournalReport, RepeatsTheTableHeadingOnANewPage)
{
    const int first = RowsOnFirstPage();
    const auto& pages = Print({2003, 1, 1}, {2003, 3, 31});
    EXPECT_EQ(Dates(pages[0]).size(), static_cast<std::size_t>(first));
    const auto& page = pages[1];
    EXPECT_TRUE(HasLine(page, 800, 900, width_ - 800, 900, 10));
    EXPECT_NEAR(TextOf(page, L"route").y, 900, exact);
    EXPECT_TRUE(TextOf(page, L"route").bold);
    EXPECT_NEAR(TextOf(page, L"route").points, 12, 0.1);
    const DrawnText row = TextOf(page, Dates(page).front());
    EXPECT_NEAR(row.y, FirstContinuedRow(), exact);
    EXPECT_NEAR(row.points, 12, 0.1) << "the font of the row, not of the footer before it";
    EXPECT_FALSE(HasText(page, L"Driver's journal")) << "the header is on the first page only";
    EXPECT_FALSE(HasText(page, L"Name:"));
    const double end = FirstRow() + (first - 1) * RowStep() + line_;
    EXPECT_TRUE(HasLine(pages[0], 800, end, 1400, end, 1)) << "the week's cell is closed before the break\n"
                                                           << LinesAt(pages[0], end);
}

TEST_F(JournalReport, PrintsEveryDayOnceInIntervalsOfEveryLength)
{
    for (const auto& [from, to, days] : {std::tuple{CalendarDay{2004, 2, 29}, CalendarDay{2004, 2, 29}, 1},
                                         {CalendarDay{2003, 4, 1}, CalendarDay{2003, 4, 30}, 30},
                                         {CalendarDay{2003, 12, 1}, CalendarDay{2003, 12, 31}, 31},
                                         {CalendarDay{2004, 1, 1}, CalendarDay{2004, 12, 31}, 366},
                                         {CalendarDay{2000, 1, 1}, CalendarDay{2004, 12, 31}, 1827}}) {
        const auto& pages = Print(from, to);
        std::vector<std::wstring> printed;
        for (const RecordedPage& page : pages) {
            for (const std::wstring& date : Dates(page)) {
                printed.push_back(date);
            }
        }
        ASSERT_EQ(printed.size(), static_cast<std::size_t>(days));
        for (int day = 0; day < days; ++day) {
            const CalendarDay expected = Plus(from, day);
            EXPECT_EQ(printed[static_cast<std::size_t>(day)], std::to_wstring(expected.year) + L"-" +
                                                                  frmInterval::TwoDigits(expected.month) + L"-" +
                                                                  frmInterval::TwoDigits(expected.day));
        }
        EXPECT_TRUE(HasText(pages.back(), L"Sum:"));
    }
}

TEST_F(JournalReport, KeepsAMonthAndItsSumOnOnePage)
{
    EXPECT_EQ(Print({2003, 12, 1}, {2003, 12, 31}).size(), 1U);
}

TEST_F(JournalReport, BreaksThePageAfterTheFirstRowThatEndsBelowTheLimit)
{
    const CalendarDay from{2003, 1, 1};
    const int fitting = RowsOnFirstPage();
    const auto shorter = Print(from, Plus(from, fitting - 2));
    ASSERT_EQ(shorter.size(), 1U) << "the last row ends above the limit";
    EXPECT_LE(TextOf(shorter[0], Dates(shorter[0]).back()).y + line_, 13500);
    EXPECT_TRUE(HasText(shorter[0], L"Sum:"));

    const auto full = Print(from, Plus(from, fitting - 1));
    ASSERT_EQ(full.size(), 2U);
    EXPECT_GT(TextOf(full[0], Dates(full[0]).back()).y + line_, 13500);
    EXPECT_FALSE(HasText(full[0], L"Sum:"));
    EXPECT_TRUE(Dates(full[1]).empty());
    EXPECT_FALSE(HasTableHeading(full[1])) << "the table does not continue there";
    EXPECT_NEAR(TextOf(full[1], L"Sum:").y, 900 + line_, exact);
    EXPECT_TRUE(HasText(full[1], L"Signature"));
    EXPECT_TRUE(HasText(full[1], L"Page 2"));
    EXPECT_FALSE(HasLine(full[1], 800, 900, 1400, 900, 1)) << "there is no cell of a week";

    const auto longer = Print(from, Plus(from, fitting));
    ASSERT_EQ(longer.size(), 2U);
    EXPECT_TRUE(HasTableHeading(longer[1]));
    EXPECT_EQ(Dates(longer[1]).size(), 1U);
    EXPECT_TRUE(HasText(longer[1], L"Sum:"));
}

TEST_F(JournalReport, PrintsAnotherRowIfOneEndsExactlyAtTheLimit)
{
    // With lines of 276 twips, 24 rows of 42 lines below the heading of a later page end at exactly 13500.
    ASSERT_EQ(line_, 276);
    const auto fitting = static_cast<std::size_t>((width_ - 4700) / Width(L"m"));
    const CalendarDay from{2003, 1, 1};
    const int before = RowsOnFirstPage();
    const CalendarDay high = Plus(from, before);
    DataInterface::AddDay(high.year, high.month, high.day, 5, std::wstring(19 * fitting, L'm'));
    const auto atTheLimit = Print(from, Plus(from, before + 23));
    ASSERT_EQ(atTheLimit.size(), 2U);
    EXPECT_EQ(Dates(atTheLimit[1]).size(), 24U);
    EXPECT_TRUE(HasLine(atTheLimit[1], 800, 13500, 1400, 13500, 1)) << LinesAt(atTheLimit[1], 13500);
    EXPECT_TRUE(HasText(atTheLimit[1], L"Sum:"));
    EXPECT_EQ(Dates(Print(from, Plus(from, before + 24)).at(1)).size(), 25U);
}

TEST_F(JournalReport, KeepsEveryRowOnOnePage)
{
    const CalendarDay from{2003, 1, 1};
    const int fitting = RowsOnFirstPage();
    const CalendarDay lastThatFits = Plus(from, fitting - 2);
    DataInterface::AddDay(lastThatFits.year, lastThatFits.month, lastThatFits.day, 5, std::wstring(210, L'm'));
    const auto pages = Print(from, Plus(from, fitting));
    ASSERT_EQ(pages.size(), 2U);
    const auto parts = [](const RecordedPage& page) {
        return std::ranges::count_if(page.texts, [](const DrawnText& text) { return text.text.starts_with(L"mm"); });
    };
    EXPECT_GE(parts(pages[0]), 6);
    EXPECT_EQ(parts(pages[1]), 0);
    EXPECT_EQ(Dates(pages[0]).size(), static_cast<std::size_t>(fitting - 1));
    EXPECT_EQ(Dates(pages[1]).size(), 2U);
}

TEST_F(JournalReport, CarriesTheSumOverPagesAndResetsItForTheNextReport)
{
    for (std::int16_t month = 1; month <= 12; ++month) {
        DataInterface::AddDay(2003, month, 15, 100, L"");
    }
    for (int copy = 1; copy <= 2; ++copy) {
        const auto& pages = Print({2003, 1, 1}, {2003, 12, 31});
        EXPECT_TRUE(HasText(pages.back(), L" 1200")) << "copy " << copy;
        EXPECT_TRUE(HasText(pages.front(), L"Page 1")) << "copy " << copy;
        EXPECT_TRUE(recording_->ended);
    }
}

TEST_F(JournalReport, HasItsTextsInSwedish)
{
    SpeakSwedish();
    SetUserInfo(L"Aktiverat_personnummer", L"1");
    DataInterface::AddDay(2003, 4, 17, 12, L"Göteborg");
    const auto& page = Print({2003, 4, 17}, {2003, 4, 17}).front();
    for (const wchar_t* text : {L"Körjournal", L"Avser:", L"2003-04-17 till 2003-04-17", L"Namn:", L"Personnummer:",
                                L"mil", L"Färdväg", L"Totalt:", L" 12", L"Underskrift", L"Sida 1"}) {
        EXPECT_TRUE(HasText(page, text)) << testing::PrintToString(text);
    }
    EXPECT_EQ(std::ranges::count(page.texts, L"Datum", &DrawnText::text), 2)
        << "in the heading of the table and below the signature line";
}

TEST_F(JournalReport, ReadsTheEmployeeWhenItPrints)
{
    SetUserInfo(L"Company", L"Before");
    Print({2003, 4, 17}, {2003, 4, 17});
    SetUserInfo(L"Company", L"After");
    EXPECT_TRUE(HasText(Print({2003, 4, 17}, {2003, 4, 17}).front(), L"After"));
}

TEST_F(JournalReport, AbortsTheDocumentWhenThePrinterFailsInTheMiddle)
{
    Choose(Form(), {2003, 1, 1}, {2003, 12, 31});
    recording_ = std::make_shared<Recording>();
    recording_->failingPage = 3;
    Form().SelectPrinter(Printer(RecordPages(recording_)));
    EXPECT_EQ(ErrorOf([this] { Form().PrintJournal(); }), ErrorNumber::PrinterError);
    EXPECT_TRUE(recording_->aborted);
    EXPECT_FALSE(recording_->ended);
}

TEST(TwoDigits, AddsALeadingZeroToOneDigit)
{
    EXPECT_EQ(frmInterval::TwoDigits(7), L"07");
    EXPECT_EQ(frmInterval::TwoDigits(12), L"12");
    EXPECT_EQ(frmInterval::TwoDigits(0), L"00");
}
