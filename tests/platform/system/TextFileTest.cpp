#include "platform/system/TextFile.h"
#include "platform/system/FileSystem.h"
#include "platform/system/OwnedHandle.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/NoMemory.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <new>
#include <vector>

#include <windows.h>

using testing::ElementsAre;

namespace {

std::uint64_t FileSize(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
    return data.nFileSizeLow;
}

/// Replaces FlushFileBuffers: records the size of the file.
std::vector<DWORD> flushed;
BOOL flushResult = TRUE;
DWORD flushError = ERROR_SUCCESS;

BOOL WINAPI NoteFlush(HANDLE file)
{
    flushed.push_back(GetFileSize(file, nullptr));
    SetLastError(flushError);
    return flushResult;
}

class TextFileSlots : public testing::Test {
protected:
    void TearDown() override
    {
        for (int slot = 1; slot <= 3; ++slot) {
            TextFile::Close(slot);
        }
    }

    std::vector<std::string> LinesOf(std::string_view bytes)
    {
        WriteBytes(file_, bytes);
        TextFile::OpenForInput(1, file_);
        std::vector<std::string> lines;
        while (!TextFile::AtEndOfFile(1)) {
            lines.push_back(TextFile::ReadLine(1));
        }
        TextFile::Close(1);
        return lines;
    }

    TemporaryFolder folder_;
    std::wstring file_ = folder_.File(L"file.txt");
};

} // namespace

TEST_F(TextFileSlots, LinesEndWithAnyOfTheThreeLineEnds)
{
    EXPECT_THAT(LinesOf(""), ElementsAre());
    EXPECT_THAT(LinesOf("a"), ElementsAre("a"));
    EXPECT_THAT(LinesOf("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(LinesOf("a\r\n"), ElementsAre("a"));
    EXPECT_THAT(LinesOf("\r\n\r\n"), ElementsAre("", ""));
    EXPECT_THAT(LinesOf("\n\r"), ElementsAre("", ""));
    EXPECT_THAT(LinesOf("a\x1a\r\nb"), ElementsAre("a\x1a", "b"));
}

TEST_F(TextFileSlots, LinesMayCrossChunks)
{
    for (const std::size_t length : {65534u, 65535u, 65536u, 65537u, 200000u}) {
        const std::string first(length, 'x');
        EXPECT_THAT(LinesOf(first + "\r\nb\r\n"), ElementsAre(first, "b")) << length;
    }
}

TEST_F(TextFileSlots, ReadingBeyondTheEndFails)
{
    WriteBytes(file_, "a");
    TextFile::OpenForInput(1, file_);
    TextFile::ReadLine(1);
    EXPECT_EQ(ErrorOf([] { TextFile::ReadLine(1); }), ErrorNumber::InputPastEndOfFile);
}

TEST_F(TextFileSlots, ASlotInUseCannotBeTakenAgainUntilItIsClosed)
{
    TextFile::OpenForOutput(1, file_);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForInput(1, file_); }), ErrorNumber::FileAlreadyOpen);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(1, folder_.File(L"b")); }), ErrorNumber::FileAlreadyOpen);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForAppend(1, folder_.File(L"b")); }), ErrorNumber::FileAlreadyOpen);
    EXPECT_FALSE(FileExists(folder_.File(L"b")));
    TextFile::OpenForOutput(2, folder_.File(L"b"));
    TextFile::Close(1);
    TextFile::OpenForInput(1, file_);
}

TEST_F(TextFileSlots, ASlotWithoutAFileOrOutsideTheTableIsABadNumber)
{
    EXPECT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([] { TextFile::ReadLine(1); }), ErrorNumber::BadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([] { TextFile::Write(1, "a"); }), ErrorNumber::BadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(0, file_); }), ErrorNumber::BadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(512, file_); }), ErrorNumber::BadFileNameOrNumber);
    TextFile::Close(1);
}

TEST_F(TextFileSlots, AFileIsReadOrWrittenButNotBoth)
{
    TextFile::OpenForOutput(1, file_);
    EXPECT_EQ(ErrorOf([] { TextFile::ReadLine(1); }), ErrorNumber::BadFileMode);
    EXPECT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileMode);
    TextFile::Close(1);
    TextFile::OpenForInput(1, file_);
    EXPECT_EQ(ErrorOf([] { TextFile::Write(1, "a"); }), ErrorNumber::BadFileMode);
}

TEST_F(TextFileSlots, OutputTruncatesTheFileAndAppendContinuesIt)
{
    WriteBytes(file_, "old and long");
    TextFile::OpenForOutput(1, file_);
    EXPECT_EQ(BytesOf(file_), "");
    TextFile::Write(1, "ab\r\n");
    EXPECT_EQ(BytesOf(file_), "ab\r\n") << "what is written is there at once";
    TextFile::Close(1);
    TextFile::OpenForAppend(1, file_);
    TextFile::Write(1, "c");
    TextFile::Close(1);
    EXPECT_EQ(BytesOf(file_), "ab\r\nc");
}

TEST_F(TextFileSlots, HiddenAndSystemFilesAreTruncatedAndKeepTheirAttributes)
{
    for (const DWORD mark : {DWORD{FILE_ATTRIBUTE_HIDDEN}, DWORD{FILE_ATTRIBUTE_SYSTEM}}) {
        WriteBytes(file_, "old");
        SetFileAttributesW(file_.c_str(), mark);
        TextFile::OpenForOutput(1, file_);
        TextFile::Write(1, "new");
        TextFile::Close(1);
        EXPECT_EQ(BytesOf(file_), "new");
        SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

TEST_F(TextFileSlots, EachFailureToOpenHasItsOwnError)
{
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForInput(1, file_); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForInput(1, folder_.File(L"missing\\a")); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(1, folder_.Path()); }), ErrorNumber::PathFileAccessError);

    WriteBytes(file_, "old");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(1, file_); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForAppend(1, file_); }), ErrorNumber::PathFileAccessError);
    TextFile::OpenForInput(1, file_);
    TextFile::Close(1);
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);

    const OwnedHandle held(CreateFileW(file_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForInput(1, file_); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(1, file_); }), ErrorNumber::PermissionDenied);
}

TEST_F(TextFileSlots, AFailedOpenTakesNoSlot)
{
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForInput(1, file_); }), ErrorNumber::FileNotFound);
    TextFile::OpenForOutput(1, file_);
}

TEST_F(TextFileSlots, AWriteThatFailsFreesTheSlot)
{
    // The host's device that is always full.
    TextFile::OpenForAppend(1, L"Z:\\dev\\full");
    EXPECT_EQ(ErrorOf([] { TextFile::Write(1, "a"); }), ErrorNumber::DiskFull);
    TextFile::OpenForOutput(1, file_);
}

TEST_F(TextFileSlots, AFileIsNotTruncatedIfThereIsNoMemoryForItsSlot)
{
    WriteBytes(file_, "old");
    const NoMemory none;
    EXPECT_THROW(TextFile::OpenForOutput(1, file_), std::bad_alloc);
    EXPECT_EQ(FileSize(file_), 3u);
}

TEST_F(TextFileSlots, AFlushWritesTheFileToTheDisk)
{
    flushed.clear();
    const ReplacedImport replaced("FlushFileBuffers", NoteFlush);
    flushResult = TRUE;
    TextFile::OpenForOutput(1, file_);
    TextFile::Write(1, "a");
    TextFile::Flush(1);
    EXPECT_THAT(flushed, ElementsAre(1u));
}

TEST_F(TextFileSlots, AFlushThatFailsFreesTheSlot)
{
    const ReplacedImport replaced("FlushFileBuffers", NoteFlush);
    flushResult = FALSE;
    TextFile::OpenForOutput(1, file_);
    flushError = ERROR_DISK_FULL;
    EXPECT_EQ(ErrorOf([] { TextFile::Flush(1); }), ErrorNumber::DiskFull);
    TextFile::OpenForOutput(1, file_);
    flushError = ERROR_INVALID_FUNCTION;
    TextFile::Flush(1);
    EXPECT_EQ(ErrorOf([this] { TextFile::OpenForOutput(1, file_); }), ErrorNumber::FileAlreadyOpen)
        << "a disk without the service is no failure";
}

TEST_F(TextFileSlots, FileExistsCountsOrdinaryFilesOnly)
{
    EXPECT_FALSE(FileExists(file_));
    EXPECT_FALSE(FileExists(folder_.Path()));
    WriteBytes(file_, "");
    EXPECT_TRUE(FileExists(file_));
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(FileExists(file_));
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(FileExists(file_));
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_SYSTEM);
    EXPECT_FALSE(FileExists(file_));
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}
