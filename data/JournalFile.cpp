#include "data/DayFields.h"
#include "data/JournalStore.h"

#include "platform/system/Application.h"
#include "platform/system/Conversions.h"
#include "platform/system/FileSystem.h"
#include "platform/system/RuntimeError.h"
#include "platform/system/TextFile.h"
#include "platform/windows/MsgBox.h"

#include <utility>

namespace {

/// The file slot of the journal, for reading and writing.
constexpr int journalSlot = 1;

constexpr const wchar_t* lineEnd = L"\r\n";
constexpr const wchar_t* header = L"'Source file for Odomira\r\n"
                                  L"'Do not change this file unless absolutely sure.\r\n";

void CreateEmptyFile(const std::wstring& path)
{
    TextFile::OpenForAppend(journalSlot, path);
    TextFile::Close(journalSlot);
}

/// Closes the journal file at the end of the block, also after an exception.
class ClosedAtEnd {
public:
    ClosedAtEnd() = default;
    ~ClosedAtEnd() { TextFile::Close(journalSlot); }
    ClosedAtEnd(const ClosedAtEnd&) = delete;
    ClosedAtEnd& operator=(const ClosedAtEnd&) = delete;
};

/// Shows an error that occurred while reading, and creates the file if it does not exist.
/// Kept on purpose: "Messages of the journal are in English".
void ReportReadingError(const RuntimeError& error, const std::wstring& path)
{
    MsgBox(std::wstring(L"error").append(error.Description()));
    switch (error.Number()) {
    case ErrorNumber::FileNotFound:
        try {
            CreateEmptyFile(path);
        } catch (const RuntimeError&) {
            // The journal starts empty. A save shows the error.
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

/// Runs one step of reading. Shows its exception and returns false.
template <typename Step>
bool Attempt(const std::wstring& path, Step step)
{
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        ReportReadingError(AsRuntimeError(error), path);
        return false;
    }
}

/// Reads the open file to its end. An error of the file is shown once and ends the reading; a line that cannot be read
/// is skipped.
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
    return PathIn(folder, L"datasource.jrn");
}

bool DataInterface::FileExists(const std::wstring& path)
{
    return ::FileExists(path);
}

void DataInterface::LoadJournal()
{
    JournalStore empty;
    empty.journalPath = JournalPathIn(ProgramFolder());
    JournalStore former = std::exchange(store, std::move(empty));
    try {
        ReadJournalFile(store.journalPath);
    } catch (...) {
        // A save must not replace the file by the part of it that was read.
        store = std::move(former);
        throw;
    }
}

void DataInterface::ReadJournalFile(const std::wstring& path)
{
    if (!FileExists(path)) {
        Attempt(path, [&] { CreateEmptyFile(path); });
    }
    if (Attempt(path, [&] { TextFile::OpenForInput(journalSlot, path); })) {
        const ClosedAtEnd closed;
        ReadOpenFile(path);
    } else {
        // The check for the end of the file fails too and shows a second message. The slot may have the file of an
        // empty save. Kept on purpose: "An empty save keeps the file open".
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
    // The text is complete before the file is truncated: if forming it throws, the file stays as it was.
    std::wstring text = header;
    for (std::size_t i = 0; i < static_cast<std::size_t>(store.dayCount); ++i) {
        const DayEntry& entry = store.days[i];
        text += LineOfDay(entry, ToText(entry.distance)) + lineEnd;
    }
    const std::string bytes = ToUserCodePage(text);

    // Kept on purpose: "A save overwrites the file in place".
    TextFile::OpenForOutput(journalSlot, path);
    TextFile::Write(journalSlot, bytes);
    TextFile::Flush(journalSlot);
    if (store.dayCount == 0) {
        // Kept on purpose: "An empty save keeps the file open".
        return;
    }
    TextFile::Close(journalSlot);
}

void DataInterface::SaveJournal()
{
    WriteJournalFile(store.journalPath);
    store.journalChanged = false;
}
