#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <windows.h>

TemporaryFolder::TemporaryFolder()
{
    static std::atomic<int> made = 0;
    const std::wstring name =
        L"odomira-test-" + std::to_wstring(GetCurrentProcessId()) + L'-' + std::to_wstring(++made);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    path_ = folder.wstring();
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string BytesOf(const std::wstring& path)
{
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << std::filesystem::path(path).string();
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteBytes(const std::wstring& path, std::string_view bytes)
{
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.good()) << std::filesystem::path(path).string();
}
