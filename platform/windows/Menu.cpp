#include "platform/windows/Menu.h"

#include "platform/system/RuntimeError.h"
#include "platform/windows/Form.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace {

/// Above the ids of all controls.
constexpr unsigned firstMenuId = 1001;

MenuItem& ItemNamed(const std::vector<MenuItem*>& items, const char* name)
{
    const auto found = std::ranges::find(items, std::string_view(name),
                                         [](const MenuItem* item) { return std::string_view(item->Name()); });
    if (found == items.end()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    return **found;
}

} // namespace

MenuItem::MenuItem(Form& form, const char* name, Kind kind) : form_(form), name_(name), kind_(kind)
{
    form.Register(*this);
}

void MenuItem::SetCaption(const std::wstring& caption)
{
    caption_ = caption;
    if (menu_ == nullptr) {
        return;
    }
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = caption_.data();
    SetMenuItemInfoW(menu_, static_cast<UINT>(position_), TRUE, &info);
    // Drawing the menu bar is slow, so Form::Load draws it once after all captions are set.
    HWND window = form_.Handle();
    if (menu_ == GetMenu(window) && IsWindowVisible(window) != FALSE) {
        DrawMenuBar(window);
    }
}

void MenuItem::SetEnabled(bool enabled)
{
    enabled_ = enabled;
    if (menu_ != nullptr) {
        EnableMenuItem(menu_, static_cast<UINT>(position_),
                       MF_BYPOSITION | (enabled ? static_cast<UINT>(MF_ENABLED) : static_cast<UINT>(MF_GRAYED)));
    }
}

MenuOwner MenuItem::Build(std::span<const MenuRow> rows, const std::vector<MenuItem*>& items)
{
    MenuOwner bar(CreateMenu());
    unsigned id = firstMenuId;
    for (const MenuRow& row : rows) {
        MenuItem& item = ItemNamed(items, row.item);
        item.menu_ = row.parent == nullptr ? bar.get() : ItemNamed(items, row.parent).SubMenu();
        item.position_ = GetMenuItemCount(item.menu_);
        item.id_ = id++;
        item.enabled_ = true;
        AppendMenuW(item.menu_, item.kind_ == Kind::Separator ? MF_SEPARATOR : MF_STRING, item.id_,
                    item.caption_.c_str());
    }
    return bar;
}

HMENU__* MenuItem::SubMenu()
{
    if (HMENU sub = GetSubMenu(menu_, position_)) {
        return sub;
    }
    MenuOwner created(CreatePopupMenu());
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_SUBMENU;
    info.hSubMenu = created.get();
    if (SetMenuItemInfoW(menu_, static_cast<UINT>(position_), TRUE, &info) == FALSE) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    return created.release(); // the menu above it owns it now
}
