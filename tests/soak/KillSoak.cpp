// The program killed at a random moment. Outside a save the journal file is whole. Inside a save it is the old journal
// or the new one, except between the cutting of the old one and the end of writing: how often that moment is hit is
// counted and told.

#include "platform/Application.h"
#include "platform/OwnedHandle.h"
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

/// How far the victim has come; it is known also after its death.
struct Progress {
    std::atomic<std::int32_t> begun;    ///< the version of the journal whose save was begun last
    std::atomic<std::int32_t> finished; ///< the version whose save came back last
    std::atomic<std::int32_t> changes;  ///< operations on a journal that is not saved
};

struct Unmap {
    void operator()(Progress* view) const noexcept { UnmapViewOfFile(view); }
};

/// A piece of memory that both processes see under one name.
class SharedProgress {
public:
    SharedProgress()
        : mapping_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Progress),
                                      L"journal saved by the victim")),
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
    void KillWhileItEntersDays()
    {
        KillOnce(
            L"KillSoak.DISABLED_VictimThatEntersDays", [this] { return progress_->changes > 0; }, 20);
    }

    void KillWhileItSaves()
    {
        KillOnce(
            L"KillSoak.DISABLED_VictimThatSaves", [this] { return progress_->begun > 0; }, 60);
    }

    /// Runs the victim until it is at work, and kills it up to so many milliseconds later.
    void KillOnce(const std::wstring& victim, const std::function<bool()>& isAtWork, int mostMilliseconds)
    {
        progress_.Restart();
        WriteBytes(journal_, FileOfVersion(0));
        const OwnedHandle process = StartInChildProcess(victim);
        ASSERT_TRUE(process);
        while (!isAtWork()) {
            ASSERT_NE(WaitForSingleObject(process.Get(), 1), WAIT_OBJECT_0) << "the victim ended by itself";
        }
        const auto moment =
            std::chrono::microseconds(std::uniform_int_distribution(0, mostMilliseconds * 1000)(random_));
        std::this_thread::sleep_for(moment);
        ASSERT_NE(TerminateProcess(process.Get(), 99), 0);
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

/// Enters days and never saves.
TEST_F(KillSoak, DISABLED_VictimThatEntersDays)
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

/// Saves one version after the other.
TEST_F(KillSoak, DISABLED_VictimThatSaves)
{
    LoadJournal();
    for (std::int32_t version = 1;; ++version) {
        DataInterface::ReplaceDay(2005, 1, 1, 1, RouteOfVersion(version));
        progress_->begun = version;
        DataInterface::SaveJournal();
        progress_->finished = version;
    }
}

TEST_F(KillSoak, OutsideASaveTheJournalFileIsAsItWas)
{
    const std::int64_t wanted = Amount(3, 250);
    while (kills_ < wanted) {
        ASSERT_NO_FATAL_FAILURE(KillWhileItEntersDays());
        ASSERT_EQ(BytesOf(journal_), FileOfVersion(0));
    }
    report_.Did(kills_, "kills outside a save");
}

TEST_F(KillSoak, InsideASaveTheJournalFileIsTheOldOrTheNewOneOrCut)
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
            ASSERT_TRUE(found == before) << "no save was under way";
            continue;
        }
        ++inside;
        old += found == before ? 1 : 0;
        if (found != before && found != after) {
            ++cut;
            ASSERT_TRUE(after.starts_with(found)) << "neither old nor new nor the beginning of the new journal";
        }
    }
    report_.Did(inside, "kills inside a save");
    report_.Did(old, "left the old journal");
    report_.Did(inside - old - cut, "the new one");
    report_.Did(cut, "hit the moment between cutting and writing");
}
