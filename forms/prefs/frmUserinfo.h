#pragma once

#include "platform/Controls.h"
#include "platform/Form.h"

#include <array>

/// Who keeps the journal: company, name and, if wanted, the social security number. The registry alone holds them: they
/// are read from there on opening, written there on OK, and the report reads them from there. Nothing is checked.
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
