#include "forms/about/frmAbout.h"
#include "tests/forms/FormFixture.h"

#include <cstdlib>

namespace {

class AboutPicture : public FormFixture {
protected:
    static bool IsNear(COLORREF seen, COLORREF wanted)
    {
        constexpr int tolerance = 24;
        return std::abs(GetRValue(seen) - GetRValue(wanted)) <= tolerance &&
               std::abs(GetGValue(seen) - GetGValue(wanted)) <= tolerance &&
               std::abs(GetBValue(seen) - GetBValue(wanted)) <= tolerance;
    }

    /// What the screen shows at a place of the picture, in thousandths of its width and height.
    static COLORREF ColorAt(const frmAbout& form, int x, int y)
    {
        RECT area{};
        GetClientRect(form.Image1.Handle(), &area);
        HDC surface = GetDC(form.Image1.Handle());
        const COLORREF color = GetPixel(surface, area.right * x / 1000, area.bottom * y / 1000);
        ReleaseDC(form.Image1.Handle(), surface);
        return color;
    }
};

} // namespace

TEST_F(AboutPicture, FillsTheWidthOfTheBoxAndShowsTheRoad)
{
    WhileOpen<frmAbout>([](frmAbout& form) {
        RECT client{};
        RECT picture{};
        GetClientRect(form.Handle(), &client);
        GetClientRect(form.Image1.Handle(), &picture);
        EXPECT_EQ(picture.right, client.right);
        EXPECT_EQ(picture.bottom, ToPixels(form.Image1.Height(), form.Dpi()));

        EXPECT_PRED2(IsNear, ColorAt(form, 10, 10), RGB(44, 127, 176)) << "the sky";
        EXPECT_PRED2(IsNear, ColorAt(form, 794, 240), RGB(255, 243, 196)) << "the sun";
        EXPECT_PRED2(IsNear, ColorAt(form, 885, 780), RGB(220, 74, 53)) << "the odometer's last drum";
        EXPECT_PRED2(IsNear, ColorAt(form, 370, 780), RGB(23, 33, 43)) << "the frame of the odometer";
    });
}
