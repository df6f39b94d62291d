// The printed report, measured on its pages. The expected positions are repeated here as numbers, so that the test does
// not depend on the code of the report.
#include "tests/forms/print/PrintedReport.h"

#include "app/Module1.h"
#include "platform/system/Conversions.h"
#include "tests/support/PrintedJobs.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>

namespace {

constexpr double tolerance = 20;
constexpr double ascent = 0.905; // of the font, relative to its size
constexpr double line = 276;     // of 12 points
constexpr double bigLine = 460;  // of 20 points
constexpr double sheetWidth = 11900;
constexpr double black = 100; // darker than this

struct Language {
    bool swedish;
    const wchar_t* title;
    const wchar_t* refer;
    const wchar_t* name;
    const wchar_t* number;
    const wchar_t* to;
    const wchar_t* date;
    const wchar_t* route;
    const wchar_t* sum;
    const wchar_t* signatureDate;
    const wchar_t* signature;
    const wchar_t* page;
};

const Language english{false,   L"Driver's", L"Refer", L"Name:", L"Social",    L"to",
                       L"date", L"route",    L"Sum:",  L"Date",  L"Signature", L"Page"};
const Language swedish{true,     L"Körjournal", L"Avser:",  L"Namn:", L"Personnummer:", L"till",
                       L"Datum", L"Färdväg",    L"Totalt:", L"Datum", L"Underskrift",   L"Sida"};

/// The printed page of one language, with or without the social security number.
class ReportOnPaper : public ReportTest, public testing::WithParamInterface<std::tuple<Language, bool>> {
protected:
    ReportOnPaper()
    {
        if (Texts().swedish) {
            SpeakSwedish();
        }
        Module1::distanceUnit = L"km";
        SetUserInfo(L"Company", L"Åkeriet");
        SetUserInfo(L"Name", L"Åsa");
        SetUserInfo(L"Surname", L"Öberg");
        SetUserInfo(L"Personnummer", L"700101-0000");
        SetUserInfo(L"Aktiverat_personnummer", WithNumber() ? L"1" : L"0");
        DataInterface::AddDay(2003, 4, 14, 12.5, L"Göteborg");
        DataInterface::AddDay(2003, 4, 19, 100, std::wstring(90, L'm'));
        DataInterface::AddDay(2003, 4, 21, 0, L"Örebro");
        // The tests of one parameter use the same page.
        static std::map<std::pair<bool, bool>, std::pair<PrintedJob, std::vector<PrintedWord>>> sheets;
        auto& [job, words] = sheets[{Texts().swedish, WithNumber()}];
        if (words.empty()) {
            job = PrintSheet();
            words = job.Words();
        }
        job_ = job;
        words_ = words;
    }

    static const Language& Texts() { return std::get<0>(GetParam()); }
    static bool WithNumber() { return std::get<1>(GetParam()); }

    static double HeaderLine(int number) { return 800 + bigLine + 100 + line * (number + 1); }
    static double TableTop() { return HeaderLine(WithNumber() ? 3 : 2) + 200 + 2 * line; }
    static double Row(int number) { return TableTop() + line + 12 + 30 + number * (line + 30); }

    PrintedJob PrintSheet()
    {
        const std::size_t before = JobsEverQueued();
        Choose(Form(), {2003, 4, 12}, {2003, 4, 22});
        Form().SelectPrinter(Printer(OpenPrintJob({L"Paper"}, L"Report")));
        Form().PrintJournal();
        return WaitForJobs(before + 1).back();
    }

    /// Expects a word at the given top left corner of its line of text.
    void ExpectWord(const std::wstring& text, double x, double y, double points = 12) const
    {
        const double baseline = y + ascent * points * 20;
        std::wstring others;
        for (const PrintedWord& word : words_) {
            if (word.text != text) {
                continue;
            }
            if (std::abs(word.left - x) <= tolerance && std::abs(word.baseline - baseline) <= tolerance) {
                EXPECT_NEAR(word.points, points, 0.1);
                return;
            }
            others += L" " + std::to_wstring(word.left) + L"," + std::to_wstring(word.baseline);
        }
        ADD_FAILURE() << testing::PrintToString(text) << " is not at " << x << ", baseline " << baseline << " but at"
                      << testing::PrintToString(others);
    }

    /// Expects a word that ends at this position.
    void ExpectWordEnding(const std::wstring& text, double right, double y, double points = 12) const
    {
        const double baseline = y + ascent * points * 20;
        for (const PrintedWord& word : words_) {
            if (word.text == text && std::abs(word.right - right) <= tolerance &&
                std::abs(word.baseline - baseline) <= tolerance) {
                return;
            }
        }
        ADD_FAILURE() << testing::PrintToString(text) << " does not end at " << right << ", baseline " << baseline;
    }

    PrintedJob job_;
    std::vector<PrintedWord> words_;
};

} // namespace

TEST_P(ReportOnPaper, HasTheHeaderAtItsPosition)
{
    ExpectWord(L"Åkeriet", 800, 800, 20);
    ExpectWordEnding(Texts().swedish ? L"Körjournal" : L"journal", sheetWidth - 800, 800, 20);
    const double indent = 10 * 0.278 * 240; // ten spaces of a bold font of 12 points
    ExpectWord(Texts().refer, indent, HeaderLine(0));
    ExpectWord(Texts().name, indent, HeaderLine(1));
    const bool hasNumber = std::ranges::any_of(words_, [](const auto& word) { return word.text == L"700101-0000"; });
    EXPECT_EQ(hasNumber, WithNumber());
    if (WithNumber()) {
        ExpectWord(Texts().number, indent, HeaderLine(2));
    }
}

TEST_P(ReportOnPaper, HasTheTableAtItsPosition)
{
    ExpectWord(Texts().date, 1450, TableTop());
    ExpectWord(L"km", 3000, TableTop());
    ExpectWord(Texts().route, 6700, TableTop());
    ExpectWord(L"2003-04-12", 1430, Row(0));
    ExpectWord(L"v", 830, Row(2));
    ExpectWord(L"2003-04-14", 1430, Row(2));
    ExpectWordEnding(ToText(12.5), 3750, Row(2));
    ExpectWord(L"Göteborg", 3900, Row(2));
    ExpectWordEnding(L"100", 3750, Row(7));
    ExpectWord(std::wstring(36, L'm'), 3900, Row(7));
    ExpectWord(std::wstring(36, L'm'), 3900, Row(7) + line);
    ExpectWord(std::wstring(18, L'm'), 3900, Row(7) + 2 * line);
    ExpectWord(L"2003-04-20", 1430, Row(8) + 2 * line);
    ExpectWordEnding(L"0", 3750, Row(9) + 2 * line);
    ExpectWord(L"2003-04-22", 1430, Row(10) + 2 * line);
}

TEST_P(ReportOnPaper, HasSumSignatureAndFooterAtTheirPositions)
{
    const double sum = Row(11) - 30 + 3 * line;
    ExpectWord(Texts().sum, 1000, sum);
    ExpectWordEnding(ToText(112.5), 3650, sum);
    ExpectWord(Texts().signatureDate, 1500, 14980);
    ExpectWord(Texts().signature, 4300, 14980);
    const auto page = std::ranges::find(words_, Texts().page, &PrintedWord::text);
    ASSERT_NE(page, words_.end());
    EXPECT_NEAR(page->baseline, 15350 + line + ascent * 200, tolerance);
    const auto number = std::next(page);
    ASSERT_NE(number, words_.end());
    EXPECT_NEAR((page->left + number->right) / 2, sheetWidth / 2, tolerance);
}

TEST_P(ReportOnPaper, HasBordersWithoutGapsAndShadingBehindTheText)
{
    const PagePicture page(job_, 1);
    const double header = 800 + bigLine + 100;
    for (const double x : {805.0, 6000.0, sheetWidth - 805}) {
        EXPECT_LT(page.At(x, header), black) << "the line below the title at " << x;
        EXPECT_LT(page.At(x, TableTop()), black) << "the top of the heading box at " << x;
        EXPECT_LT(page.At(x, TableTop() + line), black) << "the bottom of the heading box at " << x;
        EXPECT_LT(page.At(x, 15350), 200) << "the line above the footer at " << x;
    }
    EXPECT_EQ(page.At(760, TableTop()), 255) << "nothing left of the table";
    EXPECT_EQ(page.At(sheetWidth - 760, Row(5)), 255) << "nothing right of the table";
    for (const double x : {800.0, 1400.0, 2700.0, 3830.0, sheetWidth - 800}) {
        const int end = static_cast<int>(Row(11) - 40 + 2 * line);
        for (int y = static_cast<int>(TableTop() + line); y < end; y += 10) {
            ASSERT_LT(page.At(x, y), 240) << "a gap in the border at " << x << ", " << y;
        }
    }
    const int shade = GetRValue(GetSysColor(COLOR_BTNFACE));
    for (const int weekend : {0, 1}) {
        EXPECT_NEAR(page.At(2680, Row(weekend) + 100), shade, 3);
        EXPECT_EQ(page.At(2720, Row(weekend) + 100), 255) << "only the date is shaded";
        int darkest = 255;
        for (int x = 1450; x < 2650; x += 10) {
            darkest = std::min(darkest, page.At(x, Row(weekend) + 140));
        }
        EXPECT_LT(darkest, black) << "the date is visible on the shading";
    }
    EXPECT_NEAR(page.At(2680, Row(7) + 2 * line + 100), shade, 3) << "a high row is shaded to its bottom";
    EXPECT_EQ(page.At(2680, Row(3) + 100), 255) << "no shading on a Tuesday";
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, ReportOnPaper,
                         testing::Combine(testing::Values(english, swedish), testing::Bool()), [](const auto& given) {
                             return std::string(std::get<0>(given.param).swedish ? "Swedish" : "English") +
                                    (std::get<1>(given.param) ? "WithNumber" : "WithoutNumber");
                         });
