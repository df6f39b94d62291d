#pragma once

#include "platform/system/OwnedHandle.h"

#include <string>

/// Runs one test of this program, or of a copy of its file, in another process and returns its exit code: 0 if the test
/// passed. Tests that are only ever run this way are disabled ("DISABLED_..."), which this
/// call overrides.
int RunInChildProcess(const std::wstring& fullTestName);
int RunInChildProcess(const std::wstring& fullTestName, const std::wstring& program);

/// Starts it and does not wait: the process, or nothing when it could not be started, which fails the running test.
OwnedHandle StartInChildProcess(const std::wstring& fullTestName);
