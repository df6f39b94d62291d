#include "platform/UnhandledError.h"

#include "platform/RuntimeError.h"
#include "tests/support/MessageBoxWatcher.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UnhandledErrors, AreShownWithTheirNumberAndDescriptionUnderTheTitleOfTheProgram)
{
    const MessageBoxWatcher boxes;
    EXPECT_FALSE(Guarded([] { throw RuntimeError(ErrorNumber::DiskFull); }));
    ASSERT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '61':\r\n\r\nDisk full"));
    EXPECT_EQ(boxes.Seen().front().title, L"Odomira");
}

TEST(UnhandledErrors, OfTheLanguageItselfAreShownWithANumberToo)
{
    const MessageBoxWatcher boxes;
    EXPECT_FALSE(Guarded([] { throw std::bad_alloc(); }));
    EXPECT_FALSE(Guarded([] { throw std::length_error("too long"); }));
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '7':\r\n\r\nOut of memory",
                                           L"Run-time error '5':\r\n\r\nInvalid procedure call or argument"));
}

TEST(UnhandledErrors, AreNoneWhereAnOperationEnds)
{
    const MessageBoxWatcher boxes;
    bool ended = false;
    EXPECT_TRUE(Guarded([&ended] { ended = true; }));
    EXPECT_TRUE(ended);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}
