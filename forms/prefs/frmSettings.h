#pragma once

#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"

#include <array>

/// The unit of distances and the language of the program, one page each. OK changes both in memory and in the registry.
/// Distances in the journal are never converted.
class frmSettings : public Form {
public:
    const FormLayout& Layout() const override;

    TabPage Frame1{*this, "Frame1"};
    Label Label1{*this, "Label1"};
    std::array<OptionButton, 2> Option1{{{*this, "Option1(0)"}, {*this, "Option1(1)"}}};
    Label Label2{*this, "Label2"};

    TabPage Frame2{*this, "Frame2"};
    Label Label3{*this, "Label3"};
    std::array<OptionButton, 2> Option2{{{*this, "Option2(0)"}, {*this, "Option2(1)"}}};

    CommandButton addButton{*this, "addButton"};
    CommandButton cancelButton{*this, "cancelButton"};
    TabStrip TabStrip1{*this, "TabStrip1", {L"Enhet", L"Språk"}};

protected:
    void Wire() override;

    void Form_Load() override;
    void Form_Help() override;
    void TabStrip1_Click();
    void addButton_Click();
    void cancelButton_Click();

private:
    void ApplyLanguage();
};
