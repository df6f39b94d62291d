#pragma once

#include "platform/Controls.h"
#include "platform/Form.h"

#include <windows.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

// A user in front of the program's forms: everything he does reaches the program through its real windows, as the
// messages that mouse and keyboard make. What he cannot do (press a button that is disabled) fails the running test.

/// Handles messages until the condition holds. Fails the running test, naming what was awaited, when it never does.
bool Await(const std::function<bool()>& condition, const char* what);

/// The active window of the system is this form's: mouse and keys go to it. Brings it to the front.
void BringToFront(const Form& form);

void Press(const CommandButton& button);

/// Picks an entry by its text with the keys of the closed list.
void Pick(const ComboBox& list, const std::wstring& entry);

/// Types the text over what the box holds. A locked box takes none of it.
void Type(const TextBox& box, const std::wstring& text);

/// Presses one of the two arrows; the form hears of it as from the mouse.
void StepUp(const UpDown& arrows);
void StepDown(const UpDown& arrows);

/// The state of a command in the real menu, by the texts that lead to it.
bool IsEnabled(const Form& form, std::initializer_list<const wchar_t*> path);

/// Chooses a menu command by the texts that lead to it.
void ChooseCommand(const Form& form, std::initializer_list<const wchar_t*> path);

/// Presses and releases keys on the real keyboard: they reach whatever has the focus.
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
