#pragma once

#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"

#include <windows.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

// A user of the forms of the program. Every action goes through the real windows, as messages of mouse and keyboard. An
// action that is not possible (a click on a disabled button) fails the test.

/// Handles messages until the condition is true. Fails the test, with the name of the condition, after a time limit.
bool Await(const std::function<bool()>& condition, const char* what);

/// Activates the window of the form.
void BringToFront(const Form& form);

void Press(const CommandButton& button);

/// Selects an entry by its text with the keys of the closed list.
void Pick(const ComboBox& list, const std::wstring& entry);

/// Replaces the text of the box by typing. A read-only box does not change.
void Type(const TextBox& box, const std::wstring& text);

/// Clicks one of the two arrows.
void StepUp(const UpDown& arrows);
void StepDown(const UpDown& arrows);

/// The state of a command in the real menu, by the texts that lead to it.
bool IsEnabled(const Form& form, std::initializer_list<const wchar_t*> path);

/// Chooses a menu command by the texts that lead to it.
void ChooseCommand(const Form& form, std::initializer_list<const wchar_t*> path);

/// Presses and releases the keys (SendInput) and returns before the program handles the first one.
void SendKeysAhead(std::initializer_list<WORD> keys);
/// Presses and releases keys (SendInput): the control with the focus gets them.
void PressKey(WORD key);
void PressKeyWith(WORD modifier, WORD key);
/// For keys that stay down while others are pressed.
void HoldKey(WORD key);
void ReleaseKey(WORD key);

/// Moves the mouse to a point of the window's client area.
void MoveTo(HWND window, POINT point);
/// The same, and clicks there.
void ClickAt(HWND window, POINT point);
/// Clicks in the middle of a control.
void ClickOn(const Control& control);
void DoubleClickAt(HWND window, POINT point);
/// Presses the mouse on a point of the window's client area until the condition holds.
void HoldMouseAt(HWND window, POINT point, const std::function<bool()>& condition);

/// The middle of a line of a list, scrolled into view.
POINT MiddleOfLine(const ListBox& list, int line);

/// What the user does in modal forms while they are open, in the order given. Each step is done once the program waits
/// for input with that form on top; the form runs its own loop meanwhile, so the steps are planned before it opens. A
/// modal form that is still open when nothing is planned for it fails the running test and is unloaded, and so does a
/// step whose form never opened.
class ModalUser {
public:
    ModalUser();
    ~ModalUser();
    ModalUser(const ModalUser&) = delete;
    ModalUser& operator=(const ModalUser&) = delete;

    template <class T>
    void In(std::function<void(T&)> step)
    {
        steps_.push_back([step = std::move(step)](Form& form) {
            auto* expected = dynamic_cast<T*>(&form);
            if (expected != nullptr) {
                step(*expected);
            }
            return expected != nullptr;
        });
    }

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    void Look();

    std::deque<std::function<bool(Form&)>> steps_; ///< false: another form than the one planned for
    bool busy_ = false;
    UINT_PTR timer_;
};
