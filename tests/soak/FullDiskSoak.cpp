// Saves to a disk with room for 0, 1, 2, ... pages of the journal. Wherever writing fails, the save reports an error,
// the entries are still in memory, and with room on the disk the same save succeeds. The file is truncated before it is
// written, so the full disk has the part of the new journal that fits.

#include "platform/system/Conversions.h"
#include "platform/system/TextFile.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>

#include <windows.h>

using DataInterface::AddDay;
using DataInterface::IsJournalChanged;
using DataInterface::WriteJournalFile;

namespace {

constexpr std::size_t page = 4096;

/// The disk of with-small-disk and its free space.
class SmallDisk {
public:
    std::wstring File(const std::wstring& name) const { return folder_ + L'\\' + name; }

    std::size_t PagesFree() const
    {
        ULARGE_INTEGER free{};
        EXPECT_NE(GetDiskFreeSpaceExW(folder_.c_str(), &free, nullptr, nullptr), 0);
        return static_cast<std::size_t>(free.QuadPart / page);
    }

    /// Fills the disk except for this number of pages.
    void Leave(std::size_t pages) const
    {
        MakeRoom();
        WriteBytes(File(L"filler"), std::string((PagesFree() - pages) * page, 'f'));
        ASSERT_EQ(PagesFree(), pages);
    }

    void MakeRoom() const { DeleteFileW(File(L"filler").c_str()); }

private:
    std::wstring folder_ = FromUserCodePage(std::getenv("ODOMIRA_SMALL_DISK"));
};

class FullDiskSoak : public StoreUnderTest {
protected:
    void TearDown() override
    {
        disk_.MakeRoom();
        DeleteFileW(journal_.c_str());
        report_.Did(saves_, "saves on a full disk (one for every 4 KiB of the write)");
        StoreUnderTest::TearDown();
    }

    void Enter(std::int64_t entries)
    {
        for (std::int64_t i = 0; i < entries; ++i) {
            AddDay(2004, 2, 12, static_cast<double>(i % 10000), L"Office - customer visit " + std::to_wstring(i));
        }
    }

    std::string Written()
    {
        WriteJournalFile(journal_);
        return BytesOf(journal_);
    }

    void SaveWithRoomFor(std::size_t pages, const std::string& whole)
    {
        ASSERT_NO_FATAL_FAILURE(LeaveRoomFor(pages));
        ASSERT_NO_FATAL_FAILURE(FailToSave());
        const std::string kept = BytesOf(journal_);
        ASSERT_LE(kept.size(), pages * page);
        ASSERT_TRUE(whole.starts_with(kept));

        disk_.MakeRoom();
        ASSERT_EQ(Written(), whole);
        ++saves_;
    }

    /// Writes an old journal of one page and fills the disk, so that this number of pages is free or in that journal.
    void LeaveRoomFor(std::size_t pages)
    {
        DeleteFileW(journal_.c_str());
        WriteBytes(journal_, pages == 0 ? "" : "2004-02-11      1 the old journal, which has one page\r\n");
        disk_.Leave(pages == 0 ? 0 : pages - 1);
    }

    void FailToSave()
    {
        const std::vector<DayEntry> entered = Entries();
        ASSERT_EQ(ErrorOf([this] { WriteJournalFile(journal_); }), ErrorNumber::DiskFull);
        ASSERT_TRUE(IsJournalChanged());
        ASSERT_TRUE(Entries() == entered);
        ASSERT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileNameOrNumber)
            << "the file number is in use";
    }

    SmallDisk disk_;
    std::wstring journal_ = disk_.File(L"datasource.jrn");
    std::int64_t saves_ = 0;
    ClosingReport report_;
};

} // namespace

TEST_F(FullDiskSoak, AFullDiskNeverLosesEntries)
{
    Enter(Amount(1500, 17000));
    const std::string whole = Written();
    const std::size_t pages = (whole.size() + page - 1) / page;
    ASSERT_LT(pages, disk_.PagesFree()) << "the disk is too small for the test";
    for (std::size_t room = 0; room < pages; ++room) {
        SCOPED_TRACE(room);
        ASSERT_NO_FATAL_FAILURE(SaveWithRoomFor(room, whole));
    }
    EXPECT_EQ(static_cast<std::size_t>(saves_), pages);
}
