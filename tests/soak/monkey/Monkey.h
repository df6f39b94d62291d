#pragma once

#include "tests/soak/monkey/RunningProgram.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <span>
#include <string>

/// Sends random clicks, keys, close commands and answers. The seed and the number of an action determine the action.
/// Its effect also depends on the screen, so a seed repeats a run, but not exactly.
class Monkey {
public:
    Monkey(std::wstring path, std::uint32_t seed);

    /// One action. Throws Finding if the program fails.
    void Act();
    /// Closes dialogs and menus until the program is idle.
    void BecomeIdle();
    /// Closes the program and saves.
    void EndAndSave();

    const RunningProgram& Program() const noexcept { return *program_; }

    /// The number of actions by kind.
    const std::map<std::string, int>& ActionCounts() const noexcept { return counts_; }
    /// The messages of the program, with their numbers.
    const std::map<std::wstring, int>& Messages() const noexcept { return messages_; }
    /// A description of the last actions, for a finding.
    std::string LastActions() const;

private:
    using Action = void (Monkey::*)(HWND window);
    struct Habit {
        int weight;
        const char* name;
        Action action;
    };

    std::wstring path_;
    std::uint32_t seed_;
    std::uint32_t acts_ = 0;
    std::uint64_t state_ = 0;
    int sheets_ = 0;
    HWND lastMessage_ = nullptr;
    std::unique_ptr<RunningProgram> program_;
    std::map<std::string, int> counts_;
    std::map<std::wstring, int> messages_;
    std::deque<std::string> lastActions_;

    void RestartIfEnded();
    void CloseTopWindow();
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
    /// Waits until the program has handled this number of inputs.
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
    void ChangeRegion(HWND window);
    void ConfirmSessionEnd(HWND window);
    void CancelSessionEnd(HWND window);
    void PostQuit(HWND window);
    void ResizeMainWindow(HWND window);
    void MinimiseOrMaximise(HWND window);
    void AnswerPrinter(HWND window);
    void Cancel(HWND window);
};
