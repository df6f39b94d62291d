#include "platform/system/Application.h"
#include "platform/system/Conversions.h"
#include "platform/system/OwnedHandle.h"
#include "platform/system/TextFile.h"
#include "platform/windows/UnhandledError.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/NoMemory.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include <windows.h>

using DataInterface::AddDay;
using DataInterface::dayCapacity;
using DataInterface::dayCount;
using DataInterface::days;
using DataInterface::DeleteDay;
using DataInterface::IsJournalChanged;
using DataInterface::journalPath;
using DataInterface::JournalPathIn;
using DataInterface::LoadJournal;
using DataInterface::ParseJournalLine;
using DataInterface::ReadJournalFile;
using DataInterface::ReplaceDay;
using DataInterface::SaveJournal;
using DataInterface::WriteJournalFile;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* header = "'Source file for Odomira\r\n'Do not change this file unless absolutely sure.\r\n";

bool SystemWritesAComma()
{
    return DecimalSeparator() == L",";
}

/// The text with its decimal points as this system writes them. Only for texts without other points.
template <typename Text>
Text AsThisSystemWrites(Text text)
{
    using Character = typename Text::value_type;
    if (SystemWritesAComma()) {
        std::ranges::replace(text, Character{'.'}, Character{','});
    }
    return text;
}

class JournalFile : public StoreUnderTest {
protected:
    /// Reads a file with these bytes into the store.
    void ReadBytes(std::string_view bytes)
    {
        WriteBytes(file_, bytes);
        ReadJournalFile(file_);
    }

    /// The bytes of the store once written.
    std::string Written()
    {
        WriteJournalFile(file_);
        TextFile::Close(1);
        return BytesOf(file_);
    }

    TemporaryFolder folder_;
    std::wstring file_ = folder_.File(L"journal.jrn");
    MessageBoxWatcher boxes_;
};

/// Replaces FlushFileBuffers: records the size of the file.
DWORD flushedBytes = 0;

BOOL WINAPI NoteFlush(HANDLE file)
{
    flushedBytes = GetFileSize(file, nullptr);
    return TRUE;
}

std::string Sample(const std::wstring& name)
{
    return BytesOf(FromUserCodePage(ODOMIRA_SAMPLES) + L'\\' + name);
}

} // namespace

TEST_F(JournalFile, ThePathIsTheFolderAndTheNameWithOneSeparator)
{
    EXPECT_EQ(JournalPathIn(L"C:\\"), L"C:\\datasource.jrn");
    EXPECT_EQ(JournalPathIn(L"C:\\Tools"), L"C:\\Tools\\datasource.jrn");
}

TEST_F(JournalFile, LoadJournal_LooksInTheFolderOfTheProgramFile)
{
    EXPECT_EQ(journalPath, ProgramFolder() + L"\\datasource.jrn");
}

TEST_F(JournalFile, LoadJournal_CreatesAMissingFileEmptyAndSaysNothing)
{
    DeleteFileW(journalPath.c_str());
    EXPECT_FALSE(DataInterface::FileExists(journalPath));
    LoadJournal();
    EXPECT_TRUE(DataInterface::FileExists(journalPath));
    EXPECT_EQ(BytesOf(journalPath), "");
    EXPECT_EQ(dayCount, 0);
    EXPECT_THAT(boxes_.Texts(), IsEmpty());
}

TEST_F(JournalFile, LoadJournal_ClosesTheFileWhereverMemoryRunsOut)
{
    const std::string saved = std::string(header) + "2004-02-12      7 a route longer than fits into its own\r\n";
    bool met = true;
    for (int after = 0; met; ++after) {
        WriteBytes(journalPath, saved);
        {
            const NoMemory none(after);
            Guarded([] { LoadJournal(); });
            met = none.WasMet();
        }
        AddDay(2004, 2, 13, 1, L"");
        EXPECT_NO_THROW(SaveJournal()) << "memory ran out after " << after;
    }
    EXPECT_THAT(Entries(), testing::SizeIs(2)) << "the last time there was enough";
}

TEST_F(JournalFile, LoadJournal_ThatThrowsKeepsTheJournalAndItsUnsavedChanges)
{
    WriteBytes(journalPath, std::string(header) + "2004-02-12      7 a route longer than fits into its own\r\n");
    LoadJournal();
    AddDay(2004, 2, 13, 1, L"unsaved");
    const auto before = Entries();
    bool loaded = false;
    for (int after = 0; !loaded; ++after) {
        {
            const NoMemory none(after);
            loaded = Guarded([] { LoadJournal(); });
        }
        if (!loaded) {
            EXPECT_EQ(Entries(), before) << "memory ran out after " << after;
            EXPECT_TRUE(IsJournalChanged());
        }
    }
    EXPECT_EQ(Dates(), std::vector<std::string>{"2004-02-12"});
    EXPECT_FALSE(IsJournalChanged());
}

TEST_F(JournalFile, LoadJournal_ShowsAnErrorForALineWithoutMemoryAndReadsTheNext)
{
    WriteBytes(journalPath, std::string(header) + "2004-02-13      1 a route longer than fits into its own\r\n"
                                                  "2004-02-12      7 \r\n");
    bool met = true;
    bool wasRead = false;
    for (int after = 0; met; ++after) {
        {
            const NoMemory none(after, 1);
            Guarded([] { LoadJournal(); });
            met = none.WasMet();
        }
        wasRead = wasRead || Dates() == std::vector<std::string>{"2004-02-12"};
    }
    EXPECT_TRUE(wasRead);
    EXPECT_THAT(boxes_.Texts(), testing::Contains(L"errorOut of memory"));
}

TEST_F(JournalFile, SaveJournal_EndsWithTheFileOnTheDisk)
{
    const ReplacedImport replaced("FlushFileBuffers", NoteFlush);
    AddDay(2004, 2, 13, 1, L"");
    SaveJournal();
    EXPECT_EQ(flushedBytes, BytesOf(journalPath).size()) << "all of it";
}

TEST_F(JournalFile, LoadJournal_ReplacesTheJournal)
{
    for (int i = 0; i < 25; ++i) {
        AddDay(2004, 1, 1, 1, L"unsaved");
    }
    WriteBytes(journalPath, std::string(header) + "2004-02-12      7 saved\r\n");
    LoadJournal();
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 12, 7, L"saved"}));
    EXPECT_EQ(dayCapacity, 10);
    EXPECT_EQ(days.size(), 11u);
    EXPECT_FALSE(IsJournalChanged());
}

TEST_F(JournalFile, TwoDaysAreWrittenAsTheSampleShows)
{
    AddDay(2004, 11, 3, 100, L"");
    AddDay(2004, 11, 4, 1, L"");
    DeleteDay(2004, 11, 4);
    Load({AsThisSystemWrites(std::wstring(L"2004-02-12   12.5 Office - customer visit"))});
    EXPECT_EQ(Written(), header + AsThisSystemWrites(std::string("2004-11-03    100 \r\n"
                                                                 "2004-02-12   12.5 Office - customer visit\r\n")));
}

TEST_F(JournalFile, EverySampleOfThisSystemComesBackByteForByte)
{
    std::vector<std::wstring> names{L"full-20480.jrn", L"three-years-en.jrn", L"two-days.jrn"};
    if (SystemWritesAComma()) {
        names = {L"three-years-sv.jrn"};
    }
    for (const std::wstring& name : names) {
        LoadJournal();
        const std::string bytes = Sample(name);
        ReadBytes(bytes);
        EXPECT_TRUE(Written() == bytes) << std::filesystem::path(name).string();
    }
    EXPECT_THAT(boxes_.Texts(), IsEmpty());
    EXPECT_FALSE(IsJournalChanged());
}

TEST_F(JournalFile, LinesThatBeginWithAnApostropheAreComments)
{
    ReadBytes("2004-02-12      1 a\r\n'2004-02-11      2 b\r\n'\r\n2004-02-10      3 'c\r\n");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 12, 1, L"a"}, DayEntry{2004, 2, 10, 3, L"'c"}));
    EXPECT_EQ(Written(), std::string(header) + "2004-02-12      1 a\r\n2004-02-10      3 'c\r\n");
}

TEST_F(JournalFile, AnIndentedApostropheIsNoComment)
{
    ReadBytes(" 'comment?\r\n");
    EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorType mismatch"));
}

TEST_F(JournalFile, EntriesKeepTheOrderOfTheFile)
{
    ReadBytes("2004-01-01      1 \r\n2004-01-03      2 \r\n2004-01-02      3 \r\n2004-01-03      4 \r\n");
    EXPECT_THAT(Dates(), ElementsAre("2004-01-01", "2004-01-03", "2004-01-02", "2004-01-03"));
    EXPECT_FALSE(IsJournalChanged());
}

TEST_F(JournalFile, AllThreeLineEndsAreReadAndTheLastLineNeedsNone)
{
    ReadBytes("2004-01-01      1 a\n2004-01-02      2 b\r2004-01-03      3 c\r\n2004-01-04      4 d");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 1, 1, 1, L"a"}, DayEntry{2004, 1, 2, 2, L"b"},
                                       DayEntry{2004, 1, 3, 3, L"c"}, DayEntry{2004, 1, 4, 4, L"d"}));
}

TEST_F(JournalFile, AnEndOfFileMarkIsAnOrdinaryCharacter)
{
    ReadBytes("2004-01-01      1 a\x1a z\r\n2004-01-02      2 b\r\n");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 1, 1, 1, L"a\x1a z"}, DayEntry{2004, 1, 2, 2, L"b"}));
}

TEST_F(JournalFile, ALineThatCannotBeReadShowsAnErrorAndIsSkipped)
{
    ReadBytes("2004-05-03     12 good\r\n\r\n2004-0x-02    100 month\r\n2004-05-01    abc distance\r\n2004-05-02\r\n"
              "2004-04-29     13 good again\r\n");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 5, 3, 12, L"good"}, DayEntry{2004, 4, 29, 13, L"good again"}));
    EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorType mismatch", L"errorType mismatch", L"errorType mismatch",
                                            L"errorType mismatch"));
    for (const SeenMessageBox& box : boxes_.Seen()) {
        EXPECT_EQ(box.title, L"Odomira");
        EXPECT_THAT(box.buttons, ElementsAre(IDOK));
    }
}

TEST_F(JournalFile, EntriesBeyondTheCapacityShowAnErrorAndAreSkipped)
{
    ReadBytes(AsThisSystemWrites(Sample(L"full-20480.jrn")) +
              "2020-01-01      1 a\r\n'comment\r\n2020-01-01      1 b\r\n");
    EXPECT_EQ(dayCount, 20480);
    const std::size_t overflows = static_cast<std::size_t>(std::ranges::count(boxes_.Texts(), L"errorOverflow"));
    EXPECT_EQ(overflows, 2u);
}

TEST_F(JournalFile, FieldsAreReadByPositionWhateverSeparatesThem)
{
    ParseJournalLine(L"2004/02.12x   100yroute");
    ParseJournalLine(L" 99 x 1x 2x     1y");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 12, 100, L"route"}, DayEntry{99, 1, 2, 1, L""}));
}

TEST_F(JournalFile, WholeNumbersRoundHalvesToTheEvenOne)
{
    Load({AsThisSystemWrites(std::wstring(L"2.5 -02-12      1 ")),
          AsThisSystemWrites(std::wstring(L" 3.5-02-12      1 "))});
    EXPECT_EQ(days[0].year, 2);
    EXPECT_EQ(days[1].year, 4);
}

TEST_F(JournalFile, ALineThatFailsInItsLastFieldAddsNothing)
{
    EXPECT_EQ(ErrorOf([] { ParseJournalLine(L"2004-02-12    1x2 route"); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOf([] { ParseJournalLine(L""); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOf([] { ParseJournalLine(L"2004-02-12  1E999 route"); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ParseJournalLine(L"9E99-02-12      1 route"); }), ErrorNumber::Overflow);
    EXPECT_EQ(dayCount, 0);
    EXPECT_EQ(days[0], DayEntry{});
}

TEST_F(JournalFile, ADistanceOfMoreThanSixCharactersMovesTheRestOfItsLine)
{
    Load({L"2004-02-12      1 route"});
    ReplaceDay(2004, 2, 12, 1234.56, L"route");
    EXPECT_EQ(Written(), header + AsThisSystemWrites(std::string("2004-02-12 1234.56 route\r\n")));
    LoadJournal();
    ReadJournalFile(file_);
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 12, 1234.5, L" route"}));
}

TEST_F(JournalFile, AYearBelow1000IsWrittenShortAndCannotBeReadBack)
{
    AddDay(999, 2, 3, 5, L"old");
    EXPECT_EQ(Written(), std::string(header) + "999-02-03      5 old\r\n");
    LoadJournal();
    ReadJournalFile(file_);
    EXPECT_EQ(dayCount, 0);
    EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorType mismatch"));
}

TEST_F(JournalFile, DistancesAreWrittenInTheirShortestForm)
{
    AddDay(2004, 1, 9, -2.0, L"confirmed");
    AddDay(2004, 1, 10, 0.1 + 0.2, L"");
    AddDay(2004, 1, 11, 0.0, L"");
    AddDay(2004, 1, 12, 1.0 / 3, L"");
    AddDay(2004, 1, 13, 123456.0, L"");
    EXPECT_EQ(Written(), header + AsThisSystemWrites(std::string("2004-01-13 123456 \r\n"
                                                                 "2004-01-12 0.333333333333333 \r\n"
                                                                 "2004-01-11      0 \r\n"
                                                                 "2004-01-10    0.3 \r\n"
                                                                 "2004-01-09     -2 confirmed\r\n")));
}

TEST_F(JournalFile, ADistanceOfTheOtherDecimalSeparatorIsNotRepaired)
{
    ReadBytes("2004-01-02   12,5 comma\r\n2004-01-01   12.5 point\r\n");
    if (SystemWritesAComma()) {
        EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 1, 2, 12.5, L"comma"}));
        EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorType mismatch"));
    } else {
        EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 1, 2, 125, L"comma"}, DayEntry{2004, 1, 1, 12.5, L"point"}));
        EXPECT_THAT(boxes_.Texts(), IsEmpty());
    }
}

TEST_F(JournalFile, RoutesAreInTheCodePageAndKeepTheirSpaces)
{
    AddDay(2004, 1, 1, 1, L"  Göteborg - 'Å' \x2013 10 €  ");
    EXPECT_EQ(Written(), std::string(header) + "2004-01-01      1   G\xf6teborg - '\xc5' \x96 10 \x80  \r\n");
    LoadJournal();
    ReadJournalFile(file_);
    EXPECT_EQ(days[0].route, L"  Göteborg - 'Å' \x2013 10 €  ");
}

TEST_F(JournalFile, AHiddenJournalIsReadAndSavedAndStaysHidden)
{
    WriteBytes(file_, "2004-01-02      1 kept\r\n");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_HIDDEN);
    ReadJournalFile(file_);
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 1, 2, 1, L"kept"}));
    EXPECT_EQ(Written(), std::string(header) + "2004-01-02      1 kept\r\n");
    EXPECT_THAT(boxes_.Texts(), IsEmpty());
}

TEST_F(JournalFile, ASaveLeavesNothingOfALongerFile)
{
    WriteBytes(file_, std::string(5000, 'x'));
    AddDay(2004, 1, 2, 1, L"");
    EXPECT_EQ(Written(), std::string(header) + "2004-01-02      1 \r\n");
}

TEST_F(JournalFile, ASaveOverAReadOnlyFileFailsAndTheJournalStaysChanged)
{
    AddDay(2004, 1, 2, 1, L"");
    WriteBytes(journalPath, "old");
    SetFileAttributesW(journalPath.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ErrorOf([] { SaveJournal(); }), ErrorNumber::PathFileAccessError);
    EXPECT_TRUE(IsJournalChanged());
    EXPECT_EQ(BytesOf(journalPath), "old");

    SetFileAttributesW(journalPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    SaveJournal();
    EXPECT_FALSE(IsJournalChanged());
    EXPECT_EQ(BytesOf(journalPath), std::string(header) + "2004-01-02      1 \r\n");
}

TEST_F(JournalFile, AFolderInPlaceOfTheFileShowsTwoMessages)
{
    CreateDirectoryW(file_.c_str(), nullptr);
    ReadJournalFile(file_);
    // Creating it, opening it and the end-of-file test fail one after the other, then reading ends.
    EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorPath/File access error", L"What", L"errorPath/File access error",
                                            L"What", L"errorBad file name or number"));
    EXPECT_EQ(ErrorOf([this] { WriteJournalFile(file_); }), ErrorNumber::PathFileAccessError);
}

TEST_F(JournalFile, AFileThatAnotherProgramHasLockedShowsOneErrorAndEndsTheReading)
{
    WriteBytes(file_, "2004-01-02      1 \r\n");
    const OwnedHandle held(CreateFileW(file_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held);
    ReadJournalFile(file_);
    EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorPermission denied", L"errorBad file name or number"));
    EXPECT_EQ(ErrorOf([this] { WriteJournalFile(file_); }), ErrorNumber::PermissionDenied);
}

TEST_F(JournalFile, AMissingFolderShowsAnErrorAndEndsTheReading)
{
    ReadJournalFile(folder_.File(L"missing\\journal.jrn"));
    EXPECT_THAT(boxes_.Texts(),
                ElementsAre(L"errorPath not found", L"errorPath not found", L"errorBad file name or number"));
}

TEST_F(JournalFile, AFolderThatIsCreatedDuringTheMessageGetsAnEmptyFile)
{
    static std::wstring comingBack;
    comingBack = folder_.File(L"back");
    // The folder is created while the error is shown.
    const auto onWindow = [](int code, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (code == HCBT_CREATEWND) {
            CreateDirectoryW(comingBack.c_str(), nullptr);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    };
    HHOOK hook = SetWindowsHookExW(WH_CBT, onWindow, nullptr, GetCurrentThreadId());
    ASSERT_NE(hook, nullptr);
    ReadJournalFile(comingBack + L"\\journal.jrn");
    UnhookWindowsHookEx(hook);
    EXPECT_THAT(boxes_.Texts(),
                ElementsAre(L"errorPath not found", L"errorFile not found", L"errorBad file name or number"));
    EXPECT_EQ(BytesOf(comingBack + L"\\journal.jrn"), "");
}

TEST_F(JournalFile, AFileThatCannotBeCreatedShowsAnErrorAndEndsTheReading)
{
    // No file can be made in the host's table of processes.
    ReadJournalFile(L"Z:\\proc\\journal.jrn");
    EXPECT_THAT(boxes_.Texts(),
                ElementsAre(L"errorFile not found", L"errorFile not found", L"errorBad file name or number"));
}

TEST_F(JournalFile, ReadingAndSavingLeaveTheSlotFree)
{
    ReadBytes("x\r\n2004-01-02      1 \r\n");
    EXPECT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileNameOrNumber);
    WriteJournalFile(file_);
    EXPECT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileNameOrNumber);
}

TEST_F(JournalFile, AnEmptySaveWritesTheHeaderAndKeepsTheFileOpen)
{
    AddDay(2004, 1, 2, 1, L"");
    DeleteDay(2004, 1, 2);
    SaveJournal();
    EXPECT_FALSE(IsJournalChanged());
    EXPECT_EQ(BytesOf(journalPath), header) << "other programs can read it meanwhile";
    EXPECT_EQ(DeleteFileW(journalPath.c_str()), FALSE);
}

TEST_F(JournalFile, AfterAnEmptySaveEveryOtherSaveOfTheRunFails)
{
    SaveJournal();
    AddDay(2004, 1, 2, 1, L"");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ErrorOf([] { SaveJournal(); }), ErrorNumber::FileAlreadyOpen);
        EXPECT_TRUE(IsJournalChanged());
        EXPECT_EQ(dayCount, 1);
    }
    EXPECT_EQ(BytesOf(journalPath), header);
}

TEST_F(JournalFile, AfterAnEmptySaveARevertShowsTheErrorsAndTheFileStaysOpen)
{
    SaveJournal();
    AddDay(2004, 1, 2, 1, L"");
    LoadJournal();
    // The open fails, and so does the end-of-file test of a file that is open for writing; then reading ends.
    EXPECT_THAT(boxes_.Texts(), ElementsAre(L"errorFile already open", L"errorBad file mode", L"Wrong file mode"));
    EXPECT_EQ(dayCount, 0);
    EXPECT_FALSE(IsJournalChanged());
    EXPECT_EQ(ErrorOf([] { SaveJournal(); }), ErrorNumber::FileAlreadyOpen);
}

TEST_F(JournalFile, DISABLED_Child_SavesAnEmptyJournalAndEnds)
{
    SaveJournal();
    // The process ends here, without the clean-up of the other tests.
    std::exit(0);
}

TEST_F(JournalFile, AnEmptySaveIsOnTheDiskWhenTheProgramHasEnded)
{
    DeleteFileW(journalPath.c_str());
    EXPECT_EQ(RunInChildProcess(L"JournalFile.DISABLED_Child_SavesAnEmptyJournalAndEnds"), 0);
    EXPECT_EQ(BytesOf(journalPath), header);
    SaveJournal();
}
