// The report on paper of every size: complete, with the same rows on the same pages, and smaller only if necessary.
#include "tests/forms/print/PrintedReport.h"

#include "tests/support/MachinePaper.h"
#include "tests/support/PrintedJobs.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <ostream>
#include <tuple>
#include <utility>

using testing::ElementsAreArray;

namespace {

constexpr double neededHeight = 15856; // of the paper for the report at full size; repeated here to check the report

struct Sort {
    const wchar_t* paper;
    bool landscape;
    double width; ///< of the printable area, in twips
    double height;
    double border; ///< not printable, on each side
};

void PrintTo(const Sort& sort, std::ostream* out)
{
    *out << std::filesystem::path(sort.paper).string() << (sort.landscape ? "Landscape" : "");
}

const std::array sorts{
    Sort{L"A4", false, 11900, 16840, 0},
    Sort{L"A4", true, 16840, 11900, 0},
    Sort{L"A3", false, 16840, 23820, 0},
    Sort{L"A3", true, 23820, 16840, 0},
    Sort{L"A5", false, 8400, 11900, 0},
    Sort{L"A5", true, 11900, 8400, 0},
    Sort{L"Letter", false, 12240, 15840, 0},
    Sort{L"LetterQuarterInch", false, 11520, 15120, 360},
    Sort{L"LetterHalfInch", false, 10800, 14400, 720},
    Sort{L"Legal", false, 12240, 20160, 0},
    Sort{L"LegalQuarterInch", false, 11520, 19440, 360},
    Sort{L"LegalHalfInch", false, 10800, 18720, 720},
    Sort{L"Label", false, 5400, 8280, 180},
};

constexpr std::chrono::year_month_day first{std::chrono::year(2004), std::chrono::January, std::chrono::day(15)};
constexpr int days = 80;

CalendarDay DayOfInterval(int index)
{
    const std::chrono::year_month_day date(std::chrono::sys_days(first) + std::chrono::days(index));
    return {static_cast<std::int16_t>(static_cast<int>(date.year())),
            static_cast<std::int16_t>(static_cast<unsigned>(date.month())),
            static_cast<std::int16_t>(static_cast<unsigned>(date.day()))};
}

std::wstring DateText(const CalendarDay& day)
{
    return std::to_wstring(day.year) + L"-" + frmInterval::TwoDigits(day.month) + L"-" +
           frmInterval::TwoDigits(day.day);
}

std::vector<std::wstring> DatesOfInterval()
{
    std::vector<std::wstring> dates(days);
    std::ranges::generate(dates, [index = 0]() mutable { return DateText(DayOfInterval(index++)); });
    return dates;
}

/// A report of several pages.
class PaperSizes : public ReportTest, public testing::WithParamInterface<std::tuple<Sort, int, bool>> {
protected:
    PaperSizes()
    {
        if (Swedish()) {
            SpeakSwedish();
        }
        SetUserInfo(L"Company", L"Åkeriet");
        SetUserInfo(L"Name", L"Åsa");
        SetUserInfo(L"Surname", L"Öberg");
        Form().Option1[1].SetValue(true); // the default heading would repeat two of the dates
        Form().Text2.SetText(L"Resor");
    }

    static const Sort& TheSort() { return std::get<0>(GetParam()); }
    static bool Swedish() { return std::get<2>(GetParam()); }
    static int Dots() { return std::get<1>(GetParam()); }
    static PrinterDevice Device()
    {
        return PrinterWith({.name = TheSort().paper, .landscape = TheSort().landscape, .dotsPerInch = Dots()});
    }
    static double Factor() { return std::min(1.0, TheSort().height / neededHeight); }
    static double Dot() { return 1440.0 / Dots(); }

    static void DriveEveryThirdDay()
    {
        for (int index = 0; index < days; index += 3) {
            const CalendarDay day = DayOfInterval(index);
            DataInterface::AddDay(day.year, day.month, day.day, 12.5, L"Malmö, " + std::wstring(120, L'm'));
        }
    }

    PrintedJob PrintOnPaper()
    {
        const std::size_t before = JobsEverQueued();
        PrintOn(Printer(OpenPrintJob(Device(), L"Report")));
        return WaitForJobs(before + 1).back();
    }

    std::vector<RecordedPage> Record(const PrinterDevice& device)
    {
        const auto recording = std::make_shared<Recording>();
        PrintOn(Printer(RecordPages(recording, device)));
        return recording->pages;
    }

    /// The same report at the same resolution on paper of sufficient size.
    std::vector<RecordedPage> RecordWithRoom()
    {
        return Record(PrinterWith({.name = L"A3", .landscape = false, .dotsPerInch = Dots()}));
    }

private:
    void PrintOn(Printer printer)
    {
        Choose(Form(), DayOfInterval(0), DayOfInterval(days - 1));
        Form().SelectPrinter(std::move(printer));
        Form().PrintJournal();
    }
};

std::vector<std::wstring> Dates(const RecordedPage& page)
{
    std::vector<std::wstring> dates;
    for (const DrawnText& text : page.texts) {
        if (text.text.starts_with(L"2004-")) {
            dates.push_back(text.text);
        }
    }
    return dates;
}

bool HasRule(const RecordedPage& page, double left, double right, double y, double exact)
{
    return std::ranges::any_of(page.lines, [=](const DrawnLine& line) {
        return std::abs(line.x1 - left) <= exact && std::abs(line.x2 - right) <= exact &&
               std::abs(line.y1 - y) <= exact && std::abs(line.y2 - y) <= exact;
    });
}

} // namespace

TEST_P(PaperSizes, ThePrinterHasThisPaper)
{
    const Sheet sheet = SheetOf(Device());
    EXPECT_NEAR(sheet.printableWidth, TheSort().width, 20);
    EXPECT_NEAR(sheet.printableHeight, TheSort().height, 20);
    EXPECT_NEAR(sheet.leftBorder, TheSort().border, Dot());
    EXPECT_NEAR(sheet.topBorder, TheSort().border, Dot());
}

TEST_P(PaperSizes, EveryDateIsPrintedOnceAndEveryWordInsideThePrintableArea)
{
    DriveEveryThirdDay();
    std::vector<std::wstring> dates;
    int labels = 0;
    int signatures = 0;
    int pages = 0;
    for (const WordOnSheet& word : PrintOnPaper().WordsOnSheets()) {
        pages = std::max(pages, word.page);
        labels += word.text == (Swedish() ? L"Sida" : L"Page") ? 1 : 0;
        signatures += word.text == (Swedish() ? L"Underskrift" : L"Signature") ? 1 : 0;
        if (word.text.starts_with(L"2004-")) {
            dates.push_back(word.text);
        }
        constexpr double exact = 20; // the PDF reader rounds the font size
        const double border = TheSort().border - exact;
        EXPECT_TRUE(word.left >= border && word.top >= border && word.right <= word.sheetWidth - border &&
                    word.bottom <= word.sheetHeight - border)
            << testing::PrintToString(word.text) << " on page " << word.page << " at " << word.left << ',' << word.top
            << " to " << word.right << ',' << word.bottom;
    }
    std::ranges::sort(dates);
    EXPECT_THAT(dates, ElementsAreArray(DatesOfInterval()));
    EXPECT_GT(pages, 2);
    EXPECT_EQ(labels, pages);
    EXPECT_EQ(signatures, 1);
}

TEST_P(PaperSizes, EveryLineAndBoxIsInsideThePrintableArea)
{
    DriveEveryThirdDay();
    const PrinterDevice device = Device();
    const Sheet sheet = SheetOf(device);
    const auto inside = [&](double x, double y, double reach) {
        return x - reach >= 0 && y - reach >= 0 && x + reach <= sheet.printableWidth &&
               y + reach <= sheet.printableHeight;
    };
    for (const RecordedPage& page : Record(device)) {
        for (const DrawnLine& line : page.lines) {
            const double reach = line.width * Dot() / 2;
            EXPECT_TRUE(inside(line.x1, line.y1, reach) && inside(line.x2, line.y2, reach)) << LinesAt(page, line.y1);
        }
        for (const DrawnBox& box : page.boxes) {
            EXPECT_TRUE(inside(box.left, box.top, 0) && inside(box.right, box.bottom, 0));
        }
        for (const DrawnText& text : page.texts) {
            constexpr double letters = 1.117; // height from the highest to the lowest glyph, relative to the font size
            EXPECT_TRUE(inside(text.x, text.y, 0) && inside(text.x, text.y + letters * 20 * text.points, 0))
                << testing::PrintToString(text.text) << " at " << text.x << ',' << text.y;
        }
    }
}

TEST_P(PaperSizes, ThePagesAreThoseOfLargePaperScaledByOneFactorIfThePaperIsSmaller)
{
    const PrinterDevice device = Device();
    const double width = SheetOf(device).printableWidth;
    const double exact = 1.5 * Dot();
    const auto pages = Record(device);
    const auto large = RecordWithRoom();
    ASSERT_EQ(pages.size(), large.size());
    for (std::size_t number = 0; number < pages.size(); ++number) {
        const RecordedPage& page = pages[number];
        ASSERT_EQ(page.texts.size(), large[number].texts.size());
        for (std::size_t text = 0; text < page.texts.size(); ++text) {
            const DrawnText& original = large[number].texts[text];
            EXPECT_EQ(page.texts[text].text, original.text);
            EXPECT_NEAR(page.texts[text].y, original.y * Factor(), Factor() < 1 ? exact : 0);
            EXPECT_NEAR(page.texts[text].points, original.points * Factor(), Factor() < 1 ? 72.0 / Dots() : 0);
        }
        EXPECT_TRUE(HasRule(page, 800 * Factor(), width - 800 * Factor(), 15350 * Factor(), exact))
            << LinesAt(page, 15350 * Factor());
        EXPECT_NEAR(TextOf(page, Dates(page).front()).x, 1430 * Factor(), exact);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryPaper, PaperSizes,
                         testing::Combine(testing::ValuesIn(sorts), testing::Values(300, 600), testing::Bool()),
                         [](const auto& given) {
                             const Sort& sort = std::get<0>(given.param);
                             return testing::PrintToString(sort) + std::to_string(std::get<1>(given.param)) + "dpi" +
                                    (std::get<2>(given.param) ? "Swedish" : "English");
                         });
