#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>

/// The built program in a folder of its own, with a journal of tests/samples beside it.
class Installation {
public:
    explicit Installation(const std::wstring& sample);

    std::wstring Program() const { return folder_.File(L"odomira.exe"); }
    std::wstring Journal() const { return folder_.File(L"datasource.jrn"); }

private:
    TemporaryFolder folder_;
};
