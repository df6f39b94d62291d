#include "tests/data/StoreUnderTest.h"

#include "platform/system/Application.h"
#include "platform/system/TextFile.h"

#include <array>
#include <cstdio>

#include <windows.h>

void StoreUnderTest::SetUp()
{
    DeleteFileW(DataInterface::JournalPathIn(ProgramFolder()).c_str());
    DataInterface::LoadJournal();
}

void StoreUnderTest::TearDown()
{
    TextFile::Close(1);
    DeleteFileW(DataInterface::JournalPathIn(ProgramFolder()).c_str());
}

std::vector<DayEntry> Entries()
{
    return {DataInterface::days.begin(), DataInterface::days.begin() + DataInterface::dayCount};
}

std::vector<std::string> Dates()
{
    std::vector<std::string> dates;
    for (const DayEntry& entry : Entries()) {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", entry.year, entry.month, entry.day);
        dates.emplace_back(text.data());
    }
    return dates;
}

void Load(std::initializer_list<std::wstring> lines)
{
    for (const std::wstring& line : lines) {
        DataInterface::ParseJournalLine(line);
    }
}
