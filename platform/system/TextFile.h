#pragma once

#include <string>
#include <string_view>

/// Sequential text files. A file is opened on a numbered slot, which stays in use until Close. Files that are open when
/// the program ends are closed then. Write does not buffer.
///
/// Errors: BadFileNameOrNumber (52) for a slot outside 1..511 or without an open file, FileAlreadyOpen (55) for a slot
/// in use, BadFileMode (54) for reading a file that is open for writing and the reverse, PathFileAccessError (75) for a
/// folder or a read-only file, PermissionDenied (70) for a file that another program has locked, DiskFull (61).
namespace TextFile {

/// Throws FileNotFound if the file does not exist. Other programs may read and write it at the same time.
void OpenForInput(int slot, const std::wstring& path);

/// Creates the file or truncates an existing one, also a hidden one. Other programs may only read it while it is open.
void OpenForOutput(int slot, const std::wstring& path);

/// Creates the file if it does not exist. Writes go to its end.
void OpenForAppend(int slot, const std::wstring& path);

bool AtEndOfFile(int slot);

/// The bytes of the next line without its line end, which is CR LF, LF or CR. The last line may have none. The
/// reference is valid until the next call for this slot. Throws InputPastEndOfFile.
const std::string& ReadLine(int slot);

/// Writes the bytes. On failure the file is closed and the slot is free, so that the user can free disk space and save
/// again.
void Write(int slot, std::string_view bytes);

/// FlushFileBuffers. On failure the file is closed and the slot is free, as in Write. A file system without this
/// function is no failure.
void Flush(int slot);

/// Does nothing for a slot that is not in use.
void Close(int slot);

} // namespace TextFile
