#pragma once

#include <string>
#include <string_view>

/// Sequential files behind numbered slots. A slot is taken by opening a file on it and free again after Close; taking a
/// slot twice is an error, which is what keeps two routines from working on one file at a time. Files that are still
/// open when the program ends are closed then. What is written is at the system at once, nothing waits in this program.
///
/// Errors: BadFileNameOrNumber (52) for a slot outside 1..511 or one that has no open file, FileAlreadyOpen (55) for a
/// slot in use, BadFileMode (54) for reading a file opened for writing or the reverse, and those of the system: a
/// folder or a read-only file PathFileAccessError (75), a file locked by another program PermissionDenied (70),
/// DiskFull (61).
namespace TextFile {

/// Throws FileNotFound if there is no such file. Other programs may go on reading and writing it.
void OpenForInput(int slot, const std::wstring& path);

/// Creates the file or cuts an existing one to nothing, a hidden one too. Other programs may only read it meanwhile.
void OpenForOutput(int slot, const std::wstring& path);

/// Creates the file if it is missing and writes behind what it holds.
void OpenForAppend(int slot, const std::wstring& path);

bool AtEndOfFile(int slot);

/// The next line without its end, as the bytes stand in the file. CR LF, LF and CR end a line; the last line may have
/// no end. Any other byte is part of the line. Throws InputPastEndOfFile.
std::string ReadLine(int slot);

/// Writes the bytes as they are. A write that fails closes the file and frees the slot, so that the user can make room
/// and save again.
void Write(int slot, std::string_view bytes);

/// Does nothing for a slot that is free.
void Close(int slot);

} // namespace TextFile
