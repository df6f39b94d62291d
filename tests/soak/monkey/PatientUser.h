#pragma once

#include "tests/soak/monkey/RunningProgram.h"

#include <functional>
#include <initializer_list>

/// Opens and closes the dialogs of the program in all possible ways. The program is idle before and after each call.
class PatientUser {
public:
    explicit PatientUser(const RunningProgram& program) : program_(program) {}

    // Each opens its dialog once. The number selects the way to close it.
    void Add(int time);
    void Edit(int time);
    void AskToDelete(int time);
    void DeleteWithoutSelection(int time);
    void Settings(int time);
    void EmployeeInformation(int time);
    void About(int time);
    void PrintInterval(int time);
    void ChoosePrinter(int time);
    void Print(int time);
    void AskToRevert(int time);
    void AskToSave(int time);

    void OpenAndCloseADialog();
    /// Changes the journal and undoes the change: the program will ask about unsaved changes.
    void ChangeTheJournal() { AddADayAndDeleteIt(); }

    /// The number of settings that the program has written.
    int SavedSettings() const noexcept { return savedSettings_; }
    /// How often input was repeated. Wine: input may get lost between the X11 window manager and the program.
    int Repeats() const noexcept { return repeats_; }

private:
    enum class Exit { Escape, CloseBox, CancelButton, Enter };
    enum Command { addButton, editButton, deleteButton };

    const RunningProgram& program_;
    int savedSettings_ = 0;
    int repeats_ = 0;

    /// Repeats the action until a new window of this kind is in the foreground, and returns it.
    HWND Open(WindowKind kind, const std::function<void()>& action);
    HWND OpenByButton(Command command, WindowKind kind);
    HWND OpenByMenu(std::initializer_list<int> path, WindowKind kind);
    void Leave(HWND window, Exit exit);
    /// Repeats the action until the window is closed.
    void CloseBy(HWND window, const std::function<void()>& action);
    void AddWithoutADay();
    void AddADayAndDeleteIt();
    void ChooseFirstLine();

    /// Activates the window if another window or the desktop has the focus.
    void BringToFront() const;
    void Keys(std::initializer_list<WORD> keys) const;
    void ClickOn(HWND control) const;
};
