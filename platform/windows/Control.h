#pragma once

#include "platform/windows/AccessibleName.h"
#include "platform/windows/Handles.h"
#include "platform/windows/Twips.h"

#include <cstdint>
#include <string>

class Form;

/// The font of a control. An empty face is the message font of Windows.
struct ControlFont {
    std::wstring face;
    int points = 0; ///< 0: the size of the message font
    bool bold = false;
    bool underline = false;
};

/// System colours for a control. They follow the settings of the user, such as high contrast.
enum class SystemColor { Default, WindowBackground, ButtonFace, Link };

/// A control on a form. It is a member of the form, and the layout of the form refers to it by its name. Its window
/// exists while the form is loaded; the functions that need the window throw InvalidProcedureCall without it.
class Control {
public:
    Control(Form& form, const char* name);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const char* Name() const noexcept { return name_; }
    WindowHandle Handle() const;

    bool Enabled() const;
    void SetEnabled(bool enabled);
    void SetVisible(bool visible) const;
    void SetFocus() const;

    /// The place on the form in twips, exactly as it was set, at every DPI.
    int Left() const noexcept { return place_.left; }
    int Top() const noexcept { return place_.top; }
    int Width() const noexcept { return place_.width; }
    int Height() const noexcept { return place_.height; }
    void Move(const TwipsRect& place);
    void SetTop(int top) { Move({place_.left, top, place_.width, place_.height}); }
    void SetWidth(int width) { Move({place_.left, place_.top, width, place_.height}); }
    void SetHeight(int height) { Move({place_.left, place_.top, place_.width, height}); }

    const ControlFont& Font() const noexcept { return font_; }
    void SetFont(const ControlFont& font);
    void SetForeColor(SystemColor color);
    void SetBackColor(SystemColor color);
    /// The name that assistive technology announces, for a control with neither a caption nor a label right before it.
    void SetAccessibleName(const std::wstring& name) { accessibleName_.Set(Handle(), name); }

protected:
    friend class Form;
    friend struct FormProcedure;
    friend struct ControlObserver;

    /// The window class and the styles of this kind of control.
    struct WindowKind {
        const wchar_t* windowClass = nullptr;
        std::uint32_t style = 0;
        std::uint32_t extendedStyle = 0;
    };
    virtual WindowKind Kind() const = 0;
    /// True if the control is in one WS_GROUP with the control before it, if that is of this kind too.
    virtual bool JoinsGroup() const noexcept { return false; }
    /// Called after the window has been created. Sets its initial state.
    virtual void Created() {}
    /// Called after the window has been given its font and size for the current DPI.
    virtual void Scaled() {}
    /// False during a PaintedOnce.
    bool IsPainted() const noexcept { return unpainted_ == 0; }
    /// Called at the end of a PaintedOnce.
    virtual void PaintedAgain() {}
    /// A WM_COMMAND notification (BN_..., EN_..., LBN_..., ...).
    virtual void Command(unsigned /*notification*/) {}
    /// A WM_NOTIFY notification; the header is an NMHDR.
    virtual void Notify(const void* /*header*/) {}
    /// The position of a spin control changed.
    virtual void Scrolled() {}
    /// A message to the window of the control, before the procedure of its window class gets it.
    virtual void Message(unsigned /*message*/, std::uintptr_t /*wParam*/, std::intptr_t /*lParam*/) {}
    /// Called after WM_PAINT.
    virtual void Painted() {}
    /// True: WM_SYSKEYDOWN to WM_SYSCHAR go to DefWindowProc and not to the control.
    ///
    /// Wine: a tree view does not pass them to DefWindowProc. On Windows it does. Without this, F10, Alt+F4 and Alt
    /// with a letter do nothing while the focus is in the tree, where it is when the main window opens.
    virtual bool LeavesAltKeys() const { return false; }
    /// The user pressed Ctrl+Tab or Ctrl+Shift+Tab. Returns false if the control has no pages.
    virtual bool TurnPage(bool /*forward*/) { return false; }
    /// The cursor over the control, or null for the default one.
    virtual HICON__* Cursor() const { return nullptr; }

    std::intptr_t Send(unsigned message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) const;
    std::wstring OwnText() const;
    void SetOwnText(const std::wstring& text) const;
    Form& Owner() const noexcept { return form_; }
    /// Converts twips to pixels at the DPI of the form.
    int Pixels(int twips) const;

private:
    friend class PaintedOnce;

    void Create(int id, const TwipsRect& place, Control* page, bool startsGroup);
    void Place();
    void ApplyFont();
    void Forget() noexcept;

    Form& form_;
    const char* name_;
    Control* page_ = nullptr; ///< the parent of the window; null for the form itself
    WindowHandle window_ = nullptr;
    std::intptr_t systemProcedure_ = 0; ///< the procedure of the window class
    int unpainted_ = 0;                 ///< number of PaintedOnce objects
    TwipsRect place_;
    ControlFont font_;
    FontOwner ownFont_;
    SystemColor foreColor_ = SystemColor::Default;
    SystemColor backColor_ = SystemColor::Default;
    AccessibleName accessibleName_;
};

/// Turns WM_SETREDRAW off during its lifetime; then the control is painted once. Without it, a list paints itself and
/// moves its scroll bars for every line that is added.
class PaintedOnce {
public:
    explicit PaintedOnce(Control& control);
    ~PaintedOnce();
    PaintedOnce(const PaintedOnce&) = delete;
    PaintedOnce& operator=(const PaintedOnce&) = delete;

private:
    Control& control_;
};
