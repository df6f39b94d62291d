#pragma once

#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"

#include <array>

/// The employee information: company, name and, if wanted, the social security number. Form_Load reads it from the
/// registry, OK writes it, and the report reads it again. The input is not checked.
class frmUserinfo : public Form {
public:
    const FormLayout& Layout() const override;

    std::array<Label, 2> Label1{{{*this, "Label1(0)"}, {*this, "Label1(1)"}}};
    TextBox Text9{*this, "Text9"}; ///< company
    TextBox Text1{*this, "Text1"}; ///< first name
    Label Label2{*this, "Label2"};
    TextBox Text2{*this, "Text2"}; ///< surname
    CheckBox Check1{*this, "Check1"};
    TextBox Text3{*this, "Text3"}; ///< social security number
    CommandButton cmdOK{*this, "cmdOK"};
    CommandButton cmdCancel{*this, "cmdCancel"};

protected:
    void Wire() override;

    void Form_Load() override;
    void Form_Help() override;
    void Text9_GotFocus();
    void Text1_GotFocus();
    void Text2_GotFocus();
    void Check1_Click();
    void Text3_GotFocus();
    void cmdOK_Click();
    void cmdCancel_Click();

private:
    void ApplyLanguage();
    void ApplyNumberBoxState();
};
