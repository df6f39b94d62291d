#include "forms/print/frmProgress.h"

#include "forms/Guide.h"
#include "forms/LocalText.h"
#include "platform/system/Conversions.h"
#include "settings/TextIds.h"

#include <array>

namespace {

constexpr std::array rows{
    LayoutRow{"Label1", {165, 165, 3870, 270}},
    LayoutRow{"ProgressBar1", {165, 480, 3870, 255}},
    LayoutRow{"cancelButton", {2865, 900, 1170, 345}},
};

constexpr FormLayout layout{
    .kind = FormKind::Dialog,
    .width = 4200,
    .height = 1410,
    .rows = rows,
    .defaultButton = "cancelButton",
    .cancelButton = "cancelButton",
    .firstFocus = "cancelButton",
};

} // namespace

const FormLayout& frmProgress::Layout() const
{
    return layout;
}

void frmProgress::Wire()
{
    On(cancelButton.Click, &frmProgress::cancelButton_Click);
}

void frmProgress::Form_Load()
{
    SetCaption(LocalText(text::print::journalTitle));
    cancelButton.SetCaption(LocalText(text::print::cancel));
}

void frmProgress::Form_Help()
{
    ShowGuide(*this, L"printing");
}

void frmProgress::Form_QueryUnload(bool& cancel, UnloadMode mode)
{
    if (mode == UnloadMode::ControlMenu) {
        // The form stays until the print has ended, so that the other forms stay disabled.
        cancel = true;
        Cancelled();
    }
}

void frmProgress::Form_Unload()
{
    Cancelled();
}

void frmProgress::cancelButton_Click()
{
    Unload(UnloadMode::ControlMenu); // as the close box
}

void frmProgress::ShowPage(std::int16_t page, int daysPrinted)
{
    const std::wstring label = LocalText(text::print::page) + L" " + ToText(page);
    if (label != Label1.Caption()) {
        Label1.SetCaption(label);
    }
    ProgressBar1.SetValue(daysPrinted);
}
