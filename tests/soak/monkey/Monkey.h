#pragma once

#include "tests/soak/monkey/RunningProgram.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <span>
#include <string>

/// A monkey at the keyboard: clicks, keys, closings and answers at random. The seed and the number of an act decide
/// what the monkey wants to do; what it hits depends on what is on the screen. So a seed brings the same monkey again,
/// though not to the millisecond.
class Monkey {
public:
    Monkey(std::wstring path, std::uint32_t seed);

    /// One act. Throws Finding when the program does not take it well.
    void Act();
    /// Lets go of everything: leaves dialogs and menus until the program is at rest.
    void GoToRest();
    /// Closes the program as a user does who wants to keep all days.
    void EndAndSave();

    const RunningProgram& Program() const noexcept { return *program_; }

    /// What was done, by kind.
    const std::map<std::string, int>& Deeds() const noexcept { return deeds_; }
    /// What the program said in messages, and how often.
    const std::map<std::wstring, int>& Messages() const noexcept { return messages_; }
    /// The last acts in words, for whoever looks into a finding.
    std::string LastActs() const;

private:
    using Deed = void (Monkey::*)(HWND window);
    struct Habit {
        int weight;
        const char* name;
        Deed deed;
    };

    std::wstring path_;
    std::uint32_t seed_;
    std::uint32_t acts_ = 0;
    std::uint64_t state_ = 0;
    int sheets_ = 0;
    HWND lastMessage_ = nullptr;
    std::unique_ptr<RunningProgram> program_;
    std::map<std::string, int> deeds_;
    std::map<std::wstring, int> messages_;
    std::deque<std::string> lastActs_;

    void StartAgainWhenEnded();
    void StepTowardsRest();
    void ReadMessage(HWND window);
    static std::span<const Habit> HabitsInTheMainWindow();
    static std::span<const Habit> HabitsInADialog();
    static std::span<const Habit> HabitsIn(WindowKind kind);
    const Habit& ChooseHabit(WindowKind kind);
    void Note(const std::string& act);

    std::uint32_t Random();
    int Below(int limit);
    POINT PointIn(const RECT& area);
    HWND SomeControl(HWND window);
    /// Waits until the program has taken that many inputs.
    void Settle(int inputs) { program_->Settle(inputs + 2); }

    void ClickControl(HWND window);
    void ClickAnywhere(HWND window);
    void ClickMenuBar(HWND window);
    void ClickWithOtherButton(HWND window);
    void DoubleClick(HWND window);
    void TurnWheel(HWND window);
    void PressKey(HWND window);
    void PressKeys(HWND window);
    void PressKeyWithModifier(HWND window);
    void WriteText(HWND window);
    void FillDayAndConfirm(HWND window);
    void ChooseCommand(HWND window);
    void PressEnter(HWND window);
    void PressEscape(HWND window);
    void PressCloseBox(HWND window);
    void CloseByKeys(HWND window);
    void CloseMainWindowBehind(HWND window);
    void EndSession(HWND window);
    void ResizeMainWindow(HWND window);
    void MinimiseOrMaximise(HWND window);
    void AnswerPrinter(HWND window);
    void Cancel(HWND window);
};
