// Reads a million valid and damaged lines. For most files the test knows the result of each line. For the others it
// expects that no line is lost without a message: every line is an entry, a comment or a message.

#include "platform/system/TextFile.h"
#include "tests/data/StoreAndModel.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/soak/JournalLines.h"
#include "tests/soak/QuickAnswers.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <set>

using DataInterface::dayCount;
using DataInterface::days;
using DataInterface::journalPath;
using DataInterface::LoadJournal;

namespace {

constexpr std::size_t mostEntries = 20480;
constexpr const wchar_t* mismatch = L"errorType mismatch";
constexpr const wchar_t* overflow = L"errorOverflow";

/// The expected result of a file of known lines.
struct Expected {
    std::vector<DayEntry> entries;
    std::int64_t mismatches = 0;
    std::int64_t overflows = 0;

    void Take(const JournalLine& line)
    {
        switch (line.fate) {
        case Fate::Entry:
            if (entries.size() < mostEntries) {
                entries.push_back(line.entry);
            } else {
                ++overflows;
            }
            break;
        case Fate::Mismatch:
            ++mismatches;
            break;
        case Fate::Overflow:
            ++overflows;
            break;
        default:
            break;
        }
    }
};

/// The lines of a file with any of the three line ends.
struct Counted {
    std::int64_t lines = 0;
    std::int64_t comments = 0;
};

Counted LinesIn(const std::string& bytes)
{
    Counted counted;
    for (std::size_t at = 0; at < bytes.size();) {
        ++counted.lines;
        counted.comments += bytes[at] == '\'' ? 1 : 0;
        const std::size_t end = bytes.find_first_of("\r\n", at);
        if (end == std::string::npos) {
            break;
        }
        at = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    return counted;
}

class JournalSoak : public StoreUnderTest {
protected:
    void TearDown() override
    {
        report_.Did(lines_, "lines read");
        StoreUnderTest::TearDown();
    }

    /// Writes a file with these bytes and loads it as the program does at its start.
    void Read(const std::string& bytes)
    {
        WriteBytes(journalPath, bytes);
        QuickAnswers::Forget();
        LoadJournal();
        lines_ += LinesIn(bytes).lines;
    }

    /// Expects that no line is lost without a message and that the store is consistent.
    void ExpectAConsistentStore(const std::string& bytes)
    {
        const Counted counted = LinesIn(bytes);
        ASSERT_EQ(dayCount + QuickAnswers::Count(), counted.lines - counted.comments);
        ASSERT_EQ(QuickAnswers::Count(mismatch) + QuickAnswers::Count(overflow), QuickAnswers::Count());
        JournalModel model;
        model.TakeFromStore();
        ASSERT_NO_FATAL_FAILURE(ExpectSameJournal(model, 0));
        ASSERT_FALSE(DataInterface::IsJournalChanged());
        ASSERT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileNameOrNumber);
    }

    /// Expects that the queries of the windows work.
    void QueryAsTheWindowsDo()
    {
        const NumberArray years = DataInterface::GetYears();
        for (int i = 0; i < std::min<int>(years.UpperBound(), 20); ++i) {
            const NumberArray months = DataInterface::GetMonthsOfYear(years[i]);
            for (int k = 0; k < months.UpperBound(); ++k) {
                const auto error = ErrorOf([&] { DataInterface::GetTakenDays(years[i], months[k]); });
                ASSERT_TRUE(!error || error == ErrorNumber::SubscriptOutOfRange);
            }
        }
    }

    /// Expects that each saved entry is read as one line: an entry or a message.
    void SaveAndReadAgain()
    {
        if (dayCount == 0) {
            return;
        }
        const std::int16_t before = dayCount;
        DataInterface::SaveJournal();
        QuickAnswers::Forget();
        LoadJournal();
        lines_ += before + 2;
        ASSERT_EQ(dayCount + QuickAnswers::Count(), before);
    }

    std::int64_t lines_ = 0;
    ClosingReport report_;
};

/// Mostly small files; some are larger than the store.
int LinesOfOneFile(LineMaker& maker)
{
    return maker.Pick(0, 25) == 0 ? maker.Pick(20000, 40000) : maker.Pick(0, 2000);
}

} // namespace

TEST_F(JournalSoak, EveryKindOfLineHasTheExpectedResult)
{
    const std::int64_t wanted = Amount(6000, 600000);
    for (std::uint32_t seed = Seed(); lines_ < wanted; ++seed) {
        SCOPED_TRACE(seed);
        LineMaker maker(seed);
        Expected expected;
        std::string bytes;
        for (int left = LinesOfOneFile(maker); left > 0; --left) {
            const JournalLine line = maker.Known();
            expected.Take(line);
            bytes += line.bytes;
            const bool last = left == 1 && !line.bytes.empty() && maker.Pick(0, 1) == 0;
            // A CR and an LF would be one line end.
            const std::string end = last ? "" : maker.LineEnd();
            bytes += bytes.ends_with('\r') && end == "\n" ? "\r\n" : end;
        }
        Read(bytes);
        ASSERT_NO_FATAL_FAILURE(ExpectAConsistentStore(bytes));
        ASSERT_EQ(QuickAnswers::Count(mismatch), expected.mismatches);
        ASSERT_EQ(QuickAnswers::Count(overflow), expected.overflows);
        ASSERT_TRUE(Entries() == expected.entries);
        ASSERT_NO_FATAL_FAILURE(SaveAndReadAgain());
    }
}

TEST_F(JournalSoak, NoLineIsLostWithoutAMessage)
{
    const std::int64_t wanted = Amount(6000, 600000);
    for (std::uint32_t seed = Seed(); lines_ < wanted; ++seed) {
        SCOPED_TRACE(seed);
        LineMaker maker(seed);
        std::string bytes;
        for (int left = LinesOfOneFile(maker); left > 0; --left) {
            bytes += maker.Pick(0, 1) == 0 ? maker.Known().bytes : maker.Anything();
            bytes += maker.Pick(0, 30) == 0 ? "" : maker.LineEnd();
        }
        Read(bytes);
        ASSERT_NO_FATAL_FAILURE(ExpectAConsistentStore(bytes));
        ASSERT_NO_FATAL_FAILURE(QueryAsTheWindowsDo());
        ASSERT_NO_FATAL_FAILURE(SaveAndReadAgain());
    }
}

TEST_F(JournalSoak, ReadsLinesWithEveryByteAtEveryPosition)
{
    LineMaker maker(Seed());
    for (std::size_t at = 0; at < 20; ++at) {
        SCOPED_TRACE(at);
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte) {
            std::string line = maker.Good().bytes.substr(0, 18) + "A route";
            line[at] = static_cast<char>(byte);
            bytes += line + "\r\n";
        }
        Read(bytes);
        ASSERT_NO_FATAL_FAILURE(ExpectAConsistentStore(bytes));
        ASSERT_GE(dayCount, 9) << "a digit is valid at every position";
    }
}

TEST_F(JournalSoak, ReadsAVeryLongLine)
{
    const auto length = static_cast<std::size_t>(Amount(1 << 20, 1 << 26));
    const std::string good = "2004-02-12      1 ";
    const std::string bytes = std::string(length, 'x') + "\r\n" + good + std::string(length, 'r') + "\r\n'" +
                              std::string(length, 'c') + "\n" + std::string(length, '\0') + "\n" + good + "last";
    Read(bytes);
    ASSERT_NO_FATAL_FAILURE(ExpectAConsistentStore(bytes));
    ASSERT_EQ(dayCount, 2);
    EXPECT_EQ(days[0].route.size(), length);
    EXPECT_EQ(days[1].route, L"last");
    ASSERT_NO_FATAL_FAILURE(SaveAndReadAgain());
}
