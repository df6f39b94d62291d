#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "tests/forms/FormFixture.h"
#include "tests/support/LayoutFaults.h"

namespace {

/// In each language.
class PrefsLayout : public FormFixture, public testing::WithParamInterface<std::int16_t> {
protected:
    void SetUp() override
    {
        FormFixture::SetUp();
        Module1::languageOffset = GetParam();
    }
};

using Faults = std::vector<std::string>;

} // namespace

TEST_P(PrefsLayout, HasRoomForEverythingInTheSettings)
{
    WhileOpen<frmSettings>([](frmSettings& form) {
        EXPECT_EQ(LayoutFaults(form), Faults{});
        PressKeyWith(VK_CONTROL, VK_TAB);
        EXPECT_TRUE(form.Frame2.Visible());
        EXPECT_EQ(LayoutFaults(form), Faults{});
    });
}

TEST_P(PrefsLayout, HasRoomForEverythingInTheEmployeeInformation)
{
    WhileOpen<frmUserinfo>([](frmUserinfo& form) { EXPECT_EQ(LayoutFaults(form), Faults{}); });
}

INSTANTIATE_TEST_SUITE_P(EachLanguage, PrefsLayout, testing::Values(std::int16_t{0}, std::int16_t{100}),
                         [](const auto& language) { return language.param == 0 ? "English" : "Swedish"; });
