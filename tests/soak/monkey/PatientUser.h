#pragma once

#include "tests/soak/monkey/RunningProgram.h"

#include <functional>
#include <initializer_list>

/// A patient user, who opens and closes the same dialog over and over again, each time in another of the ways there
/// are. Works on a program at rest, and leaves it at rest.
class PatientUser {
public:
    explicit PatientUser(const RunningProgram& program) : program_(program) {}

    // One opening each. The number of the time chooses the way out.
    void Add(int time);
    void Edit(int time);
    void AskToDelete(int time);
    void ForgetToChooseADay(int time);
    void Settings(int time);
    void EmployeeInformation(int time);
    void About(int time);
    void PrintInterval(int time);
    void ChoosePrinter(int time);
    void Print(int time);
    void AskToRevert(int time);
    void AskToSave(int time);

    void OpenAndLeaveADialog();
    /// The days are the same afterwards; the program asks about unsaved changes.
    void ChangeTheJournal() { AddADayAndDeleteIt(); }

    /// How many settings the program has been made to write.
    int SavedSettings() const noexcept { return savedSettings_; }
    /// How often something had to be done again because it got lost between the window manager and the program.
    int Repeats() const noexcept { return repeats_; }

private:
    enum class Exit { Escape, CloseBox, CancelButton, Enter };
    enum Command { addButton, editButton, deleteButton };

    const RunningProgram& program_;
    int savedSettings_ = 0;
    int repeats_ = 0;

    /// Does it until a window of that kind, and another than before, is in front; returns that.
    HWND Open(WindowKind kind, const std::function<void()>& deed);
    HWND OpenByButton(Command command, WindowKind kind);
    HWND OpenByMenu(std::initializer_list<int> path, WindowKind kind);
    void Leave(HWND window, Exit exit);
    /// Does it until the window is gone.
    void LeaveBy(HWND window, const std::function<void()>& deed);
    void BeRefusedByAdd();
    void AddADayAndDeleteIt();
    void ChooseFirstLine();

    /// What a click on the window does that has lost the keyboard to the desktop or to a window behind it.
    void BringToFront() const;
    void Keys(std::initializer_list<WORD> keys) const;
    void ClickOn(HWND control) const;
};
