// The main window's tree of months and its list of days.

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/LocalText.h"
#include "forms/entry/MonthNames.h"
#include "forms/main/DayLine.h"
#include "forms/main/frmMain.h"
#include "platform/Conversions.h"
#include "platform/RuntimeError.h"
#include "platform/UnhandledError.h"
#include "settings/TextIds.h"

#include <cmath>
#include <map>

namespace {

std::wstring YearKey(std::int16_t year)
{
    return L"ar" + ToText(year);
}

std::wstring MonthKey(std::int16_t year, std::int16_t month)
{
    return ToText(year) + L" " + ToText(month) + L"node";
}

bool IsNumeric(const std::wstring& text)
{
    try {
        static_cast<void>(ToDouble(text));
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

/// The numbers of an array in order, up to the first below 1 or its end: the arrays of the store end with a spare 0.
template <class Visit>
void ForEachUpToZero(const NumberArray& numbers, Visit visit)
{
    const std::int16_t last = numbers.UpperBound();
    for (int index = 0; index <= last && numbers[index] >= 1; ++index) {
        visit(numbers[index]);
    }
}

/// A total in whole units, halves rounded up, with one blank before its last three digits. Smaller ones have no blank
/// in front of them. What counts as half is the total as it reads: tenths added up may lie a hair below it.
std::wstring TotalText(double total)
{
    const std::wstring text = FormatNumber(std::round(ToDouble(ToText(total))), L"# ##0");
    return text.substr(text.find_first_not_of(L' '));
}

} // namespace

void frmMain::FillJournalTree()
{
    const PaintedOnce list(List1);
    const PaintedOnce tree(TreeView1);
    List1.Clear();
    Label1.SetCaption(L"");
    TreeView1.Clear();
    std::map<std::int16_t, std::wstring> names;
    bool first = true;
    ForEachUpToZero(DataInterface::GetYears(), [&](std::int16_t year) {
        TreeView1.AddNode(L"", YearKey(year), ToText(year));
        ForEachUpToZero(DataInterface::GetMonthsOfYear(year), [&](std::int16_t month) {
            std::wstring& name = names[month];
            if (name.empty()) {
                name = FormatDateText(L"2001-" + ToText(month) + L"-01", L"mmmm");
            }
            TreeView1.AddNode(YearKey(year), MonthKey(year, month), name);
            if (first) {
                constexpr int firstMonthNode = 2; // behind its year
                first = false;
                TreeView1.Select(firstMonthNode);
                ShowMonthDays(year, month);
            }
        });
    });
}

void frmMain::RebuildJournalTree()
{
    Guarded([this] { FillJournalTree(); });
}

void frmMain::ShowMonthDays(std::int16_t year, std::int16_t month)
{
    const PaintedOnce list(List1);
    List1.Clear();
    double total = 0;
    // All day numbers, also those that the month lacks: a 30 February in the journal has to be seen to be corrected.
    for (std::int16_t day = 31; day >= 1; --day) {
        const DayEntry entry = DataInterface::GetDayEntry(year, month, day);
        const bool present = entry.distance != -1.0;
        if (!present && entry.route.empty()) {
            continue;
        }
        List1.AddItem(DayLine({year, month, day, entry.distance, entry.route}));
        if (entry.distance >= 0) {
            total += entry.distance;
        }
    }
    Label1.SetCaption(List1.ListCount() == 0
                          ? L""
                          : LocalText(text::main::total) + L" " + TotalText(total) + L" " + Module1::distanceUnit);
}

void frmMain::SelectMonthNode(std::int16_t year, std::int16_t month)
{
    // Another date text than the one that the nodes are named by: where the day comes first, as in "2/1", it reads as
    // February whatever the month, and only the mark is elsewhere.
    const std::wstring name = FormatDateText(ToText(month) + L"/2/2001", L"mmmm");
    for (int node = 1; node <= TreeView1.NodeCount(); ++node) {
        const int parent = TreeView1.Parent(node);
        if (parent != 0 && TreeView1.Text(node) == name && ToDouble(TreeView1.Text(parent)) == year) {
            TreeView1.Select(node);
        }
    }
}

void frmMain::SelectDayInList(std::int16_t day)
{
    for (int index = 0; index < List1.ListCount(); ++index) {
        if (DayOfDayLine(List1.List(index)) == day) {
            List1.SetListIndex(index);
            return;
        }
    }
}

void frmMain::TreeView1_NodeClick(int node)
{
    const std::wstring name = TreeView1.Text(node);
    if (IsNumeric(name)) {
        // A year has no days of its own to list. The buttons stay as they are.
        List1.Clear();
        Label1.SetCaption(L"");
        return;
    }
    const std::int16_t year = ToInt16(TreeView1.Text(TreeView1.Parent(node)));
    ShowMonthDays(year, MonthNumber(name, L"01 " + name + L" 2001"));
    EnableDayCommands(false);
}

void frmMain::List1_Click()
{
    EnableDayCommands(List1.ListIndex() >= 0);
}

void frmMain::List1_DblClick()
{
    editButton_Click();
}

void frmMain::EnableDayCommands(bool enabled)
{
    editButton.SetEnabled(enabled);
    deleteButton.SetEnabled(enabled);
}
