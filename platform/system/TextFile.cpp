#include "platform/system/TextFile.h"

#include "platform/system/OwnedHandle.h"
#include "platform/system/RuntimeError.h"

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
    std::string chunk{};  ///< the bytes of the last ReadFile
    std::size_t next = 0; ///< position in chunk of the next byte
    std::string line{};   ///< the last line read; its memory is used again for the next one
};

/// Its destructor closes the files that are open when the program ends.
std::map<int, SlotFile> slotFiles;

[[noreturn]] void ThrowLastError()
{
    throw RuntimeError(ErrorFromWin32(GetLastError()));
}

[[noreturn]] void CloseAndThrow(int slot, DWORD error)
{
    TextFile::Close(slot);
    throw RuntimeError(ErrorFromWin32(error));
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
    // A user with enough privileges could write to a read-only file; here it is an error for every user.
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

/// Skips CR LF, CR or LF. CR and LF may be in different chunks.
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
        slot, SlotFile{OpenPath(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING), Mode::Input});
}

void TextFile::OpenForOutput(int slot, const std::wstring& path)
{
    RequireFree(slot);
    // CREATE_ALWAYS would fail for a hidden file or a system file.
    OwnedHandle handle = OpenPath(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    // Allocates memory before the file is truncated: a failure must leave the file whole.
    const auto taken = slotFiles.emplace(slot, SlotFile{std::move(handle), Mode::Output}).first;
    if (SetEndOfFile(taken->second.handle.Get()) == 0) {
        CloseAndThrow(slot, GetLastError());
    }
}

void TextFile::OpenForAppend(int slot, const std::wstring& path)
{
    RequireFree(slot);
    OwnedHandle handle = OpenPath(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (SetFilePointerEx(handle.Get(), LARGE_INTEGER{}, nullptr, FILE_END) == 0) {
        ThrowLastError();
    }
    slotFiles.emplace(slot, SlotFile{std::move(handle), Mode::Output});
}

bool TextFile::AtEndOfFile(int slot)
{
    return !HasByte(RequireOpen(slot, Mode::Input));
}

const std::string& TextFile::ReadLine(int slot)
{
    SlotFile& file = RequireOpen(slot, Mode::Input);
    if (!HasByte(file)) {
        throw RuntimeError(ErrorNumber::InputPastEndOfFile);
    }
    file.line.clear();
    while (HasByte(file)) {
        const auto rest = std::string_view(file.chunk).substr(file.next);
        const auto text = std::ranges::find_if(rest, [](char byte) { return byte == '\r' || byte == '\n'; });
        const std::size_t end = file.next + static_cast<std::size_t>(text - rest.begin());
        file.line.append(file.chunk, file.next, end - file.next);
        file.next = end;
        if (end < file.chunk.size()) {
            SkipLineEnd(file);
            break;
        }
    }
    return file.line;
}

void TextFile::Write(int slot, std::string_view bytes)
{
    SlotFile& file = RequireOpen(slot, Mode::Output);
    DWORD written = 0;
    const BOOL succeeded =
        WriteFile(file.handle.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    const DWORD error = GetLastError();
    if (succeeded == 0 || written != bytes.size()) {
        CloseAndThrow(slot, succeeded == 0 ? error : ERROR_DISK_FULL);
    }
}

void TextFile::Flush(int slot)
{
    if (FlushFileBuffers(RequireOpen(slot, Mode::Output).handle.Get()) != 0) {
        return;
    }
    const DWORD error = GetLastError();
    if (error != ERROR_INVALID_FUNCTION && error != ERROR_NOT_SUPPORTED) {
        CloseAndThrow(slot, error);
    }
}

void TextFile::Close(int slot)
{
    slotFiles.erase(slot);
}
