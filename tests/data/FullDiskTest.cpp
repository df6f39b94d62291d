// Runs with a disk of 64 kB (see with-small-disk), which is too small for a full journal.

#include "platform/system/Conversions.h"
#include "platform/system/TextFile.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>

#include <windows.h>

using DataInterface::dayCount;
using DataInterface::DeleteDay;
using DataInterface::ParseJournalLine;
using DataInterface::WriteJournalFile;

namespace {

class FullDisk : public StoreUnderTest {
protected:
    void SetUp() override
    {
        StoreUnderTest::SetUp();
        const char* disk = std::getenv("ODOMIRA_SMALL_DISK");
        ASSERT_NE(disk, nullptr) << "run through tests/data/with-small-disk";
        journal_ = FromUserCodePage(disk) + L"\\journal.jrn";
        for (int i = 0; i < 5000; ++i) {
            ParseJournalLine(L"2004-02-12      1 Office - customer visit");
        }
    }

    std::wstring journal_;
};

} // namespace

TEST_F(FullDisk, ASaveToAFullDiskFailsAndCanBeRepeated)
{
    EXPECT_EQ(ErrorOf([this] { WriteJournalFile(journal_); }), ErrorNumber::DiskFull);
    EXPECT_EQ(dayCount, 5000);
    EXPECT_EQ(ErrorOf([] { TextFile::AtEndOfFile(1); }), ErrorNumber::BadFileNameOrNumber) << "the slot is not free";

    while (dayCount > 1000) {
        DeleteDay(2004, 2, 12);
    }
    WriteJournalFile(journal_);
    const std::string bytes = BytesOf(journal_);
    EXPECT_TRUE(bytes.ends_with("Office - customer visit\r\n"));
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 1002);
    DeleteFileW(journal_.c_str());
}
