// Whoever leaves the program running for a year opens each dialog a thousand times: nothing may be left of it.
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
    int rarity = 1; ///< done that many times less often than the others
};

constexpr std::array dialogs{
    Opening{"Add", &PatientUser::Add},           Opening{"Edit", &PatientUser::Edit},
    Opening{"Settings", &PatientUser::Settings}, Opening{"Employee information", &PatientUser::EmployeeInformation},
    Opening{"About", &PatientUser::About},       Opening{"Print interval", &PatientUser::PrintInterval},
};

constexpr std::array questionsAndPrinting{
    Opening{"Question before deleting", &PatientUser::AskToDelete},
    Opening{"Message that no day is chosen", &PatientUser::ForgetToChooseADay},
    Opening{"Question before reverting", &PatientUser::AskToRevert},
    Opening{"Question before closing", &PatientUser::AskToSave},
    Opening{"Printer dialog", &PatientUser::ChoosePrinter, 4},
    Opening{"Printing", &PatientUser::Print, 40},
};

/// What the program holds at rest. What is on its way to go, such as a window that the window manager still has, gets
/// the time to.
Holdings HoldingsAtRest(const RunningProgram& program, const Holdings* expected)
{
    constexpr std::chrono::seconds patience{5};
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        program.Settle(4);
        const Holdings holdings = HoldingsOf(program.Process());
        if (expected == nullptr || holdings == *expected || std::chrono::steady_clock::now() > end) {
            return holdings;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

int TimesOf(const Opening& opening, int times)
{
    return std::max(1, times / opening.rarity);
}

void OpenThemAll(PatientUser& user, std::span<const Opening> openings, int times)
{
    for (const Opening& opening : openings) {
        for (int time = 0; time < TimesOf(opening, times); ++time) {
            (user.*opening.openAndClose)(time);
        }
    }
}

/// Opens each so many times; true when nothing is left of it but the keys of the settings that it saved.
bool LeaveNothing(const RunningProgram& program, PatientUser& user, std::span<const Opening> openings, int times)
{
    const Holdings before = HoldingsAtRest(program, nullptr);
    const int savedBefore = user.SavedSettings();
    OpenThemAll(user, openings, times);
    const int saved = user.SavedSettings() - savedBefore;
    Holdings expected = before;
    expected.registryKeys += saved;
    const Holdings after = HoldingsAtRest(program, &expected);
    for (const Opening& opening : openings) {
        std::cout << opening.name << ", opened " << TimesOf(opening, times) << " times\n";
    }
    std::cout << "    before: " << before << "\n    after:  " << after << ", settings saved " << saved << std::endl;
    return after == expected;
}

/// What the system loads once, such as the shape of a mouse pointer, may come late and is no loss. What is lost with an
/// opening is lost with the next ones as well, however often they are done.
void ExpectNothingIsLost(const RunningProgram& program, PatientUser& user, std::span<const Opening> openings, int times)
{
    constexpr int rounds = 4;
    for (int round = 0; round < rounds; ++round) {
        if (LeaveNothing(program, user, openings, times)) {
            return;
        }
    }
    ADD_FAILURE() << "something is lost with each round; first of them: " << openings.front().name;
}

void ExpectNothingIsLost(std::span<const Opening> openings)
{
    ClosingReport report;
    const Installation installation(L"two-days.jrn");
    const RunningProgram program(installation.Program());
    PatientUser user(program);
    const auto times = static_cast<int>(Amount(4, 1000));
    try {
        // What the system keeps of a first opening for the next ones is no loss either.
        OpenThemAll(user, openings, static_cast<int>(Amount(2, 20)));
        // One by one in a long run, so that it is known which dialog a loss is of.
        const std::size_t together = IsLongRun() ? 1 : openings.size();
        for (std::size_t first = 0; first < openings.size(); first += together) {
            ExpectNothingIsLost(program, user, openings.subspan(first, together), times);
        }
        for (const Opening& opening : openings) {
            report.Did(TimesOf(opening, times), std::string("openings of: ") + opening.name);
        }
    } catch (const Finding& finding) {
        ADD_FAILURE() << finding.what();
    }
    std::cout << "deeds done again: " << user.Repeats() << std::endl;
}

} // namespace

TEST(Openings, OfDialogsLeaveNothingBehindExceptTheKeysOfSavedSettings)
{
    ExpectNothingIsLost(dialogs);
}

TEST(Openings, OfMessagesAndOfThePrinterLeaveNothingBehindExceptTheKeysOfSavedSettings)
{
    ExpectNothingIsLost(questionsAndPrinting);
}
