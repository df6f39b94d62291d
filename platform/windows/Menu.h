#pragma once

#include "platform/windows/Event.h"
#include "platform/windows/Handles.h"
#include "platform/windows/Layout.h"

#include <span>
#include <string>
#include <vector>

class Form;

/// An item of a form's menu: a command, a submenu, or a separator. Its position comes from the layout.
class MenuItem {
public:
    enum class Kind { Text, Separator };

    MenuItem(Form& form, const char* name, Kind kind = Kind::Text);
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;
    ~MenuItem() = default;

    const char* Name() const noexcept { return name_; }
    /// The text as it is shown, without access keys.
    const std::wstring& Caption() const noexcept { return caption_; }
    void SetCaption(const std::wstring& caption);
    bool Enabled() const noexcept { return enabled_; }
    void SetEnabled(bool enabled);

    Event<> Click;

    /// Creates the menu bar of a form from its rows. Each row names an item of the form and comes after the row of its
    /// parent.
    static MenuOwner Build(std::span<const MenuRow> rows, const std::vector<MenuItem*>& items);

private:
    friend class Form;
    friend struct FormProcedure;

    HMENU__* SubMenu();

    Form& form_;
    const char* name_;
    Kind kind_;
    std::wstring caption_;
    bool enabled_ = true;
    HMENU__* menu_ = nullptr; ///< the menu that contains this item; null if the form is not loaded
    unsigned id_ = 0;
    int position_ = 0; ///< 0-based, within menu_
};
