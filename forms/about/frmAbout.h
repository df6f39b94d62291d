#pragma once

#include "platform/windows/Controls.h"
#include "platform/windows/Form.h"
#include "resources/ResourceIds.h"

/// What the program is, which version, whose, and a link to its home page.
class frmAbout : public Form {
public:
    const FormLayout& Layout() const override;

    Image Image1{*this, "Image1", ODOMIRA_ABOUT_PICTURE};
    Label Label2{*this, "Label2"};
    Label Label4{*this, "Label4"};
    Label MinVersion{*this, "MinVersion"};
    Label lblDescription{*this, "lblDescription"};
    LinkLabel Label3{*this, "Label3"};
    CommandButton cmdOK{*this, "cmdOK"};

protected:
    void Wire() override;

    void Form_Load() override;
    void Form_Activate() override;
    void Form_MouseMove() override;
    void Form_Help() override;
    void Label3_MouseMove();
    void Label3_Click();
    void cmdOK_Click();

private:
    void UnderlineLink(bool underlined);
};
