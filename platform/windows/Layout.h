#pragma once

#include "platform/windows/Twips.h"

#include <span>

/// The place of a control on a form, in twips. The order of the rows is the tab order, and a label names the control
/// that follows it for assistive technology.
struct LayoutRow {
    const char* control = nullptr;
    TwipsRect place;            ///< on the form, also for a control on a page
    const char* page = nullptr; ///< the tab page of the control, whose row comes first
};

/// A menu item and its parent (nullptr: the menu bar).
struct MenuRow {
    const char* item = nullptr;
    const char* parent = nullptr;
};

/// The keys that a form can give a command to. The values are virtual-key codes.
enum class CommandKey : unsigned { Enter = 0x0D, Space = 0x20, Delete = 0x2E, N = 'N', P = 'P', S = 'S' };

/// One key and its command. The key counts once for each time it is pressed, without other modifiers, and only while
/// both the form and the command are enabled.
struct KeyRow {
    CommandKey key = CommandKey::Enter;
    const char* command = nullptr; ///< the control that it clicks or the menu entry that it chooses
    const char* within = nullptr;  ///< the control that has to have the focus; nullptr: any, and Ctrl is held
};

enum class FormKind {
    Main,   ///< resizable, with a menu bar; width and height are the outer size
    Dialog, ///< fixed size, owned by another form; width and height are the client area
};

/// The layout of a form in twips. Form scales it to the DPI of the monitor.
struct FormLayout {
    FormKind kind;
    int width;
    int height;
    std::span<const LayoutRow> rows;
    std::span<const MenuRow> menu = {};
    std::span<const KeyRow> keys = {};
    const char* defaultButton = nullptr; ///< pressed by Enter
    const char* cancelButton = nullptr;  ///< pressed by Esc
    const char* firstFocus = nullptr;    ///< has the focus when the form opens
};
