// Hundreds of thousands of random operations on the store, with calendar dates, with any numbers, and at its capacity.
// After each operation the store is compared with a second implementation of its rules.

#include "tests/data/StoreAndModel.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/soak/QuickAnswers.h"

#include <algorithm>

using DataInterface::LoadJournal;
using DataInterface::ParseJournalLine;

namespace {

class StoreSoak : public StoreUnderTest {
protected:
    void TearDown() override
    {
        report_.Did(done_, "store operations");
        StoreUnderTest::TearDown();
    }

    /// Fails at the first step after which the store differs from the model.
    void Operate(RandomUser& user, std::int64_t steps)
    {
        for (std::int64_t step = 0; step < steps; ++step) {
            ASSERT_NO_FATAL_FAILURE(DoSomething(user, model_, true)) << "step " << step;
            ASSERT_NO_FATAL_FAILURE(ExpectSameJournal(model_, step));
            ++done_;
        }
    }

    /// Runs the operations on several journals that begin empty, because small journals reach more states.
    void OperateOnNewJournals(DateChoice choice, std::int64_t steps)
    {
        constexpr std::int64_t stepsOfOne = 2000;
        std::uint32_t seed = Seed();
        for (std::int64_t left = steps; left > 0; left -= stepsOfOne) {
            LoadJournal();
            model_ = JournalModel();
            RandomUser user(seed, choice);
            ASSERT_NO_FATAL_FAILURE(Operate(user, std::min(left, stepsOfOne))) << "seed " << seed;
            ++seed;
        }
    }

    JournalModel model_;
    ClosingReport report_;
    std::int64_t done_ = 0;
};

} // namespace

TEST_F(StoreSoak, MatchesTheModelWithManyOperationsOnTheSameDates)
{
    OperateOnNewJournals(DateChoice::Near, Amount(2000, 120000));
}

TEST_F(StoreSoak, MatchesTheModelWithDatesOfAnyThreeNumbers)
{
    OperateOnNewJournals(DateChoice::Any, Amount(2000, 120000));
}

TEST_F(StoreSoak, MatchesTheModelAtItsCapacity)
{
    for (int i = 0; i < 20475; ++i) {
        ParseJournalLine(L"2002-02-12      1 Office");
    }
    model_.TakeFromStore();
    RandomUser user(Seed());
    Operate(user, Amount(60, 3000));
    EXPECT_GE(DataInterface::dayCount, 20470);
}
