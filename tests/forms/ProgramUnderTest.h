#pragma once

#include "forms/main/frmMain.h"
#include "tests/support/FormUser.h"
#include "tests/support/MessageBoxWatcher.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the program finds when it starts.
struct Beginning {
    std::string journal = {}; ///< the lines of the file
    std::wstring unit = L"km";
    std::int16_t language = 0; ///< 0 English, 100 Swedish
};

/// The whole program in this process, from its start-up routine on: with its real registry, its real journal file (in
/// the folder of the test program) and its real windows, and a user in front of them. Each test starts it anew.
class ProgramUnderTest : public testing::Test {
public:
    ProgramUnderTest();
    ~ProgramUnderTest() override;
    ProgramUnderTest(const ProgramUnderTest&) = delete;
    ProgramUnderTest& operator=(const ProgramUnderTest&) = delete;

protected:
    static void Start(const Beginning& beginning = {});

    /// The main window; throws when it is not open.
    static frmMain& Main();
    static bool IsOpen();

    /// Asks the main window to close, as its close box does.
    static void CloseMain();

    MessageBoxWatcher boxes;
    ModalUser user;
};

/// The journal file, byte for byte, and where it is.
std::wstring JournalFile();
std::string SavedJournal();

/// A file as the program writes it, with these lines.
std::string Saved(std::string_view lines);

/// The names that the machine's language has for the months, 1 to 12, told a second time.
std::wstring MonthNamed(int month);
bool IsSwedishMachine();
/// The text with the machine's decimal separator in place of "."
std::wstring Decimal(std::wstring text);

// What the user reads.

std::vector<std::wstring> Lines(const ListBox& list);
std::vector<std::wstring> Entries(const ComboBox& list);
std::wstring Text(HWND window);
int ChosenLine(const ListBox& list);
bool IsEnabled(const Control& control);

/// The tree as lines: "2004", "  March", with "*" behind the marked node.
std::vector<std::wstring> Tree(const TreeView& tree);

/// Clicks a node of the tree with the mouse, as ClickNode(tree, L"2004", L"March"); without a month the year's.
void ClickNode(const TreeView& tree, const std::wstring& year, const std::wstring& month = L"");

void ClickLine(const ListBox& list, int line);
void DoubleClickLine(const ListBox& list, int line);
