// Sends random input and then checks the program and its journal.
#include "tests/soak/monkey/Monkey.h"
#include "tests/soak/Amounts.h"
#include "tests/soak/monkey/Holdings.h"
#include "tests/soak/monkey/Installation.h"
#include "tests/soak/monkey/PatientUser.h"
#include "tests/support/RecordingBrowser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>

namespace {

void ExpectWellFormedJournal(const std::string& bytes)
{
    const std::string header = "'Source file for Odomira\r\n'Do not change this file unless absolutely sure.\r\n";
    ASSERT_TRUE(bytes.starts_with(header));
    ASSERT_TRUE(bytes.ends_with("\r\n"));
    const std::regex day("[0-9]{4}-[0-9]{2}-[0-9]{2} [ 0-9.-]{5}[0-9] .*\r");
    std::istringstream lines(bytes.substr(header.size()));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(std::regex_match(line, day)) << line;
    }
}

/// Expects the same number of windows whenever the program is idle.
class WindowCount {
public:
    void Check(Monkey& monkey)
    {
        monkey.BecomeIdle();
        // After its start the program lacks the windows that the first dialog creates.
        PatientUser(monkey.Program()).OpenAndCloseADialog();
        // A dialog is hidden before it is destroyed. Count after that.
        monkey.Program().Settle(10);
        Holdings holdings;
        monkey.Program().Becomes([&] {
            holdings = HoldingsOf(monkey.Program().Process());
            return windows_ == 0 || holdings.windows == windows_;
        });
        windows_ = windows_ == 0 ? holdings.windows : windows_;
        EXPECT_EQ(holdings.windows, windows_) << monkey.LastActions();
        mostGdiObjects_ = std::max(mostGdiObjects_, holdings.gdiObjects);
        mostUserObjects_ = std::max(mostUserObjects_, holdings.userObjects);
        ++times_;
    }

    void AddTo(ClosingReport& report) const
    {
        report.Did(times_, "times idle");
        report.Did(windows_, "windows each time");
        report.Did(mostGdiObjects_, "GDI objects at most");
        report.Did(mostUserObjects_, "user objects at most");
    }

private:
    int times_ = 0;
    int windows_ = 0;
    int mostGdiObjects_ = 0;
    int mostUserObjects_ = 0;
};

void Report(const Monkey& monkey, ClosingReport& report)
{
    for (const auto& [action, count] : monkey.ActionCounts()) {
        report.Did(count, action);
    }
    for (const auto& [message, count] : monkey.Messages()) {
        std::cout << "message, " << count << " times: " << testing::PrintToString(message) << '\n';
    }
}

} // namespace

TEST(Monkey, NeitherCrashesNorHangsTheProgramNorDamagesTheJournal)
{
    ClosingReport report;
    const RecordingBrowser browser;
    const Installation installation(L"three-years-en.jrn");
    Monkey monkey(installation.Program(), Seed());
    WindowCount windows;
    const std::int64_t acts = Amount(100, 20000);
    const std::int64_t checkEvery = Amount(50, 250);
    try {
        for (std::int64_t act = 0; act < acts; ++act) {
            monkey.Act();
            if (act % checkEvery == checkEvery - 1) {
                windows.Check(monkey);
            }
        }
        monkey.EndAndSave();
        const std::string saved = BytesOf(installation.Journal());
        ExpectWellFormedJournal(saved);
        // The program reads the file without a message and has nothing to save.
        Monkey(installation.Program(), Seed()).EndAndSave();
        EXPECT_EQ(BytesOf(installation.Journal()), saved);
    } catch (const Finding& finding) {
        ADD_FAILURE() << finding.what() << '\n' << monkey.LastActions();
    }
    Report(monkey, report);
    windows.AddTo(report);
}
