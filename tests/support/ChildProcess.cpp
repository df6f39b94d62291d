#include "tests/support/ChildProcess.h"

#include "platform/system/ModulePath.h"
#include "platform/system/OwnedHandle.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>

namespace {

OwnedHandle Start(const std::wstring& fullTestName, const std::wstring& program)
{
    std::wstring command =
        L'"' + program + L"\" --gtest_brief=1 --gtest_also_run_disabled_tests --gtest_filter=" + fullTestName;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    // Wine: rarely, about once in some thousand processes, CreateProcess fails with ERROR_INTERNAL_ERROR. Try again.
    DWORD error = ERROR_INTERNAL_ERROR;
    for (int attempt = 0; attempt < 3 && error == ERROR_INTERNAL_ERROR; ++attempt) {
        if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started) !=
            FALSE) {
            const OwnedHandle thread(started.hThread);
            return OwnedHandle(started.hProcess);
        }
        error = GetLastError();
        std::printf("CreateProcess: error %lu\n", error);
    }
    ADD_FAILURE() << "CreateProcess: error " << error;
    return OwnedHandle(nullptr);
}

} // namespace

int RunInChildProcess(const std::wstring& fullTestName)
{
    return RunInChildProcess(fullTestName, ModulePath());
}

int RunInChildProcess(const std::wstring& fullTestName, const std::wstring& program)
{
    const OwnedHandle process = Start(fullTestName, program);
    if (!process) {
        return -1;
    }
    DWORD exitCode = 0;
    WaitForSingleObject(process.Get(), INFINITE);
    GetExitCodeProcess(process.Get(), &exitCode);
    return static_cast<int>(exitCode);
}

OwnedHandle StartInChildProcess(const std::wstring& fullTestName)
{
    return Start(fullTestName, ModulePath());
}
