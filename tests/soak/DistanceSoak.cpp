// Every number of at most six characters, read from the journal and shown by the list, the total, the dialog that edits
// a day, and the report.

#include "forms/entry/frmEdit.h"
#include "forms/print/ReportRows.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Conversions.h"
#include "platform/system/RuntimeError.h"
#include "tests/forms/ProgramUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/support/RecordedPages.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <functional>
#include <set>
#include <vector>

namespace {

constexpr std::size_t places = 6;
constexpr std::size_t daysOfMonth = 31;
const std::wstring route = L"Home";

/// The parsed part of a number: [sign] digits [separator digits] [e [sign] digits].
enum class Part { Begin, Sign, Digits, Separator, Fraction, E, ExponentSign, Exponent };

/// Generates every number of at most six characters.
class Texts {
public:
    explicit Texts(std::function<void(const std::wstring&)> use) : use_(std::move(use)) {}

    void All() { Extend(L"", Part::Begin); }

private:
    void Extend(const std::wstring& text, Part part)
    {
        if (part == Part::Digits || part == Part::Fraction || part == Part::Exponent) {
            use_(text);
        }
        if (text.size() == places) {
            return;
        }
        for (wchar_t digit = L'0'; digit <= L'9'; ++digit) {
            Extend(text + digit, BehindADigit(part));
        }
        if (part == Part::Begin || part == Part::E) {
            Extend(text + L'-', part == Part::Begin ? Part::Sign : Part::ExponentSign);
        }
        if (part == Part::E) {
            Extend(text + L'+', Part::ExponentSign);
        }
        if (part == Part::Begin || part == Part::Sign || part == Part::Digits) {
            Extend(text + DecimalSeparator(), part == Part::Digits ? Part::Fraction : Part::Separator);
        }
        if (part == Part::Digits || part == Part::Fraction) {
            Extend(text + L'e', Part::E);
        }
    }

    static Part BehindADigit(Part part)
    {
        switch (part) {
        case Part::Separator:
        case Part::Fraction:
            return Part::Fraction;
        case Part::E:
        case Part::ExponentSign:
        case Part::Exponent:
            return Part::Exponent;
        default:
            return Part::Digits;
        }
    }

    std::function<void(const std::wstring&)> use_;
};

/// The number of a text as the C++ library reads it. Its range is larger than that of the journal, whose greatest
/// number is rounded up when it is written with fifteen digits.
long double WideNumberOf(std::wstring text)
{
    if (const std::size_t at = text.find(DecimalSeparator()); at != std::wstring::npos) {
        text[at] = L'.';
    }
    return std::wcstold(text.c_str(), nullptr);
}

double NumberOf(const std::wstring& text)
{
    return static_cast<double>(WideNumberOf(text));
}

bool IsAbout(long double found, double wanted)
{
    constexpr long double fifteenDigits = 1E-14L;
    return found == wanted || std::abs(found - wanted) <= std::abs(wanted) * fifteenDigits + 1E-322L;
}

/// A total below firstNumberWithExponent: rounded to 15 digits first, and then to whole units, halves up.
std::wstring WholeUnits(double sum)
{
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.15g", sum);
    return std::to_wstring(static_cast<std::int64_t>(std::floor(std::strtod(digits.data(), nullptr) + 0.5)));
}

std::string LineOf(std::size_t day, const std::wstring& distance)
{
    const std::string number = (day < 10 ? "0" : "") + std::to_string(day);
    const std::wstring padded = std::wstring(places - distance.size(), L' ') + distance;
    return "2004-01-" + number + " " + std::string(padded.begin(), padded.end()) + " " +
           std::string(route.begin(), route.end()) + "\r\n";
}

class DistanceSoak : public ProgramUnderTest {
protected:
    void SetUp() override { Start({.journal = LineOf(1, L"1")}); }

    void TearDown() override
    {
        DataInterface::ClearJournalChanged();
        report_.Did(texts_, "numbers of six characters listed and reported");
        report_.Did(edits_, "of them edited");
        report_.Did(reports_, "reports drawn of them");
    }

    void Take(const std::wstring& text)
    {
        if (std::isinf(NumberOf(text))) {
            return; // not a number of a journal
        }
        batch_.push_back(text);
        if (batch_.size() == daysOfMonth) {
            ShowBatch();
        }
    }

    void ShowBatch()
    {
        SCOPED_TRACE(testing::PrintToString(batch_));
        std::string journal;
        for (std::size_t day = batch_.size(); day >= 1; --day) {
            journal += LineOf(day, batch_[day - 1]);
        }
        WriteBytes(JournalFile(), journal);
        DataInterface::LoadJournal();
        // The window updates all of it.
        SendMessageW(Main().Handle(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"));
        ExpectListAndTotal();
        ExpectReport();
        for (std::size_t day = 1; day <= batch_.size(); ++day) {
            EditDay(day);
        }
        texts_ += static_cast<std::int64_t>(batch_.size());
        ++batches_;
        batch_.clear();
        ASSERT_TRUE(boxes.Texts().empty()) << testing::PrintToString(boxes.Texts());
    }

    void ExpectListAndTotal()
    {
        ASSERT_EQ(static_cast<std::size_t>(Main().List1.ListCount()), batch_.size());
        double sum = 0;
        for (std::size_t day = 1; day <= batch_.size(); ++day) {
            const double distance = NumberOf(batch_[day - 1]);
            const std::wstring line = Main().List1.List(static_cast<int>(batch_.size() - day));
            ASSERT_TRUE(line.ends_with(L" " + route)) << testing::PrintToString(line);
            const std::wstring shown = line.substr(11, line.size() - 12 - route.size());
            ASSERT_GE(shown.size(), places);
            if (distance < 0) {
                ASSERT_EQ(shown, std::wstring(places, L' '));
            } else {
                ASSERT_TRUE(IsAbout(NumberOf(shown), distance)) << testing::PrintToString(line);
                sum += distance;
            }
        }
        ExpectTotal(sum);
    }

    static void ExpectTotal(double sum)
    {
        const std::wstring total = Main().Label1.Caption();
        const std::wstring before = L"Total: ";
        const std::wstring behind = L" km";
        ASSERT_TRUE(total.starts_with(before) && total.ends_with(behind)) << testing::PrintToString(total);
        std::wstring number = total.substr(before.size(), total.size() - before.size() - behind.size());
        std::erase(number, L' ');
        if (std::isinf(sum)) {
            ASSERT_EQ(number, L"\u221e");
            return;
        }
        if (sum >= firstNumberWithExponent) {
            ASSERT_TRUE(IsAbout(WideNumberOf(number), sum)) << testing::PrintToString(total) << " of " << sum;
        } else {
            ASSERT_EQ(number, WholeUnits(sum)) << "of " << sum;
        }
    }

    void ExpectReport()
    {
        double sum = 0;
        for (std::size_t day = 1; day <= batch_.size(); ++day) {
            const double distance = NumberOf(batch_[day - 1]);
            const ReportRow row = RowOfDay(ReportDay(L"2004-01-" + std::to_wstring(day)));
            ASSERT_EQ(row.distance.empty(), distance < 0);
            ASSERT_TRUE(distance < 0 || IsAbout(NumberOf(row.distance), distance))
                << testing::PrintToString(row.distance);
            sum += row.amount;
        }
        const std::wstring text = SumText(sum);
        ASSERT_TRUE(std::isinf(sum) ? text == L" \u221e" : IsAbout(WideNumberOf(text), sum))
            << testing::PrintToString(text);
        constexpr std::int64_t drawnEvery = 200;
        if (batches_ % drawnEvery == 0) {
            DrawReport(text);
        }
    }

    void DrawReport(const std::wstring& sum)
    {
        const auto recording = std::make_shared<Recording>();
        const auto form = std::make_shared<frmInterval>();
        form->Load();
        for (const std::size_t index : {0U, 1U}) {
            form->UpDown1[index].SetValue(2004);
            form->Combo1[index].SetListIndex(0);
            form->Combo3[index].SetListIndex(index == 0 ? 0 : static_cast<int>(daysOfMonth) - 1);
        }
        form->SelectPrinter(Printer(RecordPages(recording)));
        form->PrintJournal();
        form->Unload();
        const auto& texts = recording->pages.back().texts;
        ASSERT_TRUE(std::ranges::any_of(texts, [&](const DrawnText& drawn) { return drawn.text == sum; }));
        ++reports_;
    }

    /// Opens the dialog on the day and presses OK without a change: for every number with an exponent, and for some of
    /// the others. Texts that the dialog has shown before are left out.
    void EditDay(std::size_t day)
    {
        const int index = static_cast<int>(batch_.size() - day);
        const std::wstring shown = Main().List1.List(index).substr(11, places);
        const bool hasExponent = shown.find(L'E') != std::wstring::npos;
        const bool isSample = day == 1 && batches_ % 100 == 0;
        if ((!hasExponent && !isSample) || !edited_.insert(shown).second) {
            return;
        }
        Main().List1.SetListIndex(index);
        const auto dialog = Instance<frmEdit>();
        dialog->Load();
        PostMessageW(dialog->Handle(), WM_COMMAND, IDOK, 0);
        SendMessageW(Main().editButton.Handle(), BM_CLICK, 0, 0);
        ++edits_;
        const double stored = DataInterface::GetDayEntry(2004, 1, static_cast<std::int16_t>(day)).distance;
        const bool readable = shown.find_first_of(L"0123456789") != std::wstring::npos && !shown.ends_with(L'E') &&
                              !shown.ends_with(L'+') && !shown.ends_with(L'-');
        ASSERT_TRUE(readable ? IsAbout(stored, NumberOf(shown)) : stored == -2)
            << testing::PrintToString(shown) << " was stored as " << stored;
        ASSERT_TRUE(DataInterface::IsJournalChanged()) << testing::PrintToString(shown) << " was not stored";
    }

private:
    std::vector<std::wstring> batch_;
    std::set<std::wstring> edited_;
    std::int64_t texts_ = 0;
    std::int64_t batches_ = 0;
    std::int64_t edits_ = 0;
    std::int64_t reports_ = 0;
    ClosingReport report_;
};

} // namespace

TEST_F(DistanceSoak, ListTotalDialogAndReportShowEveryNumberOfSixCharacters)
{
    const std::int64_t step = Amount(1499, 1);
    std::int64_t count = Seed() % step;
    Texts texts([&](const std::wstring& text) {
        if (++count % step == 0 && !HasFatalFailure()) {
            Take(text);
        }
    });
    texts.All();
    if (!HasFatalFailure()) {
        ShowBatch();
    }
}

TEST_F(DistanceSoak, TotalsReachTheGreatestNumberAndExceedIt)
{
    for (const wchar_t* text :
         {L"1e308", L"7e307", L"9e306", L"7e305", L"6e304", L"9e303", L"3e302", L"1e301", L"3e300", L"4e299", L"8e298",
          L"6e297", L"2e296", L"3e295", L"1e294", L"5e293", L"6e292"}) {
        Take(text);
    }
    ShowBatch();
    for (std::size_t day = 1; day <= daysOfMonth; ++day) {
        Take(L"9e307");
    }
}
