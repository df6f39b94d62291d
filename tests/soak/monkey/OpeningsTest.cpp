// Opens and closes each dialog a thousand times and expects that it leaks no object.
#include "tests/soak/Amounts.h"
#include "tests/soak/monkey/Holdings.h"
#include "tests/soak/monkey/Installation.h"
#include "tests/soak/monkey/PatientUser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <iostream>
#include <span>
#include <string>
#include <thread>

namespace {

struct Opening {
    const char* name = nullptr;
    void (PatientUser::*openAndClose)(int time) = nullptr;
    int rarity = 1; ///< opened this many times less often than the others
};

constexpr std::array dialogs{
    Opening{"Add", &PatientUser::Add},           Opening{"Edit", &PatientUser::Edit},
    Opening{"Settings", &PatientUser::Settings}, Opening{"Employee information", &PatientUser::EmployeeInformation},
    Opening{"About", &PatientUser::About},       Opening{"Print interval", &PatientUser::PrintInterval},
};

constexpr std::array questionsAndPrinting{
    Opening{"Question before deleting", &PatientUser::AskToDelete},
    Opening{"Message that no day is chosen", &PatientUser::DeleteWithoutSelection},
    Opening{"Question before reverting", &PatientUser::AskToRevert},
    Opening{"Question before closing", &PatientUser::AskToSave},
    Opening{"Printer dialog", &PatientUser::ChoosePrinter, 4},
    Opening{"Printing", &PatientUser::Print, 40},
};

/// The objects of the idle program. Waits for objects that are about to be freed, if it has more than expected. Wine:
/// the X11 window manager may keep a window for a while.
Holdings HoldingsWhenIdle(const RunningProgram& program, const Holdings* expected)
{
    constexpr std::chrono::seconds timeout{5};
    const auto end = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        program.Settle(4);
        const Holdings holdings = HoldingsOf(program.Process());
        if (expected == nullptr || !holdings.Exceed(*expected) || std::chrono::steady_clock::now() > end) {
            return holdings;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

int TimesOf(const Opening& opening, int times)
{
    return std::max(1, times / opening.rarity);
}

void OpenAll(PatientUser& user, std::span<const Opening> openings, int times)
{
    for (const Opening& opening : openings) {
        for (int time = 0; time < TimesOf(opening, times); ++time) {
            (user.*opening.openAndClose)(time);
        }
    }
}

/// Opens each dialog. Returns true if no new object is left except the registry keys of saved settings.
bool OpenWithoutLeak(const RunningProgram& program, PatientUser& user, std::span<const Opening> openings, int times)
{
    const Holdings before = HoldingsWhenIdle(program, nullptr);
    const int savedBefore = user.SavedSettings();
    OpenAll(user, openings, times);
    const int saved = user.SavedSettings() - savedBefore;
    Holdings expected = before;
    expected.registryKeys += saved;
    const Holdings after = HoldingsWhenIdle(program, &expected);
    for (const Opening& opening : openings) {
        std::cout << opening.name << ", opened " << TimesOf(opening, times) << " times\n";
    }
    std::cout << "    before: " << before << "\n    after:  " << after << ", settings saved " << saved << std::endl;
    return !after.Exceed(expected);
}

/// Objects that Windows loads once, such as a mouse pointer, may appear late, and it keeps some for the next window and
/// frees them later. They are no leak: a leak grows in every round.
void ExpectNoLeak(const RunningProgram& program, PatientUser& user, std::span<const Opening> openings, int times)
{
    constexpr int rounds = 6;
    for (int round = 0; round < rounds; ++round) {
        if (OpenWithoutLeak(program, user, openings, times)) {
            return;
        }
    }
    ADD_FAILURE() << "objects leak in every round; first dialog: " << openings.front().name;
}

void ExpectNoLeak(std::span<const Opening> openings)
{
    ClosingReport report;
    const Installation installation(L"two-days.jrn");
    const RunningProgram program(installation.Program());
    PatientUser user(program);
    const auto times = static_cast<int>(Amount(4, 1000));
    try {
        // Objects that Windows keeps after the first opening for the next ones are no leak.
        OpenAll(user, openings, static_cast<int>(Amount(2, 20)));
        // A long run opens the dialogs one by one, so that a leak has a name.
        const std::size_t together = IsLongRun() ? 1 : openings.size();
        for (std::size_t first = 0; first < openings.size(); first += together) {
            ExpectNoLeak(program, user, openings.subspan(first, together), times);
        }
        for (const Opening& opening : openings) {
            report.Did(TimesOf(opening, times), std::string("openings of: ") + opening.name);
        }
    } catch (const Finding& finding) {
        ADD_FAILURE() << finding.what();
    }
    std::cout << "repeated actions: " << user.Repeats() << std::endl;
}

} // namespace

TEST(Openings, OfDialogsLeaveNothingBehindExceptTheKeysOfSavedSettings)
{
    ExpectNoLeak(dialogs);
}

TEST(Openings, OfMessagesAndOfThePrinterLeaveNothingBehindExceptTheKeysOfSavedSettings)
{
    ExpectNoLeak(questionsAndPrinting);
}
