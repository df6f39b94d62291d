#pragma once

#include "platform/windows/Controls.h"
#include "platform/windows/Event.h"
#include "platform/windows/Form.h"

#include <cstdint>

/// The progress of a long print, with a Cancel button.
class frmProgress : public Form {
public:
    const FormLayout& Layout() const override;

    /// Shows the current page and the number of days printed so far.
    void ShowPage(std::int16_t page, int daysPrinted);

    Label Label1{*this, "Label1"}; ///< the page; also the accessible name of the bar
    ProgressBar ProgressBar1{*this, "ProgressBar1"};
    CommandButton cancelButton{*this, "cancelButton"};

    /// The user cancels, or the program ends.
    Event<> Cancelled;

protected:
    void Wire() override;
    void Form_Load() override;
    void Form_Help() override;
    void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
    void Form_Unload() override;
    void cancelButton_Click();
};
