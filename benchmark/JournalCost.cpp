// Measures the journal file and the store, without windows.
#include "benchmark/Measure.h"

#include "data/DataInterface.h"
#include "data/DayFields.h"
#include "platform/system/Conversions.h"

#include <oleauto.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

/// The fields of an entry as texts. They are prepared so that only their conversion is measured.
struct FieldTexts {
    std::wstring year;
    std::wstring month;
    std::wstring day;
    std::wstring distance;
    std::string route;
};

std::vector<FieldTexts> FieldsOfJournal()
{
    std::vector<FieldTexts> all;
    for (int i = 0; i < DataInterface::dayCount; ++i) {
        const DayEntry& entry = DataInterface::days[static_cast<std::size_t>(i)];
        const std::wstring line = LineOfDay(entry, ToText(entry.distance));
        all.push_back({Field(line, 1, 4), Field(line, 6, 7), Field(line, 9, 10), Field(line, 12, 17),
                       ToUserCodePage(RouteField(line))});
    }
    return all;
}

SHORT NumberOf(std::wstring& text)
{
    SHORT number = 0;
    VarI2FromStr(text.data(), LOCALE_USER_DEFAULT, 0, &number);
    return number;
}

/// The minimum work of reading: for each entry, the conversion of three integers, a distance and a text.
double ConvertToNumbers(std::vector<FieldTexts>& fields)
{
    std::wstring route(1000, L'\0');
    double sum = 0;
    for (FieldTexts& entry : fields) {
        double distance = 0;
        VarR8FromStr(entry.distance.data(), LOCALE_USER_DEFAULT, 0, &distance);
        const int length = MultiByteToWideChar(CP_ACP, 0, entry.route.data(), static_cast<int>(entry.route.size()),
                                               route.data(), static_cast<int>(route.size()));
        sum += distance + NumberOf(entry.year) + NumberOf(entry.month) + NumberOf(entry.day) + length;
    }
    return sum;
}

UINT LengthOfNumber(SHORT number)
{
    BSTR text = nullptr;
    VarBstrFromI2(number, LOCALE_USER_DEFAULT, 0, &text);
    const UINT length = SysStringLen(text);
    SysFreeString(text);
    return length;
}

/// The minimum work of writing: the same conversions to text.
double ConvertToTexts()
{
    std::string route(1000, '\0');
    double sum = 0;
    for (int i = 0; i < DataInterface::dayCount; ++i) {
        const DayEntry& entry = DataInterface::days[static_cast<std::size_t>(i)];
        BSTR distance = nullptr;
        VarBstrFromR8(entry.distance, LOCALE_USER_DEFAULT, 0, &distance);
        const int length = WideCharToMultiByte(CP_ACP, 0, entry.route.data(), static_cast<int>(entry.route.size()),
                                               route.data(), static_cast<int>(route.size()), nullptr, nullptr);
        sum += LengthOfNumber(entry.year) + LengthOfNumber(entry.month) + LengthOfNumber(entry.day) +
               SysStringLen(distance) + static_cast<UINT>(length);
        SysFreeString(distance);
    }
    return sum;
}

} // namespace

void MeasureJournal(int rounds)
{
    DataInterface::LoadJournal();
    Record("entries", DataInterface::dayCount);
    std::vector<FieldTexts> fields = FieldsOfJournal();
    double kept = 0; // the sum keeps the compiler from removing the conversions
    for (int round = 0; round < rounds; ++round) {
        Measure("load", DataInterface::LoadJournal);
        Measure("bare load", [&] { kept += ConvertToNumbers(fields); });
        Measure("save", DataInterface::SaveJournal);
        Measure("bare save", [&] { kept += ConvertToTexts(); });
    }
    Record("sum of all conversions", kept);
}

void MeasureAdding(int rounds)
{
    DataInterface::LoadJournal();
    std::vector<DayEntry> oldestFirst(DataInterface::days.begin(),
                                      DataInterface::days.begin() + DataInterface::dayCount);
    std::ranges::reverse(oldestFirst);
    // Without a file the journal starts empty, with an array of the initial size.
    DeleteFileW(DataInterface::journalPath.c_str());
    for (int round = 0; round < rounds; ++round) {
        DataInterface::LoadJournal();
        Measure("add all", [&] {
            for (const DayEntry& entry : oldestFirst) {
                DataInterface::AddDay(entry.year, entry.month, entry.day, entry.distance, entry.route);
            }
        });
    }
    Record("entries", DataInterface::dayCount);
}
