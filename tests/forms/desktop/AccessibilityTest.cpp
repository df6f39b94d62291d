// Every box, list and option button has a name for assistive technology.
#include "tests/forms/desktop/NameKeeper.h"
#include "tests/forms/desktop/Walk.h"

#include "forms/about/frmAbout.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "forms/print/frmProgress.h"

#include <gmock/gmock.h>

#include <array>

#include <oleacc.h>

using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* journal = "2004-12-31  392.2 Depot 4 to site, return\r\n";

class Announcing : public ProgramUnderTest {
protected:
    // It must exist before the program starts and until after the program ends.
    NameKeeper keeper;

    void TearDown() override { UnloadInstance<frmMain>(); }
};

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

/// The name that Active Accessibility derives from the controls of the form.
std::wstring DerivedName(HWND window)
{
    void* found = nullptr;
    if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &found))) {
        return L"";
    }
    auto* object = static_cast<IAccessible*>(found);
    VARIANT self{};
    self.vt = VT_I4;
    BSTR name = nullptr;
    object->get_accName(self, &name);
    object->Release();
    std::wstring text = name != nullptr ? name : L"";
    SysFreeString(name);
    return text;
}

/// The text of the label right before a control in the z-order.
std::wstring LabelBefore(HWND window)
{
    HWND before = GetWindow(window, GW_HWNDPREV);
    return before != nullptr && ClassOf(before) == L"Static" ? Text(before) : L"";
}

bool HasNoCaptionOfItsOwn(const Control& control)
{
    return dynamic_cast<const TextBox*>(&control) != nullptr || dynamic_cast<const ComboBox*>(&control) != nullptr ||
           dynamic_cast<const ListBox*>(&control) != nullptr || dynamic_cast<const TreeView*>(&control) != nullptr ||
           dynamic_cast<const ProgressBar*>(&control) != nullptr;
}

bool IsChoice(const Control& control)
{
    return dynamic_cast<const OptionButton*>(&control) != nullptr || dynamic_cast<const CheckBox*>(&control) != nullptr;
}

/// The name that assistive technology announces on Windows.
std::wstring NameOf(const NameKeeper& keeper, const Control& control)
{
    std::wstring given = keeper.NameOf(control.Handle());
    if (!given.empty()) {
        return given;
    }
    return HasNoCaptionOfItsOwn(control) ? LabelBefore(control.Handle()) : Text(control.Handle());
}

void ExpectEveryControlToHaveAName(const NameKeeper& keeper, const Form& form)
{
    for (const Control* control : form.Controls()) {
        if (HasNoCaptionOfItsOwn(*control) || IsChoice(*control)) {
            EXPECT_THAT(NameOf(keeper, *control), Not(IsEmpty())) << control->Name();
        }
    }
}

} // namespace

TEST_F(Announcing, NamesEveryBoxAndChoiceOfEveryForm)
{
    Start({.journal = journal});
    ExpectEveryControlToHaveAName(keeper, Main());
    InEveryDialog(user, [this](Form& form, const char* name) {
        SCOPED_TRACE(name);
        ExpectEveryControlToHaveAName(keeper, form);
    });
}

TEST_F(Announcing, PutsALabelRightBeforeEveryTextBox)
{
    Start({.journal = journal});
    int boxesSeen = 0;
    InEveryDialog(user, [&](Form& form, const char* name) {
        SCOPED_TRACE(name);
        for (const Control* control : form.Controls()) {
            if (dynamic_cast<const TextBox*>(control) != nullptr && keeper.NameOf(control->Handle()).empty()) {
                ++boxesSeen;
                EXPECT_EQ(DerivedName(control->Handle()), LabelBefore(control->Handle())) << control->Name();
            }
        }
    });
    EXPECT_EQ(boxesSeen, 3 + 3 + 2 + 3);
}

TEST_F(Announcing, NamesTheTreeAndTheListByTheirHeadings)
{
    Start({.journal = journal, .unit = L"miles"});
    EXPECT_EQ(keeper.NameOf(Main().TreeView1.Handle()), L"Year, Month");
    EXPECT_EQ(keeper.NameOf(Main().List1.Handle()), L"date, miles, route");
}

TEST_F(Announcing, NamesTheTreeAndTheListInANewLanguage)
{
    Start({.journal = journal});
    user.In<frmSettings>([](frmSettings& form) {
        form.Option2[1].SetValue(true);
        Press(form.addButton);
    });
    ChooseCommand(Main(), {L"Edit", L"Settings..."});
    EXPECT_EQ(keeper.NameOf(Main().TreeView1.Handle()), L"År, Månad");
    EXPECT_EQ(keeper.NameOf(Main().List1.Handle()), L"Datum, km, Färdväg");
}

TEST_F(Announcing, NamesTheChoicesOfTheHeadingByTheHeadings)
{
    Start();
    user.In<frmInterval>([this](frmInterval& form) {
        EXPECT_EQ(keeper.NameOf(form.Option1[0].Handle()), form.Label2.Caption());
        EXPECT_EQ(keeper.NameOf(form.Option1[1].Handle()), L"Heading");
        EXPECT_EQ(keeper.NameOf(form.Text2.Handle()), L"Heading");
        EXPECT_EQ(form.Option1[0].Caption(), L"");
        const std::wstring before = form.Label2.Caption();
        StepDown(form.UpDown1[0]);
        EXPECT_NE(form.Label2.Caption(), before);
        EXPECT_EQ(keeper.NameOf(form.Option1[0].Handle()), form.Label2.Caption());
        form.Unload();
    });
    Instance<frmInterval>()->ShowModal();
}

TEST_F(Announcing, NamesTheProgressBarByTheLabelOfThePage)
{
    Start();
    user.In<frmProgress>([](frmProgress& form) {
        for (const std::int16_t page : {std::int16_t{1}, std::int16_t{2}}) {
            form.ShowPage(page, page);
            EXPECT_EQ(DerivedName(form.Label1.Handle()), L"Page " + std::to_wstring(page));
            EXPECT_EQ(LabelBefore(form.ProgressBar1.Handle()), L"Page " + std::to_wstring(page));
        }
        form.Unload();
    });
    Instance<frmProgress>()->ShowModal();
}

TEST_F(Announcing, NamesTheBoxOfTheSocialSecurityNumber)
{
    Start();
    user.In<frmUserinfo>([this](frmUserinfo& form) {
        EXPECT_EQ(keeper.NameOf(form.Text3.Handle()), L"Social security number:");
        form.Unload();
    });
    Instance<frmUserinfo>()->ShowModal();
}

TEST_F(Announcing, RemovesEveryNameBeforeItsWindowIsDestroyed)
{
    Start({.journal = journal});
    const std::size_t ofTheMainWindow = keeper.Count();
    EXPECT_GT(ofTheMainWindow, 0U);
    InEveryDialog(user, [](Form&, const char*) {});
    EXPECT_EQ(keeper.Count(), ofTheMainWindow);
    CloseMain();
    EXPECT_TRUE(keeper.EveryNameWasTakenBack());
}
