#pragma once

#include "platform/OwnedHandle.h"

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// What no user may ever meet: the program has crashed, does not answer, or has lost its way.
struct Finding : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class WindowKind {
    Main,
    Dialog,  ///< one of the program's own
    Message, ///< a message or question
    Printer, ///< the system's choice of a printer
    Menu,    ///< an open menu, of the menu bar or of an edit box
    Other,   ///< something else of the system's
};

WindowKind KindOf(HWND window);
std::wstring TextOf(HWND window);

/// The visible controls of a window of that class, or of every class; in the order of their creation, as laid out.
std::vector<HWND> ControlsOf(HWND window, const wchar_t* className = nullptr);

/// The built program in a process of its own, seen from outside.
class RunningProgram {
public:
    /// Starts the program and waits for its main window. Throws Finding when it shows a message first or ends.
    explicit RunningProgram(const std::wstring& path);
    /// Ends the program by force, if it still runs.
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    HANDLE Process() const noexcept { return process_.Get(); }
    HWND MainWindow() const noexcept { return main_; }

    bool HasEnded() const;
    /// Waits for the end, and throws Finding when it was none that a user asks for.
    void ExpectNormalEnd() const;

    /// The visible windows, the topmost first.
    std::vector<HWND> Windows() const;
    /// The window that takes the input now; null while there is none.
    HWND Top() const;

    /// Waits until the program has dealt with that many inputs more. Throws Finding when it does not answer.
    void Settle(int inputs) const;
    /// Waits until the condition holds; false when it never does or the program ends.
    bool Becomes(const std::function<bool()>& condition) const;
    /// The main window is on top, and nothing else of the program is open.
    bool IsAtRest() const;
    /// Its windows in words, for whoever looks into a finding.
    std::string OnTheScreen() const;

private:
    OwnedHandle process_;
    DWORD thread_ = 0;
    HWND main_ = nullptr;

    void Start(const std::wstring& path);
    bool AnswersOnce() const;
};
