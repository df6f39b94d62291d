#pragma once

#include <string>
#include <string_view>

/// An empty folder, deleted with its content by the destructor.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::wstring& Path() const noexcept { return path_; }

    /// The full path of a file in it.
    std::wstring File(const std::wstring& name) const { return path_ + L'\\' + name; }

private:
    std::wstring path_;
};

/// A file's content, byte for byte. Fails the running test if the file cannot be read or written.
std::string BytesOf(const std::wstring& path);
void WriteBytes(const std::wstring& path, std::string_view bytes);
