#pragma once

#include "forms/main/frmMain.h"
#include "tests/support/FormUser.h"
#include "tests/support/MessageBoxWatcher.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Journal and settings at the start of the program.
struct Beginning {
    std::string journal = {}; ///< the lines of the file
    std::wstring unit = L"km";
    std::int16_t language = 0; ///< 0 English, 100 Swedish
};

/// The whole program in this process, with the real registry, the real journal file (in the folder of the test program)
/// and real windows, and a user. Each test starts it again.
class ProgramUnderTest : public testing::Test {
public:
    ProgramUnderTest();
    ~ProgramUnderTest() override;
    ProgramUnderTest(const ProgramUnderTest&) = delete;
    ProgramUnderTest& operator=(const ProgramUnderTest&) = delete;

protected:
    static void Start(const Beginning& beginning = {});

    /// Starts and adds the 18th of the first month, which is not saved.
    void StartChanged(const Beginning& beginning);

    /// The main window; throws if it is not open.
    static frmMain& Main();
    static bool IsOpen();

    /// Closes the main window by its close button.
    static void CloseMain();

    MessageBoxWatcher boxes;
    ModalUser user;
};

/// The journal file and its path.
std::wstring JournalFile();
std::string SavedJournal();

/// A file as the program writes it, with these lines.
std::string Saved(std::string_view lines);

/// The names of the months 1 to 12 in the language of the machine, independent of the program.
std::wstring MonthNamed(int month);
bool IsSwedishMachine();
/// The text with the machine's decimal separator in place of "."
std::wstring Decimal(std::wstring text);

// The texts in the windows.

std::vector<std::wstring> Lines(const ListBox& list);
std::vector<std::wstring> Entries(const ComboBox& list);
std::wstring Text(HWND window);
int ChosenLine(const ListBox& list);
bool IsEnabled(const Control& control);

/// The tree as lines: "2004", "  March", with "*" after the selected node.
std::vector<std::wstring> Tree(const TreeView& tree);

/// Clicks a node of the tree with the mouse, as ClickNode(tree, L"2004", L"March"); without a month the year's.
void ClickNode(const TreeView& tree, const std::wstring& year, const std::wstring& month = L"");

void ClickLine(const ListBox& list, int line);
void DoubleClickLine(const ListBox& list, int line);
