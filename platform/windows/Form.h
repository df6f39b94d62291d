#pragma once

#include "platform/windows/Control.h"
#include "platform/windows/Layout.h"
#include "platform/windows/Menu.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Why a form is about to close.
enum class UnloadMode {
    ControlMenu,      ///< the user: close button, Alt+F4
    FormCode,         ///< the program: Unload()
    WindowsIsClosing, ///< the user's session ends
    AnotherProgram,   ///< another program: WM_QUIT
};

/// A window with its controls and event handlers.
///
/// The controls of a form are members, and its handlers are methods named control_event, which Wire() connects.
/// Instance<T>() creates the object. Load() creates the window and calls Form_Load. Show() or ShowModal() shows it.
/// Hide() hides it and keeps its state. Unload() destroys the window and the object, so that the next Instance<T>()
/// creates a new form. A handler may unload its own form: the object exists until the handler returns.
///
/// An exception of a handler is shown to the user, and the program continues (Guarded).
class Form : public std::enable_shared_from_this<Form> {
public:
    Form();
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    /// Creates the window, connects the events and calls Form_Load. Does nothing if the form is loaded. If Form_Load
    /// throws, the form is not loaded and the exception reaches the caller.
    void Load();
    bool IsLoaded() const noexcept { return window_ != nullptr; }

    /// Loads the form if needed, shows it and returns.
    void Show();
    /// Loads the form if needed and shows it over the main window, which is disabled. Returns when the form is hidden
    /// or unloaded. Throws CommandEnded if the main window has been destroyed too.
    void ShowModal();
    /// Loads the form if needed, shows it over another form and returns. The other form is disabled until this one is
    /// hidden or unloaded. For the progress of a long operation that calls DoEvents. Removes earlier input from the
    /// queue, because it was not for this form. Hiding the form removes its input in the same way.
    void ShowOver(const std::shared_ptr<Form>& owner);
    void Hide();
    /// Calls Form_QueryUnload and, unless it cancels, Form_Unload; then destroys the window. A form that is not loaded
    /// only loses its state.
    void Unload(UnloadMode mode = UnloadMode::FormCode);

    std::wstring Caption() const;
    void SetCaption(const std::wstring& caption);

    /// Outer size in twips. Setting it rounds up to whole pixels.
    int Width() const;
    int Height() const;
    void SetWidth(int twips);
    void SetHeight(int twips);
    bool IsMinimised() const;

    /// The DPI that twips are scaled by: that of the monitor, or more if the message font is larger (LayoutDpi).
    int Dpi() const noexcept { return dpi_; }
    const std::vector<Control*>& Controls() const noexcept { return controls_; }
    WindowHandle Handle() const noexcept { return window_.get(); }

    virtual const FormLayout& Layout() const = 0;

    /// `forget` is called when the form is unloaded.
    void WhenForgotten(std::function<void()> forget) { forget_ = std::move(forget); }

    /// The loaded forms in the order in which they were loaded. The main window is the first.
    static std::vector<std::shared_ptr<Form>> OpenForms();
    static bool AnyIsOpen() noexcept;

protected:
    /// Connects the events of the controls to handlers.
    virtual void Wire() = 0;

    virtual void Form_Load() {}
    virtual void Form_QueryUnload(bool& /*cancel*/, UnloadMode /*mode*/) {}
    virtual void Form_Unload() {}
    /// WM_ENDSESSION with FALSE: Form_QueryUnload did not cancel, but the session continues.
    virtual void Form_SessionGoesOn() {}
    virtual void Form_Resize() {}
    virtual void Form_Activate() {}
    virtual void Form_MouseMove() {}
    /// F1 in this form or one of its controls.
    virtual void Form_Help() {}
    /// The region settings have changed: the form updates the numbers and month names that it shows.
    virtual void Form_RegionChanged() {}

    /// Connects an event of a control to a handler of this form. The handler gets `bound` as its first arguments, such
    /// as the index of a control array.
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

    /// The loaded form of this window, or null.
    static std::shared_ptr<Form> Of(WindowHandle window);

    void Register(Control& control) { controls_.push_back(&control); }
    void Register(MenuItem& item) { menuItems_.push_back(&item); }
    void CreateFormWindow();
    void CreateControls();
    void CreateMenu();
    void GiveSizeAndPlace();
    void ApplyScale();
    void Rescale(int monitorDpi);
    void ShowOverOwner();
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
    std::shared_ptr<Form> owner_; ///< the form that is disabled while this one is modal
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

/// The instance of a form, created if there is none. Do not keep the result across a call that may unload the form.
template <class T>
std::shared_ptr<T> Instance()
{
    auto& instance = detail::InstanceOf<T>();
    if (!instance) {
        instance = std::make_shared<T>();
        instance->WhenForgotten([] { detail::InstanceOf<T>().reset(); });
    }
    return instance;
}

/// Unloads the instance of a form, if there is one.
template <class T>
void UnloadInstance()
{
    if (const auto form = detail::InstanceOf<T>()) {
        form->Unload();
    }
}

/// Runs the message loop until no form is loaded.
void RunMessageLoop() noexcept;

/// Handles all messages in the queue and returns. For a long operation that shows its progress, and for tests.
void DoEvents();

/// Handles paint messages and sent messages. Input stays in the queue. Call it before and after a long operation: the
/// windows are then painted, and the focus is where it belongs. Throws CommandEnded if the form is destroyed meanwhile.
///
/// Wine: the X11 window manager moves the focus by a message to the program. Windows moves it itself. Without this call
/// the focus stays with the closed printer dialog, and the keyboard does nothing after printing.
void SettleWindows();
