// Failing and successful saves in random order. A failed save leaves the file and the entries in memory unchanged, and
// succeeds once its cause is removed.

#include "platform/system/OwnedHandle.h"
#include "tests/data/StoreAndModel.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>
#include <vector>

#include <windows.h>

using DataInterface::dayCount;
using DataInterface::IsJournalChanged;
using DataInterface::journalPath;
using DataInterface::SaveJournal;
using DataInterface::WriteJournalFile;

namespace {

OwnedHandle OpenToBlock(const std::wstring& path, DWORD access, DWORD sharing)
{
    OwnedHandle held(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(held) << GetLastError();
    return held;
}

class SaveSoak : public StoreUnderTest {
protected:
    void TearDown() override
    {
        SetFileAttributesW(journalPath.c_str(), FILE_ATTRIBUTE_NORMAL);
        report_.Did(saves_, "saves that could not succeed");
        StoreUnderTest::TearDown();
    }

    static void BeginAJournal()
    {
        WriteBytes(journalPath, "");
        DataInterface::LoadJournal();
        DataInterface::AddDay(2004, 1, 1, 1, L"first");
        SaveJournal();
    }

    /// Expects that the save fails with this error and changes neither file nor memory.
    void ExpectFailure(ErrorNumber error, const std::function<void()>& save)
    {
        const std::string saved = BytesOf(journalPath);
        DataInterface::AddDay(2004, 2, 12, 1, L"not saved yet");
        model_.TakeFromStore();
        ASSERT_EQ(ErrorOf(save), error);
        ASSERT_TRUE(IsJournalChanged());
        ASSERT_NO_FATAL_FAILURE(ExpectSameJournal(model_, saves_));
        ASSERT_EQ(BytesOf(journalPath), saved);
        ++saves_;
    }

    void SaveOverAReadOnlyFile()
    {
        SetFileAttributesW(journalPath.c_str(), FILE_ATTRIBUTE_READONLY);
        ExpectFailure(ErrorNumber::PathFileAccessError, [] { SaveJournal(); });
        SetFileAttributesW(journalPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    }

    void SaveOverALockedFile()
    {
        const std::string saved = BytesOf(journalPath);
        DataInterface::AddDay(2004, 2, 12, 1, L"not saved yet");
        model_.TakeFromStore();
        {
            const OwnedHandle held = OpenToBlock(journalPath, GENERIC_READ, 0);
            ASSERT_EQ(ErrorOf([] { SaveJournal(); }), ErrorNumber::PermissionDenied);
        }
        ASSERT_TRUE(IsJournalChanged());
        ASSERT_NO_FATAL_FAILURE(ExpectSameJournal(model_, saves_));
        ASSERT_EQ(BytesOf(journalPath), saved);
        ++saves_;
    }

    void SaveOverAFileThatAnotherReads()
    {
        const OwnedHandle held = OpenToBlock(journalPath, GENERIC_READ, FILE_SHARE_READ);
        ExpectFailure(ErrorNumber::PermissionDenied, [] { SaveJournal(); });
    }

    void SaveOverAFileThatAnotherWrites()
    {
        const OwnedHandle held = OpenToBlock(journalPath, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
        ExpectFailure(ErrorNumber::PermissionDenied, [] { SaveJournal(); });
    }

    void SaveIntoAMissingFolder()
    {
        ExpectFailure(ErrorNumber::PathNotFound, [this] { WriteJournalFile(folder_.File(L"gone\\datasource.jrn")); });
    }

    void SaveOverAFolder()
    {
        ExpectFailure(ErrorNumber::PathFileAccessError, [this] { WriteJournalFile(folder_.Path()); });
    }

    void FailToSave(int reason)
    {
        switch (reason) {
        case 0:
            return SaveOverAReadOnlyFile();
        case 1:
            return SaveOverALockedFile();
        case 2:
            return SaveOverAFileThatAnotherReads();
        case 3:
            return SaveOverAFileThatAnotherWrites();
        case 4:
            return SaveIntoAMissingFolder();
        default:
            return SaveOverAFolder();
        }
    }

    TemporaryFolder folder_;
    JournalModel model_;
    std::int64_t saves_ = 0;
    ClosingReport report_;
};

} // namespace

TEST_F(SaveSoak, AFailedSaveChangesNeitherFileNorMemory)
{
    RandomUser user(Seed());
    BeginAJournal();
    const std::int64_t wanted = Amount(60, 6000);
    while (saves_ < wanted) {
        SCOPED_TRACE(saves_);
        constexpr std::int16_t largeEnough = 300;
        if (dayCount > largeEnough) {
            BeginAJournal();
        }
        model_.TakeFromStore();
        for (int changes = user.Pick(0, 5); changes > 0; --changes) {
            ASSERT_NO_FATAL_FAILURE(DoSomething(user, model_));
        }
        ASSERT_NO_FATAL_FAILURE(FailToSave(user.Pick(0, 5)));

        const std::vector<DayEntry> entered = Entries();
        SaveJournal();
        ASSERT_FALSE(IsJournalChanged());
        if (user.Pick(0, 9) == 0) {
            DataInterface::LoadJournal();
            ASSERT_TRUE(Entries() == entered);
        }
    }
}
