#include "platform/windows/UnhandledError.h"

#include "platform/system/RuntimeError.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/NoMemory.h"

#include <gmock/gmock.h>

#include <memory>
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

TEST(UnhandledErrors, OfTheStandardLibraryAreShownWithANumber)
{
    const MessageBoxWatcher boxes;
    EXPECT_FALSE(Guarded([] { throw std::bad_alloc(); }));
    EXPECT_FALSE(Guarded([] { throw std::length_error("too long"); }));
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '7':\r\n\r\nOut of memory",
                                           L"Run-time error '5':\r\n\r\nInvalid procedure call or argument"));
}

TEST(UnhandledErrors, AreShownWithoutTakingMemory)
{
    const MessageBoxWatcher boxes;
    {
        const NoMemory none;
        EXPECT_FALSE(Guarded([] { static_cast<void>(std::make_unique<int>()); }));
        EXPECT_FALSE(Guarded([] { throw RuntimeError(ErrorNumber::InvalidProcedureCall); }));
        EXPECT_TRUE(none.WasMet());
    }
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '7':\r\n\r\nOut of memory",
                                           L"Run-time error '5':\r\n\r\nInvalid procedure call or argument"));
}

TEST(UnhandledErrors, AreNotShownWhenTheFormHasBeenDestroyed)
{
    const MessageBoxWatcher boxes;
    EXPECT_FALSE(Guarded([] { throw CommandEnded(); }));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST(UnhandledErrors, AreNotShownAfterSuccess)
{
    const MessageBoxWatcher boxes;
    bool ended = false;
    EXPECT_TRUE(Guarded([&ended] { ended = true; }));
    EXPECT_TRUE(ended);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}
