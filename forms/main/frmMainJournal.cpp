// The tree of months and the list of days of the main window.

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/LocalText.h"
#include "forms/MonthNames.h"
#include "forms/main/DayLine.h"
#include "forms/main/frmMain.h"
#include "platform/system/Conversions.h"
#include "platform/windows/ModalOwner.h"
#include "platform/windows/UnhandledError.h"
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

/// Calls visit for each number before the first one below 1: the arrays of DataInterface end with a 0.
template <class Visit>
void ForEachUpToZero(const NumberArray& numbers, Visit visit)
{
    const std::int16_t last = numbers.UpperBound();
    for (int index = 0; index <= last && numbers[index] >= 1; ++index) {
        visit(numbers[index]);
    }
}

/// The total in whole units, with a space before the last three digits. Halves are rounded up, after rounding to the 15
/// digits of ToText, because a sum of tenths may be slightly too small. A total that is written with an exponent is not
/// rounded: ToDouble does not read the largest ones.
std::wstring TotalText(double total)
{
    const double whole = total < firstNumberWithExponent ? std::round(ToDouble(ToText(total))) : total;
    const std::wstring text = FormatNumber(whole, L"# ##0");
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
    if (!IsLoaded()) {
        throw CommandEnded(); // the session ended while the message was open
    }
}

void frmMain::Form_RegionChanged()
{
    const int node = TreeView1.SelectedNode();
    const int line = List1.ListIndex();
    const bool listed = List1.ListCount() > 0;
    const std::int16_t year = listedYear_;
    const std::int16_t month = listedMonth_;
    RebuildJournalTree();
    if (node > 0 && node <= TreeView1.NodeCount()) {
        TreeView1.Select(node);
    }
    if (!listed) {
        List1.Clear();
        Label1.SetCaption(L"");
        return;
    }
    ShowMonthDays(year, month);
    if (line >= 0 && line < List1.ListCount()) {
        List1.SetListIndex(line);
    }
}

void frmMain::ShowMonthDays(std::int16_t year, std::int16_t month)
{
    listedYear_ = year;
    listedMonth_ = month;
    const PaintedOnce list(List1);
    List1.Clear();
    double total = 0;
    // All day numbers, also those that the month lacks. Kept on purpose: "A day need not exist".
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
    // Kept on purpose: "February is marked where dates begin with the day".
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
    if (TryToDouble(name)) {
        // A year has no days of its own to list. Kept on purpose: "A year leaves the buttons enabled".
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
