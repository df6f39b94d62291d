#pragma once

#include "platform/AccessibleName.h"
#include "platform/Handles.h"
#include "platform/Twips.h"

#include <cstdint>
#include <string>

class Form;

/// The look of a control's text. An empty face is the platform's own message font in its own size.
struct ControlFont {
    std::wstring face;
    int points = 0; ///< 0: the size of the platform's message font
    bool bold = false;
    bool underline = false;
};

/// System colours that a control may be given; the system's settings (high contrast) decide what they look like.
enum class SystemColor { Default, WindowBackground, ButtonFace, Link };

/// A control on a form: a member of the form, known to the form's layout by its name. Its window exists while the form
/// is loaded. Everything but Name() needs the loaded form and throws InvalidProcedureCall without it.
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
    /// What was asked for with SetVisible, whether or not the form itself is on the screen.
    bool Visible() const noexcept { return visible_; }
    void SetVisible(bool visible);
    void SetFocus() const;

    /// The place on the form in twips, as it was set: sums of positions hold exactly at every DPI.
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
    /// The name that assistive technology announces, for a control that neither has a caption nor a label right before
    /// it. Not to be seen.
    void SetAccessibleName(const std::wstring& name) { accessibleName_.Set(Handle(), name); }

protected:
    friend class Form;
    friend struct FormProcedure;
    friend struct ControlObserver;

    /// How the window of this kind of control is made.
    struct WindowKind {
        const wchar_t* windowClass = nullptr;
        std::uint32_t style = 0;
        std::uint32_t extendedStyle = 0;
    };
    virtual WindowKind Kind() const = 0;
    /// Whether the arrow keys walk from the control before to this one, as between the choices of one question.
    virtual bool JoinsGroup() const noexcept { return false; }
    /// The window has just been made: bring it into its design-time state.
    virtual void Created() {}
    /// The window has its font and size for the current DPI.
    virtual void Scaled() {}
    /// False during a PaintedOnce.
    bool IsPainted() const noexcept { return unpainted_ == 0; }
    /// Painting goes on after a PaintedOnce.
    virtual void PaintedAgain() {}
    /// A WM_COMMAND notification (BN_..., EN_..., LBN_..., ...).
    virtual void Command(unsigned /*notification*/) {}
    /// A WM_NOTIFY notification; the header is an NMHDR.
    virtual void Notify(const void* /*header*/) {}
    /// The position of a spin control changed.
    virtual void Scrolled() {}
    /// A message to the control's own window, seen before the control acts on it as the system makes it act.
    virtual void Message(unsigned /*message*/, std::uintptr_t /*wParam*/, std::intptr_t /*lParam*/) {}
    /// F10, Alt+F4 and Alt with a letter go past the control to its form. Not every system's tree view lets them
    /// through by itself, and the main window opens with the focus in its tree.
    virtual bool LeavesAltKeys() const { return false; }
    /// The user asked for the next or the previous page (Ctrl+Tab, Ctrl+Shift+Tab). False: not this control's matter.
    virtual bool TurnPage(bool /*forward*/) { return false; }
    /// The cursor over the control, or nothing for the usual one.
    virtual HICON__* Cursor() const { return nullptr; }

    std::intptr_t Send(unsigned message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) const;
    std::wstring OwnText() const;
    void SetOwnText(const std::wstring& text) const;
    Form& Owner() const noexcept { return form_; }
    /// Twips to this control's pixels.
    int Pixels(int twips) const;

private:
    friend class PaintedOnce;

    void Create(int id, const TwipsRect& place, Control* page, bool startsGroup);
    void Place();
    void ApplyFont();
    void Forget() noexcept;

    Form& form_;
    const char* name_;
    Control* page_ = nullptr; ///< the control whose window holds this one's; none: the form itself
    WindowHandle window_ = nullptr;
    std::intptr_t systemProcedure_ = 0; ///< makes the window act as the system's controls do
    int unpainted_ = 0;                 ///< how many PaintedOnce there are
    TwipsRect place_;
    bool visible_ = true;
    ControlFont font_;
    FontOwner ownFont_;
    SystemColor foreColor_ = SystemColor::Default;
    SystemColor backColor_ = SystemColor::Default;
    AccessibleName accessibleName_;
};

/// While it lives its control is not painted; then it is painted once, as a whole. A control that is filled line by
/// line would else paint itself, and move its scroll bars, for every line.
class PaintedOnce {
public:
    explicit PaintedOnce(Control& control);
    ~PaintedOnce();
    PaintedOnce(const PaintedOnce&) = delete;
    PaintedOnce& operator=(const PaintedOnce&) = delete;

private:
    Control& control_;
};
