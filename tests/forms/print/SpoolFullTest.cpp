// Printing while the disk of the print queue is full. The test runs with a disk of 64 kB (see with-small-disk), which
// is too small for a report of many years.
#include "data/DataInterface.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Clock.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/PrintedJobs.h"
#include "tests/support/PrinterDialogUser.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <windows.h>

using testing::IsEmpty;

namespace {

const std::filesystem::path queueFolder = L"C:\\windows\\system32\\spool\\printers";

/// The path on the host of a folder or file. The root of the host is drive Z:.
std::string HostName(const std::string& path)
{
    std::string name = path.substr(path.starts_with("Z:") ? 2 : 0);
    std::ranges::replace(name, '\\', '/');
    return name;
}

/// Moves the files of the print queue to the small disk. Only the host can create the symbolic link.
void QueueOnSmallDisk()
{
    const char* disk = std::getenv("ODOMIRA_SMALL_DISK");
    ASSERT_NE(disk, nullptr) << "run through tests/data/with-small-disk";
    const char* machine = std::getenv("WINEPREFIX");
    ASSERT_NE(machine, nullptr) << "run through tools/machine/in-wine";
    ASSERT_TRUE(std::filesystem::remove(queueFolder));
    std::string command = R"(Z:\bin\ln -s ")" + HostName(disk) + R"(" ")" + HostName(machine) +
                          R"(/drive_c/windows/system32/spool/printers")";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    ASSERT_NE(
        CreateProcessA("Z:\\bin\\ln", command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process),
        0);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    while (!std::filesystem::exists(queueFolder)) {
        std::this_thread::yield(); // the timeout of the test ends an endless wait
    }
}

} // namespace

TEST(SpoolFull, LeavesTheDialogOpenNoJobInTheQueueAndTheJournalUnchanged)
{
    QueueOnSmallDisk();
    Clock::StandStillAt({2004, 3, 15});
    DataInterface::AddDay(2004, 3, 1, 12, L"Office");
    const auto form = Instance<frmInterval>();
    form->Show();
    form->UpDown1[0].SetValue(1990);
    const MessageBoxWatcher boxes;
    {
        const auto user = PrinterDialogUser::ToPrint(1);
        SendMessageW(form->addButton.Handle(), BM_CLICK, 0, 0);
    }
    EXPECT_THAT(boxes.Texts(), IsEmpty());
    EXPECT_EQ(Form::OpenForms().size(), 1U);
    EXPECT_EQ(JobsEverQueued(), 0U);
    EXPECT_EQ(DataInterface::dayCount, 1);
    form->Unload();
    Clock::RunAgain();
}
