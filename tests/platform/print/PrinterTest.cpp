#include "platform/print/Printer.h"

#include "platform/system/RuntimeError.h"
#include "tests/support/PrintedJobs.h"
#include "tests/support/RecordedPages.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <winspool.h>

#include <cmath>
#include <functional>

namespace {

constexpr double device = 2.4; // twips in a pixel of the machine's printer, 600 dots an inch
const PrinterDevice paper{L"Paper"};

class PrinterTest : public testing::Test {
protected:
    Printer& Page() { return printer_; }

    const std::vector<RecordedPage>& Pages()
    {
        printer_.EndDoc();
        return recording_->pages;
    }

    std::shared_ptr<Recording> recording_ = std::make_shared<Recording>();

private:
    Printer printer_{RecordPages(recording_)};
};

void DrawOneOfEach(Printer& page)
{
    page.SetCurrentX(800);
    page.SetCurrentY(4000);
    page.PrintLine(L"Körjournal, en av många");
    page.SetDrawWidth(10);
    page.Line(800, 1000, 10000, 1000);
    page.SetDrawWidth(1);
    page.Line(801, 1001, 10001, 1001);
    page.SetFillStyle(FillStyle::Solid);
    page.Box(1400, 1000, 2700, 1300, printButtonFace);
    page.SetCurrentX(page.ScaleWidth() - page.TextWidth(L"Sida"));
    page.Print(L"Sida");
}

void ExpectPrinterError(const std::function<void()>& action)
{
    try {
        action();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PrinterError);
    }
}

} // namespace

TEST_F(PrinterTest, PrintMovesXBehindTheTextAndLeavesY)
{
    Page().SetCurrentX(800);
    Page().SetCurrentY(500);
    Page().Print(L"Körjournal");
    EXPECT_DOUBLE_EQ(Page().CurrentX(), 800 + Page().TextWidth(L"Körjournal"));
    EXPECT_DOUBLE_EQ(Page().CurrentY(), 500);
    EXPECT_GT(Page().TextWidth(L"Körjournal"), 1000);
}

TEST_F(PrinterTest, PrintLineBeginsTheNextLineInTheCurrentFont)
{
    Page().SetCurrentX(800);
    Page().PrintLine(L"text");
    EXPECT_DOUBLE_EQ(Page().CurrentX(), 0);
    EXPECT_DOUBLE_EQ(Page().CurrentY(), Page().TextHeight());
    const double small = Page().TextHeight();
    Page().SetFontSize(20);
    Page().PrintLine();
    EXPECT_DOUBLE_EQ(Page().CurrentY(), small + Page().TextHeight());
    EXPECT_NEAR(Page().TextHeight() / small, 20.0 / 12, 0.02);
}

TEST_F(PrinterTest, SkipMovesXByBlanksOfTheCurrentFont)
{
    Page().SetFontBold(true);
    Page().SetCurrentX(100);
    Page().Skip(10);
    EXPECT_NEAR(Page().CurrentX(), 100 + 10 * Page().TextWidth(L" "), 1e-9);
    Page().Print(L"Name:");
    EXPECT_EQ(Pages().front().texts.size(), 1U) << "nothing is printed for the blanks";
}

TEST_F(PrinterTest, TextWidthsAreTheWidthsOfAllBeginnings)
{
    const std::wstring text = L"Göteborg - Malmö";
    const std::vector<double> widths = Page().TextWidths(text);
    ASSERT_EQ(widths.size(), text.size());
    for (std::size_t length = 1; length <= text.size(); ++length) {
        EXPECT_NEAR(widths[length - 1], Page().TextWidth(text.substr(0, length)), device) << length;
    }
    EXPECT_TRUE(Page().TextWidths(L"").empty());
    EXPECT_EQ(Page().TextWidth(L""), 0);
}

TEST_F(PrinterTest, TextsKeepTheirPlaceFontAndBackground)
{
    Page().SetFontSize(20);
    Page().SetFontBold(true);
    Page().SetCurrentX(800);
    Page().SetCurrentY(14980);
    Page().Print(L"AB Åkeri");
    Page().SetFontBold(false);
    Page().SetFontItalic(true);
    Page().SetFontSize(10);
    Page().PrintLine(L"Sida");
    const auto& texts = Pages().front().texts;
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].text, L"AB Åkeri");
    EXPECT_NEAR(texts[0].x, 800, device);
    EXPECT_NEAR(texts[0].y, 14980, device);
    EXPECT_EQ(texts[0].font, L"Arial");
    EXPECT_NEAR(texts[0].points, 20, 0.1);
    EXPECT_TRUE(texts[0].bold);
    EXPECT_FALSE(texts[0].italic);
    EXPECT_TRUE(texts[0].transparent);
    EXPECT_NEAR(texts[1].points, 10, 0.1);
    EXPECT_FALSE(texts[1].bold);
    EXPECT_TRUE(texts[1].italic);
}

TEST_F(PrinterTest, AFontCanBeNamed)
{
    Page().SetFontName(L"Courier New");
    Page().Print(L"x");
    EXPECT_EQ(Pages().front().texts.at(0).font, L"Courier New");
}

TEST_F(PrinterTest, LinesAreAsManyDevicePixelsWideAsAskedFor)
{
    Page().SetDrawWidth(10);
    Page().Line(800, 1000, 11000, 1000);
    Page().SetDrawWidth(1);
    Page().Line(800, 1000, 800, 1300);
    Page().SetDrawStyle(LineStyle::Dotted);
    Page().Line(1500, 14900, 4000, 14900);
    const auto& lines = Pages().front().lines;
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].width, 10);
    EXPECT_NEAR(lines[0].x2, 11000, device);
    EXPECT_NEAR(lines[0].y2, 1000, device);
    EXPECT_FALSE(lines[0].dotted);
    EXPECT_EQ(lines[1].width, 1);
    EXPECT_NEAR(lines[1].y2, 1300, device);
    EXPECT_FALSE(lines[1].dotted);
    EXPECT_TRUE(lines[2].dotted);
    EXPECT_NEAR(lines[2].x1, 1500, device);
    EXPECT_EQ(lines[2].colour, printBlack);
}

TEST_F(PrinterTest, LinesAndBoxesLeaveThePrintPosition)
{
    Page().SetCurrentX(300);
    Page().SetCurrentY(400);
    Page().Line(800, 1000, 11000, 1000);
    Page().Box(1400, 1000, 2700, 1300, printButtonFace);
    EXPECT_DOUBLE_EQ(Page().CurrentX(), 300);
    EXPECT_DOUBLE_EQ(Page().CurrentY(), 400);
}

TEST_F(PrinterTest, ABoxIsFilledInItsColourOnlyWithTheSolidFillStyle)
{
    Page().SetFillStyle(FillStyle::Solid);
    Page().Box(1400, 1000, 2700, 1300, printButtonFace);
    Page().SetFillStyle(FillStyle::Transparent);
    Page().Box(1400, 2000, 2700, 2300, printButtonFace);
    Page().Line(800, 2000, 1400, 2000);
    const auto& page = Pages().front();
    ASSERT_EQ(page.boxes.size(), 2U);
    EXPECT_TRUE(page.boxes[0].filled);
    EXPECT_EQ(page.boxes[0].fill, GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(page.boxes[0].outline, GetSysColor(COLOR_BTNFACE));
    EXPECT_NEAR(page.boxes[0].left, 1400, device);
    EXPECT_NEAR(page.boxes[0].bottom, 1300, 2 * device);
    EXPECT_FALSE(page.boxes[1].filled);
    EXPECT_EQ(page.lines.at(0).colour, printBlack) << "lines stay black";
}

TEST_F(PrinterTest, ANewPageBeginsAtTheTopWithTheSameFont)
{
    Page().SetFontSize(10);
    Page().SetFontItalic(true);
    Page().SetDrawWidth(10);
    Page().Print(L"one");
    Page().Line(0, 0, 100, 0);
    EXPECT_EQ(Page().Page(), 1);
    Page().NewPage();
    EXPECT_EQ(Page().Page(), 2);
    EXPECT_DOUBLE_EQ(Page().CurrentX(), 0);
    EXPECT_DOUBLE_EQ(Page().CurrentY(), 0);
    Page().Print(L"two");
    Page().Line(0, 0, 100, 0);
    const auto& pages = Pages();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_NEAR(pages[1].texts.at(0).points, 10, 0.1);
    EXPECT_TRUE(pages[1].texts[0].italic);
    EXPECT_TRUE(pages[1].texts[0].transparent);
    EXPECT_EQ(pages[1].lines.at(0).width, 10);
}

TEST_F(PrinterTest, ScaleWidthIsThePrintableWidthOfTheDevice)
{
    HDC context = CreateICW(nullptr, L"Paper", nullptr, nullptr);
    ASSERT_NE(context, nullptr);
    EXPECT_DOUBLE_EQ(Page().ScaleWidth(),
                     GetDeviceCaps(context, HORZRES) * 1440.0 / GetDeviceCaps(context, LOGPIXELSX));
    DeleteDC(context);
    EXPECT_NEAR(Page().ScaleWidth(), 11900, 20) << "A4";
}

TEST_F(PrinterTest, FitHeightChangesNothingOnAPageThatFits)
{
    const auto draw = [](bool asking) {
        auto recording = std::make_shared<Recording>();
        Printer printer(RecordPages(recording));
        if (asking) {
            printer.FitHeight(16838); // of the 16838.4 of A4 that are whole dots
        }
        DrawOneOfEach(printer);
        printer.EndDoc();
        return recording->pages.front();
    };
    const RecordedPage asked = draw(true);
    const RecordedPage plain = draw(false);
    EXPECT_EQ(asked.texts, plain.texts);
    EXPECT_EQ(asked.lines, plain.lines);
    EXPECT_EQ(asked.boxes, plain.boxes);
}

TEST_F(PrinterTest, APageThatDoesNotFitIsDrawnSmallerByOneFactor)
{
    const double width = Page().ScaleWidth();
    const double textWidth = Page().TextWidth(L"Körjournal");
    const double lineHeight = Page().TextHeight();
    Page().FitHeight(2 * 16840);
    EXPECT_NEAR(Page().ScaleWidth(), 2 * width, 4 * device);
    EXPECT_DOUBLE_EQ(Page().TextWidth(L"Körjournal"), textWidth);
    EXPECT_DOUBLE_EQ(Page().TextHeight(), lineHeight);
    DrawOneOfEach(Page());
    Page().NewPage();
    DrawOneOfEach(Page());
    for (const RecordedPage& page : Pages()) {
        EXPECT_NEAR(page.texts.at(0).x, 400, device);
        EXPECT_NEAR(page.texts.at(0).y, 2000, device);
        EXPECT_NEAR(page.texts.at(0).points, 6, 0.1);
        EXPECT_NEAR(page.lines.at(0).x2, 5000, device);
        EXPECT_NEAR(page.lines.at(0).y2, 500, device);
        EXPECT_EQ(page.lines.at(0).width, 5) << "a thick line is narrower";
        EXPECT_EQ(page.lines.at(1).width, 1) << "a thin one still shows";
        EXPECT_NEAR(page.boxes.at(0).left, 700, device);
        EXPECT_NEAR(page.boxes.at(0).bottom, 650, 2 * device);
    }
}

TEST_F(PrinterTest, ANarrowedTextIsAsWideOnPaperAsItWasMeasured)
{
    const std::size_t before = JobsEverQueued();
    Printer printer(OpenPrintJob(paper, L"Small"));
    printer.FitHeight(3 * 16840);
    const std::wstring text(70, L'm');
    printer.SetCurrentX(900);
    const double width = printer.TextWidth(text);
    printer.PrintLine(text);
    printer.EndDoc();
    const auto words = WaitForJobs(before + 1).back().Words();
    ASSERT_EQ(words.size(), 1U);
    EXPECT_NEAR(words[0].left, 300, 20);
    EXPECT_NEAR(words[0].right, 300 + width / 3, 20);
}

TEST_F(PrinterTest, AnEndedDocumentIsHandedOver)
{
    Page().EndDoc();
    EXPECT_TRUE(recording_->ended);
    EXPECT_FALSE(recording_->aborted);
    ExpectPrinterError([&] { Page().Print(L"too late"); });
}

TEST(Printer, ThrowsTheDocumentAwayWhenItWasNotEnded)
{
    auto recording = std::make_shared<Recording>();
    {
        Printer printer(RecordPages(recording));
        printer.PrintLine(L"half a report");
    }
    EXPECT_TRUE(recording->aborted);
    EXPECT_FALSE(recording->ended);
}

TEST(Printer, ThrowsTheDocumentAwayWhenAPageCannotBegin)
{
    auto recording = std::make_shared<Recording>();
    recording->failingPage = 2;
    Printer printer(RecordPages(recording));
    ExpectPrinterError([&] { printer.NewPage(); });
    EXPECT_TRUE(recording->aborted);
    ExpectPrinterError([&] { printer.Print(L"on no page"); });
    ExpectPrinterError([&] { printer.Line(0, 0, 1, 1); });
    ExpectPrinterError([&] { printer.EndDoc(); });
    EXPECT_FALSE(recording->ended);
}

TEST(Printer, ThrowsTheDocumentAwayWhenTheFirstPageCannotBegin)
{
    auto recording = std::make_shared<Recording>();
    recording->failingPage = 1;
    ExpectPrinterError([&] { Printer printer(RecordPages(recording)); });
    EXPECT_TRUE(recording->aborted);
}

TEST(Printer, ThrowsTheDocumentAwayWhenAPageCannotEnd)
{
    auto recording = std::make_shared<Recording>();
    recording->failAtEndOfPage = true;
    Printer printer(RecordPages(recording));
    ExpectPrinterError([&] { printer.NewPage(); });
    EXPECT_TRUE(recording->aborted);
}

TEST(Printer, ThrowsTheDocumentAwayWhenItCannotEnd)
{
    auto recording = std::make_shared<Recording>();
    recording->failAtEnd = true;
    Printer printer(RecordPages(recording));
    ExpectPrinterError([&] { printer.EndDoc(); });
    EXPECT_TRUE(recording->aborted);
    EXPECT_FALSE(recording->ended);
}

TEST(PrintJob, NeedsAPrinterOfThatName)
{
    ExpectPrinterError([] { OpenPrintJob({L"No such printer"}, L"Journal"); });
}

TEST(PrintJob, PutsNothingInTheQueueWhenTheDocumentIsThrownAway)
{
    const std::size_t before = JobsEverQueued();
    {
        Printer printer(OpenPrintJob(paper, L"Half"));
        printer.PrintLine(L"half a report");
        printer.NewPage();
        printer.PrintLine(L"and no more");
    }
    Printer printer(OpenPrintJob(paper, L"Whole"));
    printer.PrintLine(L"whole");
    printer.EndDoc();
    const auto jobs = WaitForJobs(before + 1);
    EXPECT_EQ(JobsEverQueued(), before + 1);
    EXPECT_EQ(jobs.back().title, L"Whole");
}

TEST(PrintJob, PutsTextsOnPaperWhereTheyWerePrinted)
{
    const std::size_t before = JobsEverQueued();
    Printer printer(OpenPrintJob(paper, L"Körjournal"));
    printer.SetCurrentX(1430);
    printer.SetCurrentY(2000);
    printer.Print(L"2003-04-17");
    printer.NewPage();
    printer.SetFontSize(20);
    printer.SetFontBold(true);
    printer.SetCurrentX(800);
    printer.SetCurrentY(800);
    printer.Print(L"Åkeri");
    printer.EndDoc();
    const PrintedJob job = WaitForJobs(before + 1).back();
    EXPECT_EQ(job.title, L"Körjournal");
    EXPECT_EQ(job.copies, 1);
    const auto words = job.Words();
    ASSERT_EQ(words.size(), 2U);
    constexpr double ascent = 0.905; // of Arial and of the type that stands for it, in parts of the size
    EXPECT_EQ(words[0].text, L"2003-04-17");
    EXPECT_EQ(words[0].page, 1);
    EXPECT_NEAR(words[0].left, 1430, 20);
    EXPECT_NEAR(words[0].baseline, 2000 + ascent * 240, 10);
    EXPECT_NEAR(words[0].points, 12, 0.1);
    EXPECT_EQ(words[1].text, L"Åkeri");
    EXPECT_EQ(words[1].page, 2);
    EXPECT_NEAR(words[1].left, 800, 20);
    EXPECT_NEAR(words[1].baseline, 800 + ascent * 400, 10);
    EXPECT_NE(words[1].font.find("Bold"), std::string::npos);
}

TEST(PrintJob, PutsRulesAndShadingOnPaper)
{
    const std::size_t before = JobsEverQueued();
    Printer printer(OpenPrintJob(paper, L"Rules"));
    printer.SetFillStyle(FillStyle::Solid);
    printer.Box(1400, 3000, 2700, 3300, printButtonFace);
    printer.SetDrawWidth(10);
    printer.Line(800, 2000, 11000, 2000);
    printer.SetDrawWidth(1);
    printer.SetDrawStyle(LineStyle::Dotted);
    printer.Line(1500, 5000, 4000, 5000);
    printer.EndDoc();
    const PagePicture page(WaitForJobs(before + 1).back(), 1);
    EXPECT_LT(page.At(805, 2000), 64);
    EXPECT_LT(page.At(10990, 2000), 64);
    EXPECT_EQ(page.At(770, 2000), 255);
    EXPECT_EQ(page.At(5000, 2030), 255);
    EXPECT_NEAR(page.At(2000, 3150), GetRValue(GetSysColor(COLOR_BTNFACE)), 24);
    EXPECT_EQ(page.At(2000, 3400), 255);
    int changes = 0;
    bool wasDark = false;
    for (double x = 1500; x < 4000; x += 10) {
        const bool dark = page.At(x, 5000) < 250;
        changes += dark != wasDark ? 1 : 0;
        wasDark = dark;
    }
    EXPECT_GT(changes, 40) << "a row of dots";
}
