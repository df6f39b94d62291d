#include "data/DataInterface.h"
#include "tests/support/MessageBoxWatcher.h"

#include <gmock/gmock.h>

TEST(DayStore, DeleteDay_OfAnAbsentDateSaysNotFound)
{
    MessageBoxWatcher boxes;
    DataInterface::DeleteDay(2004, 2, 12);
    const auto seen = boxes.Seen();
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].text, L"not found");
    EXPECT_EQ(seen[0].title, L"Odomira");
    EXPECT_THAT(seen[0].buttons, testing::ElementsAre(IDOK));
    EXPECT_FALSE(seen[0].hasIcon);
    EXPECT_FALSE(DataInterface::journalChanged);
}
