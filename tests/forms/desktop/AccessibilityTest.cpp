// What a user hears who does not see the windows: every box, list and choice is announced by a name.
#include "tests/forms/desktop/NameKeeper.h"
#include "tests/forms/desktop/Walk.h"

#include "forms/about/frmAbout.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"

#include <gmock/gmock.h>

#include <array>

#include <oleacc.h>

using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* journal = "2004-12-31  392.2 Depot 4 to site, return\r\n";

class Announcing : public ProgramUnderTest {
protected:
    // Made before the program starts and gone after it has ended.
    NameKeeper keeper;

    void TearDown() override { UnloadThe<frmMain>(); }
};

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

/// The name that the system derives from what is on the form.
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

/// The text of the label that stands right before a control, in the order in which the system looks for it.
std::wstring LabelBefore(HWND window)
{
    HWND before = GetWindow(window, GW_HWNDPREV);
    return before != nullptr && ClassOf(before) == L"Static" ? Text(before) : L"";
}

bool HasNoCaptionOfItsOwn(const Control& control)
{
    return dynamic_cast<const TextBox*>(&control) != nullptr || dynamic_cast<const ComboBox*>(&control) != nullptr ||
           dynamic_cast<const ListBox*>(&control) != nullptr || dynamic_cast<const TreeView*>(&control) != nullptr;
}

bool IsChoice(const Control& control)
{
    return dynamic_cast<const OptionButton*>(&control) != nullptr || dynamic_cast<const CheckBox*>(&control) != nullptr;
}

/// What is announced where the system keeps the names it is given.
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

TEST_F(Announcing, LetsTheSystemFindTheLabelOfEveryTextBox)
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

TEST_F(Announcing, NamesTheTreeAndTheListByWhatTheyShow)
{
    Start({.journal = journal, .unit = L"miles"});
    EXPECT_EQ(keeper.NameOf(Main().TreeView1.Handle()), L"Year, Month");
    EXPECT_EQ(keeper.NameOf(Main().List1.Handle()), L"date, miles, route");
}

TEST_F(Announcing, NamesThemAnewInTheLanguageThatIsChosen)
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
    The<frmInterval>()->ShowModal();
}

TEST_F(Announcing, NamesTheBoxOfTheSocialSecurityNumber)
{
    Start();
    user.In<frmUserinfo>([this](frmUserinfo& form) {
        EXPECT_EQ(keeper.NameOf(form.Text3.Handle()), L"Social security number:");
        form.Unload();
    });
    The<frmUserinfo>()->ShowModal();
}

TEST_F(Announcing, TakesEveryNameBackBeforeItsWindowGoes)
{
    Start({.journal = journal});
    const std::size_t ofTheMainWindow = keeper.Count();
    EXPECT_GT(ofTheMainWindow, 0U);
    InEveryDialog(user, [](Form&, const char*) {});
    EXPECT_EQ(keeper.Count(), ofTheMainWindow);
    CloseMain();
    EXPECT_TRUE(keeper.EveryNameWasTakenBack());
}
