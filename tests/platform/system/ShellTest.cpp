// Pages that are files, in the user's browser.
#include "platform/system/Shell.h"
#include "tests/support/FormUser.h"
#include "tests/support/RecordingBrowser.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

/// "C:\folder" as it stands in an address; the folders of these tests have plain names.
std::string InAddress(const std::wstring& path)
{
    return "file:///" + std::filesystem::path(path).generic_string();
}

std::string AwaitPage(const RecordingBrowser& browser)
{
    Await([&] { return !browser.Shown().empty(); }, "the browser");
    return browser.Shown().front();
}

} // namespace

TEST(APage, OpensAtTheElementThatIsAskedFor)
{
    const RecordingBrowser browser;
    const TemporaryFolder folder;
    EXPECT_TRUE(ShellOpenPage(nullptr, folder.File(L"page.html"), L"end"));
    EXPECT_EQ(AwaitPage(browser), InAddress(folder.Path()) + "/page.html#end");
}

TEST(APage, MayHaveAnyNameThatAFileMayHave)
{
    const RecordingBrowser browser;
    const TemporaryFolder folder;
    EXPECT_TRUE(ShellOpenPage(nullptr, folder.File(L"50% \u00E5 #1 \u20AC 'x' & %1.html"), L"end"));
    EXPECT_EQ(AwaitPage(browser),
              InAddress(folder.Path()) + "/50%25%20%C3%A5%20%231%20%E2%82%AC%20%27x%27%20%26%20%251.html#end");
}

TEST(APage, MayLieOnAnotherComputer)
{
    const RecordingBrowser browser;
    EXPECT_TRUE(ShellOpenPage(nullptr, L"\\\\server\\share\\page.html", L"end"));
    EXPECT_EQ(AwaitPage(browser), "file://server/share/page.html#end");
}

TEST(APage, ReachesABrowserWhoseCommandHasNoPlaceForAnAddress)
{
    const TemporaryFolder folder;
    const RecordingBrowser browser(RecordingBrowser::Place::None);
    EXPECT_TRUE(ShellOpenPage(nullptr, folder.File(L"page.html"), L"end"));
    EXPECT_EQ(AwaitPage(browser), InAddress(folder.Path()) + "/page.html#end");
}

TEST(APage, OpensAtItsBeginningWhereTheBrowserOfWebAddressesIsMissing)
{
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"page.html"), "<p>page");
    const RecordingBrowser browser;
    const PageCommand pages(browser.Command());
    const MissingBrowser missing;
    EXPECT_TRUE(ShellOpenPage(nullptr, folder.File(L"page.html"), L"end"));
    EXPECT_EQ(std::filesystem::path(AwaitPage(browser)), std::filesystem::path(folder.File(L"page.html")));
}

TEST(APage, IsNotOpenedWhereNothingOpensIt)
{
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"page.html"), "<p>page");
    const MissingBrowser missing;
    const PageCommand pages(MissingBrowser::command);
    EXPECT_FALSE(ShellOpenPage(nullptr, folder.File(L"page.html"), L"end"));
}
