// The two menu commands that open a web page, by whatever the user's system has for that.
#include "tests/forms/ProgramUnderTest.h"

#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::IsEmpty;

namespace {

constexpr const wchar_t* webAddresses = L"Software\\Classes\\https";

/// The program that a system keeps for web addresses writes the address into a file here.
class WebPages : public ProgramUnderTest {
protected:
    void SetUp() override { RegDeleteTreeW(HKEY_LOCAL_MACHINE, webAddresses); }
    void TearDown() override { RegDeleteTreeW(HKEY_LOCAL_MACHINE, webAddresses); }

    void InstallBrowser() const
    {
        Set(L"", L"URL:address");
        SetNamed(L"", L"URL Protocol", L"");
        Set(L"\\shell\\open\\command", L"cmd.exe /c echo %1> " + Opened());
    }

    std::wstring Opened() const { return folder_.File(L"opened.txt"); }

    /// The address that arrived at the browser.
    std::string OpenedAddress() const
    {
        Await([this] { return std::filesystem::exists(Opened()) && !BytesOf(Opened()).empty(); }, "the web page");
        const std::string bytes = BytesOf(Opened());
        return bytes.substr(0, bytes.find_first_of(" \r\n"));
    }

private:
    static void SetNamed(const std::wstring& key, const wchar_t* name, const std::wstring& value)
    {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, (webAddresses + key).c_str(), name, REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }

    static void Set(const std::wstring& key, const std::wstring& value) { SetNamed(key, nullptr, value); }

    TemporaryFolder folder_;
};

} // namespace

TEST_F(WebPages, OpenTheProductsHomePage)
{
    InstallBrowser();
    Start();
    ChooseCommand(Main(), {L"Help", L"On the Web", L"Odomira"});
    EXPECT_EQ(OpenedAddress(), "https://odomira.example.com/");
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(WebPages, OpenTheMakersHomePage)
{
    InstallBrowser();
    Start({.language = 100});
    ChooseCommand(Main(), {L"Hjälp", L"På Internet", L"Andra program av Brenholt"});
    EXPECT_EQ(OpenedAddress(), "https://brenholt.example.com/");
}

TEST_F(WebPages, ShowTheErrorOfTheMissingTextIfNothingOpensThem)
{
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        Start({.journal = "2004-03-15     12 Office\r\n", .language = language});
        if (language == 0) {
            ChooseCommand(Main(), {L"Help", L"On the Web", L"Odomira"});
        } else {
            ChooseCommand(Main(), {L"Hjälp", L"På Internet", L"Odomira"});
        }
        EXPECT_TRUE(IsOpen()) << "the program goes on";
        EXPECT_THAT(Lines(Main().List1), testing::SizeIs(1));
        UnloadInstance<frmMain>();
    }
    EXPECT_THAT(boxes.Texts(), testing::Each(testing::StartsWith(L"Run-time error '326':\r\n\r\n")));
    EXPECT_THAT(boxes.Seen(), testing::SizeIs(2));
}
