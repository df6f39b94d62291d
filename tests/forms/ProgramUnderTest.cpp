#include "tests/forms/ProgramUnderTest.h"

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/entry/frmAdd.h"
#include "platform/system/Application.h"
#include "platform/system/Clock.h"
#include "platform/system/RuntimeError.h"
#include "platform/system/TextFile.h"
#include "settings/registerModule.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>

#include <commctrl.h>

namespace {

constexpr int journalSlot = 1;

void ForgetJournalFile()
{
    TextFile::Close(journalSlot);
    SetFileAttributesW(JournalFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(JournalFile().c_str());
}

HTREEITEM NextItem(const TreeView& tree, UINT which, HTREEITEM from)
{
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree.Handle(), TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(from)));
}

std::wstring TextOfItem(const TreeView& tree, HTREEITEM item)
{
    std::array<wchar_t, 80> text{};
    TVITEMW wanted{};
    wanted.mask = TVIF_TEXT;
    wanted.hItem = item;
    wanted.pszText = text.data();
    wanted.cchTextMax = static_cast<int>(text.size());
    SendMessageW(tree.Handle(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&wanted));
    return text.data();
}

HTREEITEM ChildNamed(const TreeView& tree, HTREEITEM parent, const std::wstring& text)
{
    HTREEITEM item = NextItem(tree, parent == nullptr ? TVGN_ROOT : TVGN_CHILD, parent);
    while (item != nullptr && TextOfItem(tree, item) != text) {
        item = NextItem(tree, TVGN_NEXT, item);
    }
    return item;
}

void AppendItems(const TreeView& tree, HTREEITEM first, const std::wstring& indent, std::vector<std::wstring>& lines)
{
    const HTREEITEM marked = NextItem(tree, TVGN_CARET, nullptr);
    for (HTREEITEM item = first; item != nullptr; item = NextItem(tree, TVGN_NEXT, item)) {
        lines.push_back(indent + TextOfItem(tree, item) + (item == marked ? L"*" : L""));
        AppendItems(tree, NextItem(tree, TVGN_CHILD, item), indent + L"  ", lines);
    }
}

} // namespace

ProgramUnderTest::ProgramUnderTest()
{
    ForgetJournalFile();
}

ProgramUnderTest::~ProgramUnderTest()
{
    DataInterface::ClearJournalChanged();
    UnloadInstance<frmMain>();
    Clock::RunAgain();
    ForgetJournalFile();
}

void ProgramUnderTest::Start(const Beginning& beginning)
{
    registerModule::SaveRegistryValue(L"Settings", L"Langdenhet", beginning.unit);
    registerModule::SaveRegistryValue(L"Settings", L"Language", beginning.language);
    WriteBytes(JournalFile(), beginning.journal);
    Module1::LoadSettings();
}

void ProgramUnderTest::StartChanged(const Beginning& beginning)
{
    Start(beginning);
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"18");
        Press(dialog.addButton);
    });
    Press(Main().addButton);
    ASSERT_TRUE(DataInterface::IsJournalChanged());
}

frmMain& ProgramUnderTest::Main()
{
    if (!IsOpen()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    return *Instance<frmMain>();
}

bool ProgramUnderTest::IsOpen()
{
    const auto forms = Form::OpenForms();
    return !forms.empty() && dynamic_cast<const frmMain*>(forms.front().get()) != nullptr;
}

void ProgramUnderTest::CloseMain()
{
    SendMessageW(Main().Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    DoEvents();
}

std::wstring JournalFile()
{
    return DataInterface::JournalPathIn(ProgramFolder());
}

std::string SavedJournal()
{
    return BytesOf(JournalFile());
}

std::string Saved(std::string_view lines)
{
    return "'Source file for Odomira\r\n'Do not change this file unless absolutely sure.\r\n" + std::string(lines);
}

bool IsSwedishMachine()
{
    return PRIMARYLANGID(GetUserDefaultLangID()) == LANG_SWEDISH;
}

std::wstring MonthNamed(int month)
{
    static constexpr std::array english{L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                        L"July",    L"August",   L"September", L"October", L"November", L"December"};
    static constexpr std::array swedish{L"januari", L"februari", L"mars",      L"april",   L"maj",      L"juni",
                                        L"juli",    L"augusti",  L"september", L"oktober", L"november", L"december"};
    return (IsSwedishMachine() ? swedish : english).at(static_cast<std::size_t>(month) - 1);
}

std::wstring Decimal(std::wstring text)
{
    if (IsSwedishMachine()) {
        std::ranges::replace(text, L'.', L',');
    }
    return text;
}

std::vector<std::wstring> Lines(const ListBox& list)
{
    std::vector<std::wstring> lines;
    lines.reserve(static_cast<std::size_t>(list.ListCount()));
    for (int line = 0; line < list.ListCount(); ++line) {
        lines.push_back(list.List(line));
    }
    return lines;
}

std::vector<std::wstring> Entries(const ComboBox& list)
{
    std::vector<std::wstring> entries;
    entries.reserve(static_cast<std::size_t>(list.ListCount()));
    for (int entry = 0; entry < list.ListCount(); ++entry) {
        entries.push_back(list.List(entry));
    }
    return entries;
}

std::wstring Text(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

int ChosenLine(const ListBox& list)
{
    return static_cast<int>(SendMessageW(list.Handle(), LB_GETCURSEL, 0, 0));
}

bool IsEnabled(const Control& control)
{
    return IsWindowEnabled(control.Handle()) != FALSE;
}

std::vector<std::wstring> Tree(const TreeView& tree)
{
    std::vector<std::wstring> lines;
    AppendItems(tree, NextItem(tree, TVGN_ROOT, nullptr), L"", lines);
    return lines;
}

void ClickNode(const TreeView& tree, const std::wstring& year, const std::wstring& month)
{
    HTREEITEM item = ChildNamed(tree, nullptr, year);
    if (!month.empty()) {
        item = ChildNamed(tree, item, month);
    }
    if (item == nullptr) {
        ADD_FAILURE() << "the tree has no such node";
        return;
    }
    SendMessageW(tree.Handle(), TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    RECT area{};
    *reinterpret_cast<HTREEITEM*>(&area) = item;
    SendMessageW(tree.Handle(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area));
    ClickAt(tree.Handle(), {(area.left + area.right) / 2, (area.top + area.bottom) / 2});
}

void ClickLine(const ListBox& list, int line)
{
    ClickAt(list.Handle(), MiddleOfLine(list, line));
}

void DoubleClickLine(const ListBox& list, int line)
{
    DoubleClickAt(list.Handle(), MiddleOfLine(list, line));
}
