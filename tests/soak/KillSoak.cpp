// Terminates the program at a random moment. Outside a save the journal file is complete. During a save it is the old
// or the new journal, except between the truncation of the old one and the end of writing; the test reports how often
// that happened. Right after a save it is the new journal.

#include "platform/system/Application.h"
#include "platform/system/OwnedHandle.h"
#include "tests/data/StoreAndModel.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <random>
#include <thread>

#include <windows.h>

using DataInterface::JournalPathIn;
using DataInterface::LoadJournal;

namespace {

using std::chrono::milliseconds;

constexpr UINT killed = 99; ///< the exit code of a terminated process

/// The progress of the child process. It can be read after the process was terminated.
struct Progress {
    std::atomic<std::int32_t> begun;    ///< the version of the last save that began
    std::atomic<std::int32_t> finished; ///< the version of the last save that returned
    std::atomic<std::int32_t> changes;  ///< operations on the journal that is never saved
};

struct Unmap {
    void operator()(Progress* view) const noexcept { UnmapViewOfFile(view); }
};

/// Shared memory of both processes.
class SharedProgress {
public:
    SharedProgress()
        : mapping_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Progress),
                                      L"journal saved by the child process")),
          view_(static_cast<Progress*>(MapViewOfFile(mapping_.Get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Progress))))
    {
    }

    Progress* operator->() const { return view_.get(); }

    void Restart() const
    {
        view_->begun = 0;
        view_->finished = 0;
        view_->changes = 0;
    }

private:
    OwnedHandle mapping_;
    std::unique_ptr<Progress, Unmap> view_;
};

std::wstring RouteOfVersion(std::int32_t version)
{
    return L"version " + std::to_wstring(version) + std::wstring(static_cast<std::size_t>(version % 50), L'x');
}

/// The journal file of a version: versions differ in their first entry and in their length.
std::string FileOfVersion(std::int32_t version)
{
    constexpr int entries = 1000;
    const std::wstring route = RouteOfVersion(version);
    std::string text = "'Source file for Odomira\r\n'Do not change this file unless absolutely sure.\r\n";
    text += "2005-01-01      1 " + std::string(route.begin(), route.end()) + "\r\n";
    for (int i = 0; i < entries; ++i) {
        text += "2004-02-12    100 Office - customer visit " + std::to_string(i) + "\r\n";
    }
    return text;
}

class KillSoak : public testing::Test {
protected:
    void KillWhileItAddsDays()
    {
        const auto hasBegun = [this] { return progress_->changes > 0; };
        KillOnce(L"KillSoak.DISABLED_Child_AddsDays", hasBegun, 20);
    }

    void KillWhileItSaves()
    {
        const auto hasBegun = [this] { return progress_->begun > 0; };
        KillOnce(L"KillSoak.DISABLED_Child_Saves", hasBegun, 60);
    }

    /// Starts the child process, waits until it is at work, and terminates it after a random time up to this limit.
    void KillOnce(const std::wstring& child, const std::function<bool()>& isAtWork, int mostMilliseconds)
    {
        progress_.Restart();
        WriteBytes(journal_, FileOfVersion(0));
        const OwnedHandle process = StartInChildProcess(child);
        ASSERT_TRUE(process);
        while (!isAtWork()) {
            ASSERT_NE(WaitForSingleObject(process.Get(), 1), WAIT_OBJECT_0) << "the child process ended by itself";
        }
        const auto moment =
            std::chrono::microseconds(std::uniform_int_distribution(0, mostMilliseconds * 1000)(random_));
        std::this_thread::sleep_for(moment);
        ASSERT_NE(TerminateProcess(process.Get(), killed), 0);
        ASSERT_EQ(WaitForSingleObject(process.Get(), 30000), WAIT_OBJECT_0);
        ++kills_;
    }

    std::wstring journal_ = JournalPathIn(ProgramFolder());
    SharedProgress progress_;
    std::mt19937 random_{Seed()};
    std::int64_t kills_ = 0;
    ClosingReport report_;
};

} // namespace

/// Adds days and never saves.
TEST_F(KillSoak, DISABLED_Child_AddsDays)
{
    LoadJournal();
    RandomUser user(GetCurrentProcessId());
    JournalModel model;
    model.TakeFromStore();
    for (;;) {
        DoSomething(user, model);
        ++progress_->changes;
    }
}

/// Saves version after version.
TEST_F(KillSoak, DISABLED_Child_Saves)
{
    LoadJournal();
    for (std::int32_t version = 1;; ++version) {
        DataInterface::ReplaceDay(2005, 1, 1, 1, RouteOfVersion(version));
        progress_->begun = version;
        DataInterface::SaveJournal();
        progress_->finished = version;
    }
}

/// Saves once and terminates itself right after.
TEST_F(KillSoak, DISABLED_Child_TerminatesAfterASave)
{
    LoadJournal();
    DataInterface::ReplaceDay(2005, 1, 1, 1, RouteOfVersion(progress_->begun));
    DataInterface::SaveJournal();
    TerminateProcess(GetCurrentProcess(), killed);
}

TEST_F(KillSoak, RightAfterASaveTheJournalFileIsTheNewOne)
{
    const std::int64_t wanted = Amount(3, 250);
    for (; kills_ < wanted; ++kills_) {
        const auto version = static_cast<std::int32_t>(kills_ + 1);
        WriteBytes(journal_, FileOfVersion(0));
        progress_->begun = version;
        ASSERT_EQ(RunInChildProcess(L"KillSoak.DISABLED_Child_TerminatesAfterASave"), static_cast<int>(killed));
        ASSERT_EQ(BytesOf(journal_), FileOfVersion(version));
    }
    report_.Did(kills_, "kills right after a save");
}

TEST_F(KillSoak, OutsideASaveTheJournalFileIsUnchanged)
{
    const std::int64_t wanted = Amount(3, 250);
    while (kills_ < wanted) {
        ASSERT_NO_FATAL_FAILURE(KillWhileItAddsDays());
        ASSERT_EQ(BytesOf(journal_), FileOfVersion(0));
    }
    report_.Did(kills_, "kills outside a save");
}

TEST_F(KillSoak, DuringASaveTheJournalFileIsTheOldOrTheNewOneOrTruncated)
{
    const std::int64_t wanted = Amount(6, 500);
    std::int64_t inside = 0;
    std::int64_t old = 0;
    std::int64_t cut = 0;
    while (inside < wanted) {
        ASSERT_NO_FATAL_FAILURE(KillWhileItSaves());
        const std::string found = BytesOf(journal_);
        const std::string before = FileOfVersion(progress_->finished);
        const std::string after = FileOfVersion(progress_->begun);
        if (before == after) {
            ASSERT_TRUE(found == before) << "the file changed although no save was running";
            continue;
        }
        ++inside;
        old += found == before ? 1 : 0;
        if (found != before && found != after) {
            ++cut;
            ASSERT_TRUE(after.starts_with(found)) << "neither the old journal nor the beginning of the new one";
        }
    }
    report_.Did(inside, "kills inside a save");
    report_.Did(old, "left the old journal");
    report_.Did(inside - old - cut, "left the new journal");
    report_.Did(cut, "left a truncated journal");
}
