#pragma once

#include <cstddef>
#include <memory>
#include <string>

/// Text values under HKEY_LOCAL_MACHINE, in the ANSI code page. No function throws. A 64-bit program uses the 64-bit
/// view.
namespace Registry {

struct KeyCloser {
    void operator()(void* key) const noexcept;
};

/// An open key.
using Key = std::unique_ptr<void, KeyCloser>;

/// Opens the key with read and write access, and creates it if it does not exist. Null on failure.
Key CreateKey(const std::string& path);

/// Opens an existing key, also with read and write access. Null on failure.
Key OpenKey(const std::string& path);

/// Writes `size` bytes of the text as REG_SZ, without a terminating null. False on failure.
bool WriteText(const Key& key, const std::string& valueName, const std::string& text, std::size_t size);

/// Reads the bytes of a value of any type into the buffer. False if the value does not exist or is longer than the
/// buffer.
bool ReadValue(const Key& key, const std::string& valueName, std::string& buffer);

} // namespace Registry
