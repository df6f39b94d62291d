#pragma once

#include "platform/windows/Control.h"
#include "platform/windows/Event.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

/// Text on a form. An ampersand is shown as it is (SS_NOPREFIX).
class Label : public Control {
public:
    enum class Alignment { Left, Right };

    Label(Form& form, const char* name, Alignment alignment = Alignment::Left)
        : Control(form, name), alignment_(alignment)
    {
    }

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }
    /// The cursor over the label: the id of a cursor resource. Throws ResourceNotFound.
    void SetMouseIcon(int resource);
    /// Makes the label as wide as its line of text, so that the mouse is over the label only where there is text.
    void FitToText();

    Event<> Click;
    Event<> MouseMove;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void Scaled() override;
    HICON__* Cursor() const override { return cursor_; }

private:
    Alignment alignment_;
    HICON__* cursor_ = nullptr; ///< LR_SHARED: Windows frees it
    bool fitted_ = false;
};

/// A label in the tab order, with a focus rectangle. The layout has the keys that click it.
class LinkLabel : public Label {
public:
    using Label::Label;

protected:
    WindowKind Kind() const override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void Painted() override;
};

/// A picture from a resource of the type "GIF", stretched to the place of the control.
class Image : public Control {
public:
    Image(Form& form, const char* name, int resource) : Control(form, name), resource_(resource) {}

protected:
    WindowKind Kind() const override;
    void Scaled() override;

private:
    int resource_;
    BitmapOwner drawn_; ///< in the size of the control
};

/// A single-line edit control.
class TextBox : public Control {
public:
    using Control::Control;

    std::wstring Text() const { return OwnText(); }
    void SetText(const std::wstring& text) { SetOwnText(text); }
    /// A locked box is read-only (EM_SETREADONLY).
    void SetLocked(bool locked);

    Event<> GotFocus;
    /// Raised at WM_CHAR, before the character is in the text.
    Event<> KeyPress;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
};

/// A push button.
class CommandButton : public Control {
public:
    using Control::Control;

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }

    Event<> Click;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
};

/// A radio button. Option buttons that follow each other in the layout are one group.
class OptionButton : public Control {
public:
    using Control::Control;

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }
    bool Value() const;
    /// True clears the other buttons of the group and raises Click, as a click of the user does.
    void SetValue(bool chosen);

    Event<> Click;

protected:
    WindowKind Kind() const override;
    bool JoinsGroup() const noexcept override { return true; }
    void Command(unsigned notification) override;

private:
    std::vector<OptionButton*> Group() const;
};

class CheckBox : public Control {
public:
    using Control::Control;

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }
    /// 1 checked, 0 not checked.
    std::int16_t Value() const;
    /// Any other value than 1 leaves the box unchecked.
    void SetValue(std::int16_t value);

    Event<> Click;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
};

/// A group box.
class Frame : public Control {
public:
    using Control::Control;

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }

protected:
    WindowKind Kind() const override;
};

/// A horizontal line, dark or light.
class Line : public Control {
public:
    enum class Shade { Shadow, Highlight };

    Line(Form& form, const char* name, Shade shade) : Control(form, name), shade_(shade) {}

    /// The right end in twips from the left edge of the form; it may be outside the form.
    void SetX2(int twips) { SetWidth(twips - Left()); }

protected:
    WindowKind Kind() const override;

private:
    Shade shade_;
};

/// A list box. The index of a line counts from 0; -1 is no line.
class ListBox : public Control {
public:
    using Control::Control;

    void AddItem(const std::wstring& line);
    void Clear();
    int ListCount() const;
    int ListIndex() const;
    /// Selects a line and raises Click. Throws InvalidProcedureCall if the line does not exist.
    void SetListIndex(int index);
    /// Throws SubscriptOutOfRange when there is no such line.
    std::wstring List(int index) const;
    /// The left edge of a character, in twips from the left edge of the form, for a fixed-width font. The first
    /// character is 0.
    int LeftOfCharacter(int position) const;

    Event<> Click;
    Event<> DblClick;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void Scaled() override;
    void PaintedAgain() override;

private:
    int WidthOf(const std::wstring& line) const; ///< pixels
    /// Sets the horizontal scroll range to the widest line.
    void FitScrollRange();

    int widest_ = 0;                  ///< pixels of the widest line
    bool doubleClickedBelow_ = false; ///< below the last line; DblClick not raised yet
};

/// A drop-down list. The index of an entry counts from 0; -1 is no entry.
class ComboBox : public Control {
public:
    using Control::Control;

    void AddItem(const std::wstring& entry);
    void Clear();
    int ListCount() const;
    int ListIndex() const;
    /// Selects an entry and raises Click, also if the entry was selected before. -1 clears the selection and raises
    /// nothing. Throws InvalidProcedureCall if the entry does not exist.
    void SetListIndex(int index);
    /// Throws SubscriptOutOfRange when there is no such entry.
    std::wstring List(int index) const;
    /// Replaces the text of an entry. Keeps the selection and raises no Click.
    void SetList(int index, const std::wstring& entry);
    /// The text of the selected entry; empty if none is selected.
    std::wstring Text() const;

    Event<> Click;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void Scaled() override;

private:
    void Report();

    int reported_ = -1; ///< the entry at the last Click
};

/// An up-down control. Its position is always within the range.
class UpDown : public Control {
public:
    UpDown(Form& form, const char* name, int minimum, int maximum, int value);

    int Value() const;
    /// Sets the position and raises Change, also if the position is the same. A value outside the range sets the
    /// nearest position and raises nothing.
    void SetValue(int value);
    /// The box whose Up and Down keys change the position too.
    void SetBuddy(const TextBox& box);

    Event<> Change;

protected:
    WindowKind Kind() const override;
    void Created() override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void Scrolled() override;

private:
    int minimum_;
    int maximum_;
    int initial_;
    int reported_ = 0; ///< the position at the last Change
};

/// A tree view. Each node has a unique key. Nodes are numbered from 1 in the order in which they were added.
class TreeView : public Control {
public:
    using Control::Control;

    void Clear();
    /// Returns the number of the new node. An empty parent key adds a root. Throws InvalidProcedureCall if the key is
    /// in use or the parent does not exist.
    int AddNode(const std::wstring& parentKey, const std::wstring& key, const std::wstring& text);
    int NodeCount() const noexcept { return static_cast<int>(nodes_.size()); }
    /// These throw SubscriptOutOfRange if the node does not exist.
    const std::wstring& Text(int node) const { return At(node).text; }
    const std::wstring& Key(int node) const { return At(node).key; }
    /// The number of the parent, 0 for a root.
    int Parent(int node) const { return At(node).parent; }
    /// Selects a node and expands the tree down to it. Raises no NodeClick.
    void Select(int node);
    /// The selected node, 0 if there is none.
    int SelectedNode() const;

    /// The user selected a node by mouse or keyboard.
    Event<int> NodeClick;

protected:
    WindowKind Kind() const override;
    void PaintedAgain() override;
    void Notify(const void* header) override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    bool LeavesAltKeys() const override { return true; }

private:
    struct Node {
        std::wstring key;
        std::wstring text;
        int parent = 0;
        void* item = nullptr;
    };
    const Node& At(int node) const;
    int NumberOf(const void* item) const;
    /// The node at a point, which is the lParam of a mouse message; 0 for none.
    int NodeAt(std::intptr_t point) const;

    std::vector<Node> nodes_;
    std::unordered_map<std::wstring, int> numbers_; ///< by key
    std::intptr_t pressedAt_ = 0;                   ///< lParam of the last WM_LBUTTONDOWN
};

/// A tab control. Tabs count from 1. In the layout it comes after its pages, so that they are above it in the z-order.
/// Ctrl+Tab and Ctrl+Shift+Tab change the page, wherever the focus is on the form.
class TabStrip : public Control {
public:
    TabStrip(Form& form, const char* name, std::vector<std::wstring> captions)
        : Control(form, name), design_(std::move(captions))
    {
    }

    std::wstring TabCaption(int tab) const;
    void SetTabCaption(int tab, const std::wstring& caption);
    int SelectedTab() const;

    Event<> Click;

protected:
    WindowKind Kind() const override;
    void Created() override;
    void Notify(const void* header) override;
    bool TurnPage(bool forward) override;

private:
    std::vector<std::wstring> design_;
};

/// The parent of the controls of one tab, with the background that the theme gives to tabs.
class TabPage : public Control {
public:
    using Control::Control;

protected:
    WindowKind Kind() const override;
    void Created() override;
};

/// A progress bar.
class ProgressBar : public Control {
public:
    using Control::Control;

    /// The upper end of the range, which begins at 0.
    void SetMaximum(int maximum);
    int Maximum() const;
    void SetValue(int done);
    int Value() const;

protected:
    WindowKind Kind() const override;
};

/// The status bar, which places itself at the bottom of the form.
class StatusBar : public Control {
public:
    using Control::Control;

    /// Call it when the size of the form has changed.
    void FollowForm();

protected:
    WindowKind Kind() const override;
};
