// The store is compared with a second implementation of its rules, after each of thousands of random operations.

#include "tests/data/StoreAndModel.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

using DataInterface::AddDay;
using DataInterface::IsJournalChanged;
using DataInterface::journalPath;
using DataInterface::LoadJournal;
using DataInterface::SaveJournal;

namespace {

class DayStoreAgainstModel : public StoreUnderTest, public testing::WithParamInterface<unsigned> {
protected:
    JournalModel model_;
};

} // namespace

TEST_P(DayStoreAgainstModel, AfterEveryOperationTheJournalIsTheSame)
{
    RandomUser user(GetParam());
    for (int step = 0; step < 1200; ++step) {
        ASSERT_NO_FATAL_FAILURE(DoSomething(user, model_));
        ASSERT_NO_FATAL_FAILURE(ExpectSameJournal(model_, step));
    }
}

TEST_P(DayStoreAgainstModel, AReadAfterASaveGivesTheSameJournal)
{
    MessageBoxWatcher boxes;
    RandomUser user(GetParam());
    for (int step = 0; step < 300; ++step) {
        ASSERT_NO_FATAL_FAILURE(DoSomething(user, model_));
    }
    const auto before = Entries();
    SaveJournal();
    EXPECT_FALSE(IsJournalChanged());
    AddDay(2004, 1, 1, 1, L"forgotten by the revert");
    LoadJournal();
    EXPECT_TRUE(Entries() == before);
    EXPECT_FALSE(IsJournalChanged());

    const std::string saved = BytesOf(journalPath);
    SaveJournal();
    EXPECT_EQ(BytesOf(journalPath), saved);
    EXPECT_TRUE(boxes.Seen().empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, DayStoreAgainstModel, testing::Range(1u, 13u));
