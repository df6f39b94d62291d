#pragma once

#include <cstddef>
#include <string>

/// The registry as the settings need it: keys of HKEY_LOCAL_MACHINE, texts in the user's code page. No call throws; the
/// caller decides what a failure means. The view is the natural one of the program's build (64-bit).
namespace Registry {

/// A key that is open, as a bare handle: who closes it is the caller's rule, not this type's.
using Key = void*;

/// Opens the key with read and write rights, creating it where it is missing. Null on failure.
Key CreateKey(const std::string& path);

/// Opens an existing key with the same rights, although only reading may follow. Null on failure.
Key OpenKey(const std::string& path);

void CloseKey(Key key);

/// Stores exactly this many bytes of the text as REG_SZ, without a terminating null. False on failure.
bool WriteText(Key key, const std::string& valueName, const std::string& text, std::size_t size);

/// Reads the value's bytes over the start of the buffer, whatever the value's type. False if the value is missing or
/// longer than the buffer.
bool ReadValue(Key key, const std::string& valueName, std::string& buffer);

} // namespace Registry
