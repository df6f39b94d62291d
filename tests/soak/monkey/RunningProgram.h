#pragma once

#include "platform/system/OwnedHandle.h"

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// A failure: the program has crashed, does not respond, or is in a wrong state.
struct Finding : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class WindowKind {
    Main,
    Dialog,  ///< one of the program's own
    Message, ///< a message or question
    Printer, ///< the printer dialog
    Menu,    ///< an open menu, of the menu bar or of an edit box
    Other,   ///< another window of Windows
};

WindowKind KindOf(HWND window);
std::wstring TextOf(HWND window);

/// The visible controls of a window of that class, or of every class; in the order of their creation, as laid out.
std::vector<HWND> ControlsOf(HWND window, const wchar_t* className = nullptr);

/// The built program in another process.
class RunningProgram {
public:
    /// Starts the program and waits for its main window. Throws Finding if it shows a message first or ends.
    explicit RunningProgram(const std::wstring& path);
    /// Terminates the program if it still runs.
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    HANDLE Process() const noexcept { return process_.Get(); }
    HWND MainWindow() const noexcept { return main_; }

    bool HasEnded() const;
    /// Waits for the end of the process. Throws Finding if it did not end normally.
    void ExpectNormalEnd() const;

    /// The visible windows, the topmost first.
    std::vector<HWND> Windows() const;
    /// The window that gets the input; null if there is none.
    HWND Top() const;

    /// Waits until the program has handled this number of inputs. Throws Finding if it does not respond.
    void Settle(int inputs) const;
    /// Waits until the condition is true. Returns false after a time limit or if the program ends.
    bool Becomes(const std::function<bool()>& condition) const;
    /// The main window is on top, and nothing else of the program is open.
    bool IsIdle() const;
    /// A description of its windows, for a finding.
    std::string OnTheScreen() const;

private:
    OwnedHandle process_;
    DWORD thread_ = 0;
    HWND main_ = nullptr;

    void Start(const std::wstring& path);
    bool AnswersOnce() const;
};
