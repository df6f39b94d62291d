#include "platform/TextFile.h"

#include "platform/OwnedHandle.h"
#include "platform/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <utility>

namespace {

enum class Mode { Input, Output };

constexpr int lastSlot = 511;
constexpr std::size_t chunkBytes = 65536;

struct SlotFile {
    OwnedHandle handle;
    Mode mode;
    std::string chunk;    ///< what was last read from the file
    std::size_t next = 0; ///< position in chunk of the next byte to hand out
};

/// Destroyed with the program, which closes what is still open.
std::map<int, SlotFile> slotFiles;

[[noreturn]] void ThrowLastError()
{
    throw RuntimeError(ErrorFromWin32(GetLastError()));
}

void RequireFree(int slot)
{
    if (slot < 1 || slot > lastSlot) {
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
    if (slotFiles.contains(slot)) {
        throw RuntimeError(ErrorNumber::FileAlreadyOpen);
    }
}

SlotFile& RequireOpen(int slot, Mode mode)
{
    const auto found = slotFiles.find(slot);
    if (found == slotFiles.end()) {
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
    if (found->second.mode != mode) {
        throw RuntimeError(ErrorNumber::BadFileMode);
    }
    return found->second;
}

OwnedHandle OpenPath(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition)
{
    // An account with enough rights could write over the mark; the user who set it means it.
    const DWORD attributes = access == GENERIC_WRITE ? GetFileAttributesW(path.c_str()) : INVALID_FILE_ATTRIBUTES;
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
    OwnedHandle handle(
        CreateFileW(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) {
        ThrowLastError();
    }
    return handle;
}

/// False at the end of the file.
bool HasByte(SlotFile& file)
{
    if (file.next < file.chunk.size()) {
        return true;
    }
    file.chunk.resize(chunkBytes);
    file.next = 0;
    DWORD count = 0;
    if (ReadFile(file.handle.Get(), file.chunk.data(), chunkBytes, &count, nullptr) == 0) {
        file.chunk.clear();
        ThrowLastError();
    }
    file.chunk.resize(count);
    return count > 0;
}

/// Goes past CR LF, CR or LF; the two bytes of the first may lie in different chunks.
void SkipLineEnd(SlotFile& file)
{
    const bool wasReturn = file.chunk[file.next++] == '\r';
    if (wasReturn && HasByte(file) && file.chunk[file.next] == '\n') {
        ++file.next;
    }
}

} // namespace

void TextFile::OpenForInput(int slot, const std::wstring& path)
{
    RequireFree(slot);
    slotFiles.emplace(
        slot,
        SlotFile{OpenPath(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING), Mode::Input, {}});
}

void TextFile::OpenForOutput(int slot, const std::wstring& path)
{
    RequireFree(slot);
    // Opening what is there and cutting it works for a hidden or system file, where creating anew is refused.
    OwnedHandle handle = OpenPath(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (SetEndOfFile(handle.Get()) == 0) {
        ThrowLastError();
    }
    slotFiles.emplace(slot, SlotFile{std::move(handle), Mode::Output, {}});
}

void TextFile::OpenForAppend(int slot, const std::wstring& path)
{
    RequireFree(slot);
    OwnedHandle handle = OpenPath(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (SetFilePointerEx(handle.Get(), LARGE_INTEGER{}, nullptr, FILE_END) == 0) {
        ThrowLastError();
    }
    slotFiles.emplace(slot, SlotFile{std::move(handle), Mode::Output, {}});
}

bool TextFile::AtEndOfFile(int slot)
{
    return !HasByte(RequireOpen(slot, Mode::Input));
}

std::string TextFile::ReadLine(int slot)
{
    SlotFile& file = RequireOpen(slot, Mode::Input);
    if (!HasByte(file)) {
        throw RuntimeError(ErrorNumber::InputPastEndOfFile);
    }
    std::string line;
    while (HasByte(file)) {
        const std::size_t end = std::min(file.chunk.find_first_of("\r\n", file.next), file.chunk.size());
        line.append(file.chunk, file.next, end - file.next);
        file.next = end;
        if (end < file.chunk.size()) {
            SkipLineEnd(file);
            break;
        }
    }
    return line;
}

void TextFile::Write(int slot, std::string_view bytes)
{
    SlotFile& file = RequireOpen(slot, Mode::Output);
    DWORD written = 0;
    const BOOL succeeded =
        WriteFile(file.handle.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    const DWORD error = GetLastError();
    if (succeeded == 0 || written != bytes.size()) {
        Close(slot);
        throw RuntimeError(succeeded == 0 ? ErrorFromWin32(error) : ErrorNumber::DiskFull);
    }
}

void TextFile::Close(int slot)
{
    slotFiles.erase(slot);
}
