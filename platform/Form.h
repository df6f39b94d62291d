#pragma once

#include "platform/Control.h"
#include "platform/Layout.h"
#include "platform/Menu.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Why a form is about to close.
enum class UnloadMode {
    ControlMenu,      ///< the user: close box, Alt+F4
    FormCode,         ///< the program: Unload()
    WindowsIsClosing, ///< the user's session ends
};

/// A window with its controls and its behaviour.
///
/// A form is a class whose controls are members and whose handlers are methods named control_event. Wire() joins them,
/// one line each. The life of a form: the first use makes the object (The<T>()), Load() makes its window and runs
/// Form_Load, Show() or ShowModal() puts it on the screen, Hide() takes it off and keeps its state, Unload() ends
/// window and state, so that the next use starts afresh. A handler may unload its own form: the object lives until the
/// handler has returned.
///
/// An error that a handler lets through is shown to the user by the one guard around every message, and the program
/// goes on; it never reaches the system.
class Form : public std::enable_shared_from_this<Form> {
public:
    Form();
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    /// Makes the window, connects the events and runs Form_Load. Does nothing when loaded. When Form_Load fails the
    /// form is not loaded and the error goes to the caller.
    void Load();
    bool IsLoaded() const noexcept { return window_ != nullptr; }

    /// Loads if needed and shows; returns at once.
    void Show();
    /// Loads if needed and shows the form over the main window, which takes no input meanwhile; returns when the form
    /// is hidden or unloaded.
    void ShowModal();
    void Hide();
    /// Asks Form_QueryUnload, runs Form_Unload and ends the window. A form that is not loaded only loses its state.
    void Unload(UnloadMode mode = UnloadMode::FormCode);

    std::wstring Caption() const;
    void SetCaption(const std::wstring& caption);

    /// Outer size in twips. Set, it is at least what was asked for: rounded up to whole pixels.
    int Width() const;
    int Height() const;
    void SetWidth(int twips);
    void SetHeight(int twips);
    bool IsMinimised() const;

    /// Dots per inch that twips are scaled by: those of the monitor that the form is on, more where the user has larger
    /// text.
    int Dpi() const noexcept { return dpi_; }
    const std::vector<Control*>& Controls() const noexcept { return controls_; }
    WindowHandle Handle() const noexcept { return window_.get(); }

    virtual const FormLayout& Layout() const = 0;

    /// Called when the form is unloaded, after which the program-wide instance is a new one.
    void WhenForgotten(std::function<void()> forget) { forget_ = std::move(forget); }

    /// The loaded forms in the order they were loaded; the main window is the first.
    static std::vector<std::shared_ptr<Form>> OpenForms();

protected:
    /// Joins control events to handlers: the one place that says what happens when.
    virtual void Wire() = 0;

    virtual void Form_Load() {}
    virtual void Form_QueryUnload(bool& /*cancel*/, UnloadMode /*mode*/) {}
    virtual void Form_Unload() {}
    virtual void Form_Resize() {}
    virtual void Form_Activate() {}
    virtual void Form_MouseMove() {}

    /// Connects an event of a control to a handler of this form; further arguments are handed to the handler (the index
    /// of a control array's member).
    template <class... EventArguments, class F, class... Parameters, class... Bound>
    void On(Event<EventArguments...>& event, void (F::*handler)(Parameters...), Bound... bound)
    {
        event.Connect([form = static_cast<F*>(this), handler, bound...](EventArguments... arguments) {
            (form->*handler)(bound..., arguments...);
        });
    }

private:
    friend class Control;
    friend class MenuItem;
    friend struct FormProcedure;

    void Register(Control& control) { controls_.push_back(&control); }
    void Register(MenuItem& item) { menuItems_.push_back(&item); }
    void CreateFormWindow();
    void CreateControls();
    void CreateMenu();
    void GiveSizeAndPlace();
    void ApplyScale();
    void Rescale(int monitorDpi);
    void RunModalLoop();
    void EndModal();
    void Destroy();
    void FocusFirst();
    Control* ControlByName(const char* name) const;
    Control* ControlByWindow(WindowHandle window) const;
    void PressButton(const char* name);

    WindowOwner window_;
    FontOwner font_;
    MenuOwner menu_;
    int monitorDpi_ = 96;
    int dpi_ = 96;
    bool loading_ = false;
    bool modal_ = false;
    std::shared_ptr<Form> owner_; ///< the form that takes no input while this one is modal
    WindowHandle focusToReturnTo_ = nullptr;
    std::vector<Control*> controls_;
    std::vector<MenuItem*> menuItems_;
    std::function<void()> forget_;
};

namespace detail {
template <class T>
std::shared_ptr<T>& InstanceOf()
{
    static std::shared_ptr<T> instance;
    return instance;
}
} // namespace detail

/// The program-wide instance of a form, made on first use and again after each unload. Ask for it anew for every call:
/// what was got before an unload is a form of the past.
template <class T>
std::shared_ptr<T> The()
{
    auto& instance = detail::InstanceOf<T>();
    if (!instance) {
        instance = std::make_shared<T>();
        instance->WhenForgotten([] { detail::InstanceOf<T>().reset(); });
    }
    return instance;
}

/// Unloads the program-wide instance, if there is one; never makes one only to unload it.
template <class T>
void UnloadThe()
{
    if (const auto form = detail::InstanceOf<T>()) {
        form->Unload();
    }
}

/// Runs the program's one message loop until no form is loaded any more.
void RunMessageLoop();

/// Handles every message that is waiting and returns; what a caller that drives forms itself needs between two steps.
void DoEvents();
