#include "settings/registerModule.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include <sddl.h>

using registerModule::GetRegistryValue;
using registerModule::ReadRegistryString;
using registerModule::SaveRegistryValue;

namespace {

constexpr const wchar_t* programKey = L"Software\\Velmora\\Tav";

struct StoredValue {
    DWORD type = 0;
    std::wstring text; ///< with its null characters
};

/// A section that does not exist before and after each test.
class RegistryOfSettings : public testing::Test {
protected:
    void SetUp() override { Forget(); }
    void TearDown() override { Forget(); }

    static void Forget() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, programKey); }

    static std::wstring KeyOf(const std::wstring& section) { return std::wstring(programKey) + L'\\' + section; }

    static std::optional<StoredValue> Stored(const std::wstring& section, const std::wstring& name)
    {
        DWORD size = 0;
        StoredValue value;
        if (RegGetValueW(HKEY_LOCAL_MACHINE, KeyOf(section).c_str(), name.c_str(), RRF_RT_ANY, nullptr, nullptr,
                         &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        HKEY key = nullptr;
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, KeyOf(section).c_str(), 0, KEY_READ, &key);
        RegQueryValueExW(key, name.c_str(), nullptr, &value.type, nullptr, &size);
        value.text.resize(size / sizeof(wchar_t));
        RegQueryValueExW(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(value.text.data()), &size);
        RegCloseKey(key);
        return value;
    }

    static void StoreBytes(const std::wstring& section, const std::wstring& name, DWORD type, const std::string& bytes)
    {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, KeyOf(section).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
        RegSetValueExA(key, std::string(name.begin(), name.end()).c_str(), 0, type,
                       reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()));
        RegCloseKey(key);
    }

    static bool KeyExists(const std::wstring& path)
    {
        HKEY key = nullptr;
        const bool exists = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
        RegCloseKey(key);
        return exists;
    }
};

/// Sets permissions by which every user may only read the key of the section.
void LetNobodyWrite(const std::wstring& section)
{
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, (std::wstring(programKey) + L'\\' + section).c_str(), 0, KEY_READ | WRITE_DAC,
                  &key);
    PSECURITY_DESCRIPTOR rights = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;KR;;;WD)", SDDL_REVISION_1, &rights, nullptr);
    EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, rights), ERROR_SUCCESS);
    LocalFree(rights);
    RegCloseKey(key);
}

/// The number of handle values in use. Handles are multiples of four.
int OpenHandles()
{
    int count = 0;
    for (std::uintptr_t value = 4; value < 16384; value += 4) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0 ? 1 : 0;
    }
    return count;
}

} // namespace

TEST_F(RegistryOfSettings, ATextIsStoredAsItIsWithoutATerminator)
{
    SaveRegistryValue(L"Userinfo", L"Company", L"Åkeri & Söner");
    const auto stored = Stored(L"Userinfo", L"Company");
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->type, DWORD{REG_SZ});
    EXPECT_EQ(stored->text, L"Åkeri & Söner");
    EXPECT_EQ(GetRegistryValue(L"Userinfo", L"Company", L"default"), L"Åkeri & Söner");
}

TEST_F(RegistryOfSettings, AnEmptyTextHasSizeZeroAndReadsBackEmpty)
{
    SaveRegistryValue(L"Userinfo", L"Company", L"before");
    SaveRegistryValue(L"Userinfo", L"Company", L"");
    const auto stored = Stored(L"Userinfo", L"Company");
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->type, DWORD{REG_SZ});
    EXPECT_EQ(stored->text, L"");
    EXPECT_EQ(GetRegistryValue(L"Userinfo", L"Company", L"default"), L"");
}

TEST_F(RegistryOfSettings, NumbersAndBooleansAreStoredAsText)
{
    SaveRegistryValue(L"Settings", L"Language", std::int16_t{100});
    SaveRegistryValue(L"Print", L"UseDefaultHeading", true);
    SaveRegistryValue(L"Print", L"Other", false);
    EXPECT_EQ(Stored(L"Settings", L"Language")->text, L"100");
    EXPECT_EQ(Stored(L"Settings", L"Language")->type, DWORD{REG_SZ});
    EXPECT_EQ(Stored(L"Print", L"UseDefaultHeading")->text, L"True");
    EXPECT_EQ(Stored(L"Print", L"Other")->text, L"False");
}

TEST_F(RegistryOfSettings, AMissingValueIsTheDefaultAsText)
{
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Langdenhet", L"km"), L"km");
    SaveRegistryValue(L"Settings", L"Language", L"0");
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Langdenhet", L"km"), L"km");
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Number", std::int16_t{-7}), L"-7");
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Truth", true), L"True");
}

TEST_F(RegistryOfSettings, ReadingCreatesNothing)
{
    GetRegistryValue(L"Settings", L"Language", L"0");
    EXPECT_FALSE(KeyExists(programKey));
}

TEST_F(RegistryOfSettings, NamesAreComparedWithoutCase)
{
    SaveRegistryValue(L"SETTINGS", L"LANGUAGE", L"100");
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Language", L"0"), L"100");
}

TEST_F(RegistryOfSettings, LongValuesReadBackUpTo254Characters)
{
    const std::wstring longest(254, L'x');
    SaveRegistryValue(L"Print", L"Heading", longest);
    EXPECT_EQ(GetRegistryValue(L"Print", L"Heading", L"default"), longest);

    SaveRegistryValue(L"Print", L"Heading", std::wstring(255, L'x'));
    EXPECT_EQ(Stored(L"Print", L"Heading")->text.size(), 255u);
    EXPECT_EQ(GetRegistryValue(L"Print", L"Heading", L"default"), L"") << "255 characters leave no null";

    SaveRegistryValue(L"Print", L"Heading", std::wstring(256, L'x'));
    EXPECT_EQ(Stored(L"Print", L"Heading")->text.size(), 256u);
    EXPECT_EQ(GetRegistryValue(L"Print", L"Heading", L"default"), L"default");
}

TEST_F(RegistryOfSettings, TheTypeOfAValueIsNotExamined)
{
    StoreBytes(L"Settings", L"Language", REG_BINARY, "100");
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Language", L"0"), L"100");
    StoreBytes(L"Settings", L"Language", REG_DWORD, std::string("42\0\0", 4));
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Language", L"0"), L"42");
}

TEST_F(RegistryOfSettings, ANewKeyHasTheClassOne)
{
    SaveRegistryValue(L"Settings", L"Language", L"0");
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, KeyOf(L"Settings").c_str(), 0, KEY_READ, &key);
    std::array<wchar_t, 16> keyClass{};
    auto length = static_cast<DWORD>(keyClass.size());
    RegQueryInfoKeyW(key, keyClass.data(), &length, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr);
    RegCloseKey(key);
    EXPECT_STREQ(keyClass.data(), L"1");
}

TEST_F(RegistryOfSettings, EverySavedValueLeavesItsKeyOpenAndEveryReadValueCloses)
{
    SaveRegistryValue(L"Settings", L"Language", L"0");
    GetRegistryValue(L"Settings", L"Language", L"0");
    const int before = OpenHandles();
    ASSERT_GT(before, 0);
    for (int i = 0; i < 5; ++i) {
        SaveRegistryValue(L"Settings", L"Language", L"0");
    }
    EXPECT_EQ(OpenHandles(), before + 5);
    for (int i = 0; i < 5; ++i) {
        GetRegistryValue(L"Settings", L"Language", L"0");
        GetRegistryValue(L"Settings", L"missing", L"0");
    }
    EXPECT_EQ(OpenHandles(), before + 5);
}

TEST_F(RegistryOfSettings, FailuresAreSilent)
{
    const std::wstring impossibleSection(300, L'k');
    SaveRegistryValue(impossibleSection, L"Language", L"100");
    EXPECT_EQ(GetRegistryValue(impossibleSection, L"Language", L"0"), L"0");

    const std::wstring impossibleName(20000, L'n');
    SaveRegistryValue(L"Settings", impossibleName, L"100");
    EXPECT_EQ(GetRegistryValue(L"Settings", impossibleName, L"0"), L"0");
}

TEST_F(RegistryOfSettings, WithoutTheRightToWriteAllReadsAreDefaultsAndAllWritesAreLost)
{
    SaveRegistryValue(L"Settings", L"Language", L"100");
    LetNobodyWrite(L"Settings");
    EXPECT_EQ(GetRegistryValue(L"Settings", L"Language", L"0"), L"0");
    SaveRegistryValue(L"Settings", L"Language", L"7");
    EXPECT_EQ(Stored(L"Settings", L"Language")->text, L"100");
}

TEST_F(RegistryOfSettings, CharactersOutsideTheCodePageBecomeQuestionMarks)
{
    SaveRegistryValue(L"Userinfo", L"Name", L"\x4e2d and \xd83d\xde97");
    EXPECT_THAT(GetRegistryValue(L"Userinfo", L"Name", L""), testing::StartsWith(L"? and ?"));
}

TEST_F(RegistryOfSettings, ReadRegistryString_StopsAtTheFirstNull)
{
    using std::string_literals::operator""s;
    EXPECT_EQ(ReadRegistryString(L"abc\0def"s), L"abc");
    EXPECT_EQ(ReadRegistryString(L"\0abc"s), L"");
    EXPECT_EQ(ReadRegistryString(L"abc"), L"");
    EXPECT_EQ(ReadRegistryString(L""), L"");
}
