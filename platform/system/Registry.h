#pragma once

#include <cstddef>
#include <string>

/// Text values under HKEY_LOCAL_MACHINE, in the ANSI code page. No function throws. A 64-bit program uses the 64-bit
/// view.
namespace Registry {

/// An open key. The caller closes it, or leaves it open.
using Key = void*;

/// Opens the key with read and write access, and creates it if it does not exist. Null on failure.
Key CreateKey(const std::string& path);

/// Opens an existing key, also with read and write access. Null on failure.
Key OpenKey(const std::string& path);

void CloseKey(Key key);

/// Writes `size` bytes of the text as REG_SZ, without a terminating null. False on failure.
bool WriteText(Key key, const std::string& valueName, const std::string& text, std::size_t size);

/// Reads the bytes of a value of any type into the buffer. False if the value does not exist or is longer than the
/// buffer.
bool ReadValue(Key key, const std::string& valueName, std::string& buffer);

} // namespace Registry
