#include "data/DayFields.h"
#include "data/JournalStore.h"

#include "platform/Application.h"
#include "platform/Conversions.h"
#include "platform/FileSystem.h"
#include "platform/MsgBox.h"
#include "platform/RuntimeError.h"
#include "platform/TextFile.h"

namespace {

/// The slot that every reading and writing of the journal shares.
constexpr int journalSlot = 1;

constexpr const wchar_t* lineEnd = L"\r\n";
constexpr const wchar_t* header = L"'Source file for Odomira\r\n"
                                  L"'Do not change this file unless absolutely sure.\r\n";

void CreateEmptyFile(const std::wstring& path)
{
    TextFile::OpenForAppend(journalSlot, path);
    TextFile::Close(journalSlot);
}

/// Tells the user what went wrong while reading and, where the file is missing, creates it.
void ReportReadingError(const RuntimeError& error, const std::wstring& path)
{
    MsgBox(L"error" + error.Description());
    switch (error.Number()) {
    case ErrorNumber::FileNotFound:
        try {
            CreateEmptyFile(path);
        } catch (const RuntimeError&) {
            // The journal then starts empty; a save that cannot reach the file will say so.
        }
        break;
    case ErrorNumber::BadFileMode:
        MsgBox(L"Wrong file mode");
        break;
    case ErrorNumber::PathFileAccessError:
        MsgBox(L"What");
        break;
    default:
        break;
    }
}

/// Runs one step of reading. An error in it is told to the user and answered with false; reading goes on behind it.
template <typename Step>
bool Attempt(const std::wstring& path, Step step)
{
    try {
        step();
        return true;
    } catch (const RuntimeError& error) {
        ReportReadingError(error, path);
        return false;
    }
}

/// Reads the open file to its end. Where the file itself fails, every further step would fail the same way: that is
/// told once and reading ends. A bad line costs only itself.
void ReadOpenFile(const std::wstring& path)
{
    for (;;) {
        bool atEnd = true;
        std::wstring line;
        const bool readable = Attempt(path, [&] {
            atEnd = TextFile::AtEndOfFile(journalSlot);
            if (!atEnd) {
                line = FromUserCodePage(TextFile::ReadLine(journalSlot));
            }
        });
        if (!readable || atEnd) {
            return;
        }
        Attempt(path, [&] { DataInterface::ParseJournalLine(line); });
    }
}

} // namespace

std::wstring DataInterface::JournalPathIn(const std::wstring& folder)
{
    return folder + (folder.ends_with(L'\\') ? L"" : L"\\") + L"datasource.jrn";
}

bool DataInterface::FileExists(const std::wstring& path)
{
    return ::FileExists(path);
}

void DataInterface::LoadJournal()
{
    store.journalChanged = false;
    store.dayCapacity = firstCapacity;
    store.dayCount = 0;
    store.days.assign(firstCapacity + 1, DayEntry{});
    store.journalPath = JournalPathIn(ProgramFolder());
    ReadJournalFile(store.journalPath);
}

void DataInterface::ReadJournalFile(const std::wstring& path)
{
    if (!FileExists(path)) {
        Attempt(path, [&] { CreateEmptyFile(path); });
    }
    if (Attempt(path, [&] { TextFile::OpenForInput(journalSlot, path); })) {
        ReadOpenFile(path);
        TextFile::Close(journalSlot);
    } else {
        // Looking for the end of a file that is not open fails in its turn, once, and reading ends. A slot that an
        // empty save holds is not this call's to close: it stays taken, by a file that can only be written.
        Attempt(path, [] { static_cast<void>(TextFile::AtEndOfFile(journalSlot)); });
    }
}

void DataInterface::ParseJournalLine(const std::wstring& line)
{
    if (line.starts_with(L'\'')) {
        return;
    }
    DayEntry entry;
    entry.year = ToInt16(Field(line, 1, 4));
    entry.month = ToInt16(Field(line, 6, 7));
    entry.day = ToInt16(Field(line, 9, 10));
    entry.distance = ToDouble(Field(line, 12, 17));
    entry.route = RouteField(line);

    if (store.dayCapacity == store.dayCount) {
        GrowStore();
    }
    store.days[static_cast<std::size_t>(store.dayCount)] = std::move(entry);
    ++store.dayCount;
}

void DataInterface::WriteJournalFile(const std::wstring& path)
{
    // The text is complete before the file is cut to nothing: an error in forming it leaves the old file whole.
    std::wstring text = header;
    for (std::size_t i = 0; i < static_cast<std::size_t>(store.dayCount); ++i) {
        const DayEntry& entry = store.days[i];
        text += LineOfDay(entry, ToText(entry.distance)) + lineEnd;
    }
    const std::string bytes = ToUserCodePage(text);

    TextFile::OpenForOutput(journalSlot, path);
    TextFile::Write(journalSlot, bytes);
    if (store.dayCount == 0) {
        // An empty journal keeps its file: it stays open, and its slot taken, until the program ends.
        return;
    }
    TextFile::Close(journalSlot);
}

void DataInterface::SaveJournal()
{
    WriteJournalFile(store.journalPath);
    store.journalChanged = false;
}
