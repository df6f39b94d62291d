#include "tests/soak/monkey/Installation.h"

#include <windows.h>

#include <filesystem>
#include <stdexcept>

namespace {

void Copy(const std::wstring& from, const std::wstring& to)
{
    const std::wstring source = std::filesystem::path(from).make_preferred().wstring();
    if (CopyFileW(source.c_str(), to.c_str(), FALSE) == FALSE) {
        throw std::runtime_error("missing: " + std::filesystem::path(from).string());
    }
}

} // namespace

Installation::Installation(const std::wstring& sample)
{
    Copy(ODOMIRA_PROGRAM, Program());
    Copy(ODOMIRA_SAMPLES L"/" + sample, Journal());
}
