#pragma once

#include "platform/Event.h"
#include "platform/Handles.h"
#include "platform/Layout.h"

#include <span>
#include <string>
#include <vector>

class Form;

/// An entry of a form's menu: a command, the title of a sub menu, or a separator. Where it hangs is the layout's
/// matter.
class MenuItem {
public:
    enum class Kind { Text, Separator };

    MenuItem(Form& form, const char* name, Kind kind = Kind::Text);
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;
    ~MenuItem() = default;

    const char* Name() const noexcept { return name_; }
    /// The text exactly as shown: no access keys are marked in it.
    const std::wstring& Caption() const noexcept { return caption_; }
    void SetCaption(const std::wstring& caption);
    bool Enabled() const noexcept { return enabled_; }
    void SetEnabled(bool enabled);

    /// The user chose the command.
    Event<> Click;

    /// Builds a form's menu bar from its rows and ties the items to it. Every row names an item of the form and comes
    /// after the row of its parent.
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
    HMENU__* menu_ = nullptr; ///< the menu that this entry stands in, while the form is loaded
    unsigned id_ = 0;
    int position_ = 0; ///< 0-based, within menu_
};
