#pragma once

#include "platform/Control.h"
#include "platform/Event.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

/// Text on a form. An ampersand is an ampersand.
class Label : public Control {
public:
    enum class Alignment { Left, Right };

    Label(Form& form, const char* name, Alignment alignment = Alignment::Left)
        : Control(form, name), alignment_(alignment)
    {
    }

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }
    /// The cursor shown over the label: an id of the program's own cursor resources. Throws ResourceNotFound.
    void SetMouseIcon(int resource);
    /// Makes the label no wider than its one line of text, so that the mouse is over the label only where it reads one.
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
    HICON__* cursor_ = nullptr; ///< shared with the system, which frees it
    bool fitted_ = false;
};

/// A picture of the program's own resources (raw data of the type "GIF"), drawn over the whole of its place.
class Image : public Control {
public:
    Image(Form& form, const char* name, int resource) : Control(form, name), resource_(resource) {}

protected:
    WindowKind Kind() const override;
    void Scaled() override;

private:
    int resource_;
    BitmapOwner drawn_; ///< in the size of the place
};

/// A box of one line to type in.
class TextBox : public Control {
public:
    using Control::Control;

    std::wstring Text() const { return OwnText(); }
    void SetText(const std::wstring& text) { SetOwnText(text); }
    /// A locked box shows its text and can be copied from, but not typed into.
    void SetLocked(bool locked);

    Event<> GotFocus;
    /// A character was typed; it still has to reach the box.
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

/// One of several choices; those that follow each other in the layout exclude each other.
class OptionButton : public Control {
public:
    using Control::Control;

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }
    bool Value() const;
    /// Choosing one takes the choice from the others of its group, as the user's click does.
    void SetValue(bool chosen);

    Event<> Click;

protected:
    WindowKind Kind() const override;
    bool JoinsGroup() const noexcept override { return true; }
    void Command(unsigned notification) override;

private:
    /// This button and those next to it in the layout.
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

/// A frame with a caption around controls that belong together.
class Frame : public Control {
public:
    using Control::Control;

    std::wstring Caption() const { return OwnText(); }
    void SetCaption(const std::wstring& caption) { SetOwnText(caption); }

protected:
    WindowKind Kind() const override;
};

/// A horizontal rule in a colour of the system's three-dimensional look.
class Line : public Control {
public:
    enum class Shade { Shadow, Highlight };

    Line(Form& form, const char* name, Shade shade) : Control(form, name), shade_(shade) {}

    /// The right end in twips from the left edge of the form; it may lie outside.
    void SetX2(int twips) { SetWidth(twips - Left()); }

protected:
    WindowKind Kind() const override;

private:
    Shade shade_;
};

/// A list of lines. Positions count from 0; -1 means no line.
class ListBox : public Control {
public:
    using Control::Control;

    void AddItem(const std::wstring& line);
    void Clear();
    int ListCount() const;
    int ListIndex() const;
    /// Chooses a line as the user's click does: Click follows. Throws InvalidProcedureCall when there is no such line.
    void SetListIndex(int index);
    /// Throws SubscriptOutOfRange when there is no such line.
    std::wstring List(int index) const;
    /// Where on the form a character of every line begins, in twips from the left, in a font whose characters are all
    /// of one width; the first is character 0.
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
    /// The list can be moved sideways as far as its widest line sticks out of it.
    void FitScrollRange();

    int widest_ = 0;                  ///< pixels of the widest line
    bool doubleClickedBelow_ = false; ///< below the last line, and not reported yet
};

/// A drop-down list to pick one entry from. Positions count from 0; -1 means none.
class ComboBox : public Control {
public:
    using Control::Control;

    void AddItem(const std::wstring& entry);
    void Clear();
    int ListCount() const;
    int ListIndex() const;
    /// Picks an entry as the user does: Click follows, also when the entry was picked before. -1 picks none, without
    /// Click. Throws InvalidProcedureCall when there is no such entry.
    void SetListIndex(int index);
    /// Throws SubscriptOutOfRange when there is no such entry.
    std::wstring List(int index) const;
    /// The picked entry; empty when none is.
    std::wstring Text() const;

    Event<> Click;

protected:
    WindowKind Kind() const override;
    void Command(unsigned notification) override;
    void Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void Scaled() override;

private:
    void Report();

    int reported_ = -1; ///< the entry that the form knows
};

/// Two arrows that step a number. The number never leaves its range.
class UpDown : public Control {
public:
    UpDown(Form& form, const char* name, int minimum, int maximum, int value);

    int Value() const;
    /// Sets the number. Change follows, also when the number is the one that was there. A number outside the range puts
    /// the arrows at the nearer end, without Change: what shows the number keeps what it was given.
    void SetValue(int value);
    /// The box whose up and down keys step the number too.
    void SetBuddy(const TextBox& box);

    Event<> Change;

protected:
    WindowKind Kind() const override;
    void Created() override;
    void Scrolled() override;

private:
    int minimum_;
    int maximum_;
    int initial_;
    int reported_ = 0; ///< the number that the form knows
};

/// A tree of texts with unique keys. Nodes are numbered from 1 in the order they were added.
class TreeView : public Control {
public:
    using Control::Control;

    void Clear();
    /// Returns the new node's number. An empty parent key adds a root. Throws InvalidProcedureCall when the key is
    /// taken or the parent unknown.
    int AddNode(const std::wstring& parentKey, const std::wstring& key, const std::wstring& text);
    int NodeCount() const noexcept { return static_cast<int>(nodes_.size()); }
    /// These throw SubscriptOutOfRange when there is no such node.
    const std::wstring& Text(int node) const { return At(node).text; }
    const std::wstring& Key(int node) const { return At(node).key; }
    /// The number of the node above, 0 for a root.
    int Parent(int node) const { return At(node).parent; }
    /// Marks a node and opens the tree down to it, without NodeClick: that is what the user does.
    void Select(int node);
    /// The marked node, 0 when none is.
    int SelectedNode() const;

    /// The user chose a node by mouse or keys.
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
    /// The node whose line holds a point of the window, given as mouse messages give it; 0 for none.
    int NodeAt(std::intptr_t point) const;

    std::vector<Node> nodes_;
    std::unordered_map<std::wstring, int> numbers_; ///< of the nodes, by their keys
    std::intptr_t pressedAt_ = 0;                   ///< where the mouse button went down last
};

/// A row of tabs with room for pages under it. Tabs count from 1. In the layout it comes after the pages, which then
/// lie above it. Ctrl+Tab and Ctrl+Shift+Tab turn the pages from anywhere on the form.
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

/// What the controls of one tab stand on: they appear and disappear with it and have the ground of the tabs, whatever
/// the user's theme paints there.
class TabPage : public Control {
public:
    using Control::Control;

protected:
    WindowKind Kind() const override;
    void Created() override;
};

/// The bar at the bottom of a resizable window. It places itself.
class StatusBar : public Control {
public:
    using Control::Control;

    /// The form has a new size.
    void FollowForm();

protected:
    WindowKind Kind() const override;
};
