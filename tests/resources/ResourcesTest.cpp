#include "platform/system/Application.h"
#include "platform/system/Conversions.h"
#include "platform/system/ModulePath.h"
#include "resources/ResourceIds.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

using testing::HasSubstr;
using testing::Not;

namespace {

std::string_view RawResource(const wchar_t* name, const wchar_t* type)
{
    const HRSRC found = FindResourceW(nullptr, name, type);
    if (found == nullptr) {
        return {};
    }
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, found)));
    return {bytes, SizeofResource(nullptr, found)};
}

unsigned Number16(std::string_view bytes, std::size_t position)
{
    return static_cast<unsigned char>(bytes[position]) + 256u * static_cast<unsigned char>(bytes[position + 1]);
}

constexpr const wchar_t* english = L"040904B0";
constexpr const wchar_t* swedish = L"041D04B0";

std::wstring VersionText(const std::wstring& language, const std::wstring& name)
{
    std::vector<std::byte> record(GetFileVersionInfoSizeW(ModulePath().c_str(), nullptr));
    GetFileVersionInfoW(ModulePath().c_str(), 0, static_cast<DWORD>(record.size()), record.data());
    void* text = nullptr;
    UINT length = 0;
    VerQueryValueW(record.data(), (L"\\StringFileInfo\\" + language + L'\\' + name).c_str(), &text, &length);
    return text != nullptr ? static_cast<const wchar_t*>(text) : L"";
}

} // namespace

TEST(Resources, TheManifestHasTheSettingsOfTheProgram)
{
    const std::string manifest(RawResource(MAKEINTRESOURCEW(1), RT_MANIFEST));
    EXPECT_THAT(manifest, HasSubstr("level=\"asInvoker\" uiAccess=\"false\""));
    EXPECT_THAT(manifest, HasSubstr("Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    EXPECT_THAT(manifest, HasSubstr(">PerMonitorV2, PerMonitor<"));
    EXPECT_THAT(manifest, HasSubstr("{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"));
    EXPECT_THAT(manifest, Not(HasSubstr("activeCodePage"))) << "the journal is in the system's code page";
}

TEST(Resources, ThereIsOneManifestOnly)
{
    int count = 0;
    EnumResourceNamesW(
        nullptr, RT_MANIFEST,
        [](HMODULE, LPCWSTR, LPWSTR, LONG_PTR counter) -> BOOL {
            ++*reinterpret_cast<int*>(counter);
            return TRUE;
        },
        reinterpret_cast<LONG_PTR>(&count));
    EXPECT_EQ(count, 1);
}

TEST(Resources, TheIconHasEverySizeThatWindowsShows)
{
    const std::string_view group = RawResource(MAKEINTRESOURCEW(ODOMIRA_ICON), RT_GROUP_ICON);
    ASSERT_GE(group.size(), 6u);
    std::vector<int> sizes;
    for (std::size_t i = 0; i < Number16(group, 4); ++i) {
        const int width = static_cast<unsigned char>(group[6 + 14 * i]);
        sizes.push_back(width == 0 ? 256 : width);
    }
    EXPECT_THAT(sizes, testing::ElementsAre(16, 24, 32, 48, 64, 128, 256));
    for (const int size : sizes) {
        const auto icon = static_cast<HICON>(
            LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ODOMIRA_ICON), IMAGE_ICON, size, size, 0));
        EXPECT_NE(icon, nullptr) << size;
        DestroyIcon(icon);
    }
}

TEST(Resources, TheHandPointsWithItsFingertip)
{
    const HCURSOR cursor = LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(103));
    ASSERT_NE(cursor, nullptr);
    ICONINFO hand{};
    GetIconInfo(cursor, &hand);
    EXPECT_EQ(hand.fIcon, FALSE);
    EXPECT_EQ(hand.xHotspot, 11u);
    EXPECT_EQ(hand.yHotspot, 2u);
    DeleteObject(hand.hbmMask);
    DeleteObject(hand.hbmColor);
}

TEST(Resources, ThePictureIsAGifOfTheSizeItIsDrawnFor)
{
    const std::string_view picture = RawResource(MAKEINTRESOURCEW(ODOMIRA_ABOUT_PICTURE), L"GIF");
    ASSERT_GE(picture.size(), 10u);
    EXPECT_EQ(picture.substr(0, 4), "GIF8");
    EXPECT_EQ(Number16(picture, 6), 640u);
    EXPECT_EQ(Number16(picture, 8), 256u);
}

TEST(Resources, TheVersionResourceHasTheNameOfTheProgram)
{
    const Version version = VersionNumbers();
    const std::wstring numbers =
        ToText(int{version.major}) + L'.' + ToText(int{version.minor}) + L".0." + ToText(int{version.revision});
    for (const auto* language : {english, swedish}) {
        EXPECT_EQ(VersionText(language, L"ProductName"), ProductName());
        EXPECT_EQ(VersionText(language, L"CompanyName"), L"Brenholt");
        EXPECT_EQ(VersionText(language, L"FileVersion"), numbers);
    }
    EXPECT_EQ(VersionText(english, L"FileDescription"), L"Odomira mileage journal");
    EXPECT_EQ(VersionText(swedish, L"FileDescription"), L"Odomira körjournal");
}

TEST(Resources, TheVersionResourceHasBothLanguages)
{
    std::vector<std::byte> record(GetFileVersionInfoSizeW(ModulePath().c_str(), nullptr));
    GetFileVersionInfoW(ModulePath().c_str(), 0, static_cast<DWORD>(record.size()), record.data());
    void* pairs = nullptr;
    UINT size = 0;
    ASSERT_NE(VerQueryValueW(record.data(), L"\\VarFileInfo\\Translation", &pairs, &size), 0);
    const std::vector<WORD> found(static_cast<const WORD*>(pairs),
                                  static_cast<const WORD*>(pairs) + size / sizeof(WORD));
    EXPECT_THAT(found, testing::ElementsAre(0x0409, 1200, 0x041D, 1200));
}
