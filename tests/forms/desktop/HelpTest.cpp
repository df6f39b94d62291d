// F1 opens the guide at the section of the active window.
#include "tests/forms/desktop/Walk.h"

#include "platform/system/Application.h"
#include "tests/support/RecordingBrowser.h"

#include <gmock/gmock.h>

#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Help : public ProgramUnderTest {
public:
    Help() { DeleteGuides(); }
    ~Help() override { DeleteGuides(); }
    Help(const Help&) = delete;
    Help& operator=(const Help&) = delete;

protected:
    static std::wstring GuideFile(std::int16_t language)
    {
        return ProgramFolder() + (language == 0 ? L"\\guide.html" : L"\\guide.sv.html");
    }
    static void WriteGuides()
    {
        WriteBytes(GuideFile(0), "<p>Guide");
        WriteBytes(GuideFile(100), "<p>Handbok");
    }
    static void StartInFront(std::int16_t language)
    {
        Start({.journal = "2004-09-30     -2 Home\r\n", .language = language});
        BringToFront(Main());
    }

    /// Presses F1 and returns the address that the browser gets, from the name of the file on.
    static std::string Page(const RecordingBrowser& browser)
    {
        const std::size_t before = browser.Shown().size();
        PressKey(VK_F1);
        Await([&] { return browser.Shown().size() > before; }, "the browser");
        const std::string address = browser.Shown().back();
        EXPECT_THAT(address, testing::StartsWith("file:///"));
        return address.substr(address.find_last_of('/') + 1);
    }

    /// Sends the message that Windows sends to the main window for F1 in a menu or message box.
    static void SendHelp(int context)
    {
        HELPINFO help{};
        help.cbSize = sizeof help;
        help.iContextType = context;
        SendMessageW(Main().Handle(), WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    }

private:
    static void DeleteGuides()
    {
        DeleteFileW(GuideFile(0).c_str());
        DeleteFileW(GuideFile(100).c_str());
    }
};

} // namespace

TEST_F(Help, OpensTheGuideInTheLanguageOfTheProgramAtTheSectionOfEachWindow)
{
    const std::map<std::string, std::string> sections{
        {"the add dialog", "add"},
        {"the edit dialog", "edit"},
        {"the print dialog", "print"},
        {"the print's progress", "printing"},
        {"the settings' first page", "settings"},
        {"the employee information", "employee"},
        {"the settings' second page", "settings"},
        {"the About box", "about"},
    };
    WriteGuides();
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        const std::string guide = language == 0 ? "guide.html#" : "guide.sv.html#";
        const RecordingBrowser browser;
        StartInFront(language);
        EXPECT_EQ(Page(browser), guide + "main-window");
        std::size_t windows = 0;
        InEveryDialog(user, [&](Form& form, const char* name) {
            BringToFront(form);
            EXPECT_EQ(Page(browser), guide + sections.at(name));
            EXPECT_TRUE(form.IsLoaded());
            ++windows;
        });
        EXPECT_EQ(windows, sections.size());
        EXPECT_EQ(browser.Shown().size(), sections.size() + 1) << "only the active window opens the guide";
        UnloadInstance<frmMain>();
    }
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Help, OpensTheGuideFromEveryControlOfAWindow)
{
    WriteGuides();
    const RecordingBrowser browser;
    StartInFront(0);
    for (const Control* control :
         std::initializer_list<const Control*>{&Main().TreeView1, &Main().List1, &Main().addButton}) {
        SetFocus(control->Handle());
        EXPECT_EQ(Page(browser), "guide.html#main-window") << control->Name();
    }
    InEveryDialog(user, [&](Form& form, const char* name) {
        for (const Control* control : form.Controls()) {
            SetFocus(control->Handle());
            if (GetFocus() == control->Handle()) {
                Page(browser);
                EXPECT_TRUE(form.IsLoaded()) << name << ": " << control->Name();
            }
        }
    });
}

TEST_F(Help, OpensTheGuideAfterTheMenuIsClosed)
{
    WriteGuides();
    const RecordingBrowser browser;
    StartInFront(0);
    SendHelp(HELPINFO_MENUITEM);
    EXPECT_THAT(browser.Shown(), IsEmpty()) << "the message loop of the menu is still running";
    Await([&] { return browser.Shown().size() == 1; }, "the browser");
}

TEST_F(Help, IgnoresTheHelpMessageOfAMessageBox)
{
    StartInFront(0);
    EnableWindow(Main().Handle(), FALSE);
    SendHelp(HELPINFO_WINDOW);
    EnableWindow(Main().Handle(), TRUE);
    DoEvents();
    EXPECT_THAT(boxes.Texts(), IsEmpty()) << "no message about the missing guide";
}

TEST_F(Help, ShowsAMessageInTheLanguageOfTheProgramIfTheGuideIsMissing)
{
    const RecordingBrowser browser;
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        StartInFront(language);
        PressKey(VK_F1);
        Await([&] { return boxes.Seen().size() > static_cast<std::size_t>(language / 100); }, "the message");
        EXPECT_EQ(boxes.Seen().back().title, L"Odomira");
        EXPECT_EQ(boxes.Seen().back().owner, Main().Handle());
        EXPECT_TRUE(IsOpen());
        UnloadInstance<frmMain>();
    }
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"The guide is missing:\r\n\r\n" + GuideFile(0),
                                           L"Handboken saknas:\r\n\r\n" + GuideFile(100)));
    EXPECT_THAT(browser.Shown(), IsEmpty());
}

TEST_F(Help, ShowsAMessageInTheLanguageOfTheProgramIfNoProgramOpensTheGuide)
{
    WriteGuides();
    const MissingBrowser browser;
    const PageCommand pages(MissingBrowser::command);
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        StartInFront(language);
        PressKey(VK_F1);
        Await([&] { return boxes.Seen().size() > static_cast<std::size_t>(language / 100); }, "the message");
        UnloadInstance<frmMain>();
    }
    EXPECT_THAT(boxes.Texts(),
                ElementsAre(L"The guide could not be opened in a web browser:\r\n\r\n" + GuideFile(0),
                            L"Det gick inte att öppna handboken i en webbläsare:\r\n\r\n" + GuideFile(100)));
}
