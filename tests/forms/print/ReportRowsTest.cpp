#include "forms/print/ReportRows.h"

#include "data/DataInterface.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>

#include <numeric>

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year;
using testing::ElementsAre;
using namespace std::chrono_literals;

namespace {

class ReportRows : public testing::Test {
protected:
    void TearDown() override
    {
        while (DataInterface::dayCount > 0) {
            const DayEntry& first = DataInterface::days.front();
            DataInterface::DeleteDay(first.year, first.month, first.day);
        }
    }
};

/// The widths of all prefixes of a text with characters of equal width.
std::vector<double> Widths(std::size_t characters, double each)
{
    std::vector<double> widths(characters, each);
    std::partial_sum(widths.begin(), widths.end(), widths.begin());
    return widths;
}

std::vector<std::size_t> Lengths(const std::vector<std::wstring_view>& lines)
{
    std::vector<std::size_t> lengths;
    lengths.reserve(lines.size());
    for (const std::wstring_view line : lines) {
        lengths.push_back(line.size());
    }
    return lengths;
}

std::vector<std::size_t> WrappedLengths(std::size_t characters, double each, double limit)
{
    return Lengths(WrapRoute(std::wstring(characters, L'x'), Widths(characters, each), limit));
}

} // namespace

TEST_F(ReportRows, WeekNumber_AgreesWithCountingSundaysFrom1990To2050)
{
    int dayOfWeek = 1; // 1 January 1990 was a Monday; Sunday is 0
    for (int y = 1990; y <= 2050; ++y) {
        int week = 1;
        const sys_days newYear = year(y) / std::chrono::January / 1;
        const sys_days end = year(y + 1) / std::chrono::January / 1;
        for (sys_days day = newYear; day < end; day += days(1), dayOfWeek = (dayOfWeek + 1) % 7) {
            week += dayOfWeek == 0 && day != newYear ? 1 : 0;
            ASSERT_EQ(WeekNumber(day), week) << y << ", day " << (day - newYear).count() + 1;
        }
    }
}

TEST_F(ReportRows, WeekNumber_CountsFromTheSundayOnOrBeforeNewYear)
{
    EXPECT_EQ(WeekNumber(2004y / std::chrono::January / 5), 2);
    EXPECT_EQ(WeekNumber(2004y / std::chrono::December / 27), 53);
    EXPECT_EQ(WeekNumber(2005y / std::chrono::January / 3), 2);
    EXPECT_EQ(WeekNumber(2006y / std::chrono::January / 2), 1);
    EXPECT_EQ(WeekNumber(2012y / std::chrono::December / 31), 53);
    EXPECT_EQ(WeekNumber(2000y / std::chrono::December / 31), 54)
        << "a Sunday, in a leap year that began on a Saturday";
}

TEST_F(ReportRows, RowOfDay_LabelsMondaysAndShadesWeekends)
{
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 14).week, L"v 16");
    EXPECT_FALSE(RowOfDay(2003y / std::chrono::April / 14).weekend);
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 15).week, L"");
    EXPECT_FALSE(RowOfDay(2003y / std::chrono::April / 18).weekend);
    EXPECT_TRUE(RowOfDay(2003y / std::chrono::April / 19).weekend);
    EXPECT_TRUE(RowOfDay(2003y / std::chrono::April / 20).weekend);
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 20).week, L"")
        << "weeks begin on Sunday, and their label is on Monday";
}

TEST_F(ReportRows, RowOfDay_WithoutAnEntryHasOnlyItsDate)
{
    const ReportRow row = RowOfDay(2003y / std::chrono::April / 7);
    EXPECT_EQ(row.date, L"2003-04-07");
    EXPECT_EQ(row.distance, L"");
    EXPECT_EQ(row.amount, 0);
    EXPECT_EQ(row.route, L"");
}

TEST_F(ReportRows, RowOfDay_ShowsDistanceAndRouteOfTheJournal)
{
    DataInterface::AddDay(2003, 4, 17, 100, L"Göteborg - Malmö");
    const ReportRow row = RowOfDay(2003y / std::chrono::April / 17);
    EXPECT_EQ(row.distance, L"100");
    EXPECT_EQ(row.amount, 100);
    EXPECT_EQ(row.route, L"Göteborg - Malmö");
}

TEST_F(ReportRows, RowOfDay_ShowsADistanceOf0)
{
    DataInterface::AddDay(2003, 4, 17, 0, L"");
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 17).distance, L"0");
}

TEST_F(ReportRows, RowOfDay_LeavesOutEveryNegativeDistanceButNotItsRoute)
{
    DataInterface::AddDay(2003, 4, 17, -2, L"Trade fair");
    DataInterface::AddDay(2003, 4, 18, -0.5, L"Bank");
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 17).distance, L"");
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 17).amount, 0);
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 17).route, L"Trade fair");
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 18).distance, L"");
    EXPECT_EQ(RowOfDay(2003y / std::chrono::April / 18).amount, 0);
}

TEST_F(ReportRows, RowOfDay_AddsTheNumberThatIsShown)
{
    DataInterface::AddDay(2003, 4, 17, 0.1 + 0.2, L"");
    const ReportRow row = RowOfDay(2003y / std::chrono::April / 17);
    EXPECT_EQ(row.distance.size(), 3U) << "0.3 with the user's decimal separator";
    EXPECT_EQ(row.amount, 0.3);
}

TEST_F(ReportRows, SumText_BeginsWithASpaceUnlessTheSumIsNegative)
{
    EXPECT_EQ(SumText(0), L" 0");
    EXPECT_EQ(SumText(3E300), L" 3E+300");
    EXPECT_EQ(SumText(1E308 + 1E308), L" \u221e");
    EXPECT_EQ(SumText(1234567), L" 1234567");
    EXPECT_EQ(SumText(-2), L"-2");
}

TEST_F(ReportRows, ReportDay_ReadsYearMonthDayUnderEveryLocale)
{
    EXPECT_EQ(ReportDay(L"2003-04-17"), sys_days(2003y / std::chrono::April / 17));
    EXPECT_EQ(ReportDay(L"2004-02-29"), sys_days(2004y / std::chrono::February / 29));
    for (const wchar_t* text : {L"", L"2003", L"2003-04", L"2003-13-01", L"2003-00-10", L"2003-02-29", L"2003-04-31",
                                L"2003-04-00", L"x-04-17", L"2003--04"}) {
        EXPECT_EQ(ErrorOf([text] { ReportDay(text); }), ErrorNumber::TypeMismatch);
    }
}

TEST_F(ReportRows, WrapRoute_KeepsARouteThatFitsOnOneLine)
{
    EXPECT_THAT(WrappedLengths(60, 120, 7200), ElementsAre(60)) << "just as wide as the column";
    EXPECT_THAT(WrappedLengths(61, 120, 7200), ElementsAre(60, 1));
}

TEST_F(ReportRows, WrapRoute_ReturnsOneEmptyLineForAnEmptyRoute)
{
    EXPECT_THAT(WrappedLengths(0, 120, 7200), ElementsAre(0));
}

TEST_F(ReportRows, WrapRoute_PutsAtMost70CharactersOnALineThatIsNotTheLast)
{
    EXPECT_THAT(WrappedLengths(200, 50, 7200), ElementsAre(70, 130)) << "144 would fit, on the last line too";
    EXPECT_THAT(WrappedLengths(144, 50, 7200), ElementsAre(144));
    EXPECT_THAT(WrappedLengths(145, 50, 7200), ElementsAre(70, 75));
}

TEST_F(ReportRows, WrapRoute_PutsAsManyCharactersOnALineAsFit)
{
    EXPECT_THAT(WrappedLengths(150, 120, 7200), ElementsAre(60, 60, 30));
    EXPECT_THAT(WrappedLengths(150, 121, 7200), ElementsAre(59, 59, 32));
}

TEST_F(ReportRows, WrapRoute_BreaksWhereTheLineIsFullAndNotAtBlanks)
{
    const std::wstring route = L"Göteborg Borås Jönköping";
    const auto lines = WrapRoute(route, Widths(route.size(), 100), 1000);
    EXPECT_THAT(lines, ElementsAre(L"Göteborg B", L"orås Jönkö", L"ping"));
}

TEST_F(ReportRows, WrapRoute_KeepsAllCharactersOfATextOfDifferentWidths)
{
    std::wstring route;
    std::vector<double> widths;
    double width = 0;
    for (int i = 0; i < 10000; ++i) {
        route += static_cast<wchar_t>(L'a' + i % 26);
        widths.push_back(width += 60 + i * 37 % 140);
    }
    std::wstring together;
    std::size_t at = 0;
    for (const std::wstring_view line : WrapRoute(route, widths, 7206)) {
        together += line;
        const double lineWidth = widths[at + line.size() - 1] - (at == 0 ? 0 : widths[at - 1]);
        EXPECT_LE(lineWidth, 7206);
        at += line.size();
        if (at < route.size() && line.size() < 70) {
            EXPECT_GT(widths[at] - widths[at - line.size()] +
                          (widths[at - line.size()] - (at == line.size() ? 0 : widths[at - line.size() - 1])),
                      7206)
                << "one more character does not fit";
        }
    }
    EXPECT_EQ(together, route);
}

TEST_F(ReportRows, WrapRoute_PutsOneCharacterOnALineIfNoneFits)
{
    EXPECT_THAT(WrappedLengths(3, 120, 100), ElementsAre(1, 1, 1));
    EXPECT_THAT(WrappedLengths(3, 120, -700), ElementsAre(1, 1, 1)) << "paper narrower than the other columns";
}
