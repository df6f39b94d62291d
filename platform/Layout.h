#pragma once

#include "platform/Twips.h"

#include <span>

/// One control of a form as it is laid out: which one, and where, in twips. The order of the rows is the order in which
/// the Tab key walks and in which screen readers pair a caption with the box that follows it.
struct LayoutRow {
    const char* control = nullptr;
    TwipsRect place;            ///< on the form, also for a control that stands on a page
    const char* page = nullptr; ///< the tab page that the control stands on; its row comes before
};

/// One menu entry: which one, and under which entry it hangs (nullptr: in the menu bar).
struct MenuRow {
    const char* item = nullptr;
    const char* parent = nullptr;
};

enum class FormKind {
    Main,   ///< resizable, with a menu bar; width and height are the outer size
    Dialog, ///< fixed size, owned by another form; width and height are the client area
};

/// A whole form as data. Everything is in twips; the base class scales it to the DPI of the monitor.
struct FormLayout {
    FormKind kind;
    int width;
    int height;
    std::span<const LayoutRow> rows;
    std::span<const MenuRow> menu = {};
    const char* defaultButton = nullptr; ///< pressed by Enter
    const char* cancelButton = nullptr;  ///< pressed by Esc
    const char* firstFocus = nullptr;    ///< has the focus when the form opens
};
