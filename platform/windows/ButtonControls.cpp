// Push buttons, option buttons, check boxes, frames and rules.

#include "platform/windows/Controls.h"

#include "platform/windows/Form.h"

#include <windows.h>

#include <algorithm>

Control::WindowKind CommandButton::Kind() const
{
    return {L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON};
}

void CommandButton::Command(unsigned notification)
{
    if (notification == BN_CLICKED) {
        Click();
    }
}

Control::WindowKind OptionButton::Kind() const
{
    return {L"BUTTON", WS_TABSTOP | BS_AUTORADIOBUTTON};
}

bool OptionButton::Value() const
{
    return Send(BM_GETCHECK) == BST_CHECKED;
}

std::vector<OptionButton*> OptionButton::Group() const
{
    std::vector<OptionButton*> group;
    for (Control* control : Owner().Controls()) {
        if (auto* option = dynamic_cast<OptionButton*>(control)) {
            group.push_back(option);
        } else if (std::ranges::find(group, this) != group.end()) {
            break;
        } else {
            group.clear();
        }
    }
    return group;
}

void OptionButton::SetValue(bool chosen)
{
    if (!chosen) {
        Send(BM_SETCHECK, BST_UNCHECKED);
        return;
    }
    for (OptionButton* member : Group()) {
        member->Send(BM_SETCHECK, member == this ? BST_CHECKED : BST_UNCHECKED);
    }
    Click();
}

void OptionButton::Command(unsigned notification)
{
    if (notification == BN_CLICKED) {
        Click();
    }
}

Control::WindowKind CheckBox::Kind() const
{
    return {L"BUTTON", WS_TABSTOP | BS_AUTOCHECKBOX};
}

std::int16_t CheckBox::Value() const
{
    return Send(BM_GETCHECK) == BST_CHECKED ? std::int16_t{1} : std::int16_t{0};
}

void CheckBox::SetValue(std::int16_t value)
{
    Send(BM_SETCHECK, value == 1 ? BST_CHECKED : BST_UNCHECKED);
}

void CheckBox::Command(unsigned notification)
{
    if (notification == BN_CLICKED) {
        Click();
    }
}

Control::WindowKind Frame::Kind() const
{
    return {L"BUTTON", BS_GROUPBOX};
}

Control::WindowKind Line::Kind() const
{
    return {L"STATIC", static_cast<std::uint32_t>(shade_ == Shade::Shadow ? SS_GRAYRECT : SS_WHITERECT)};
}
