#pragma once

#include <string>

// The region settings of the user, changed while programs run.
//
// Wine: a process reads the region settings at its start. A change that it makes itself is visible only to itself;
// a change by another process or in the registry is not visible to running processes. The locale of a running
// process does not change either, so a test that needs other month names puts them into the window itself. On Windows
// every process has the new settings at once.

/// Broadcasts WM_SETTINGCHANGE for the region settings to the windows of all programs.
void BroadcastRegionChange();

/// Sets another decimal separator for this process and sends WM_SETTINGCHANGE to its windows.
void ChooseDecimalSeparator(const std::wstring& separator);

/// Restores the decimal separator of the machine at the end of the test.
class KeptRegion {
public:
    KeptRegion();
    ~KeptRegion();
    KeptRegion(const KeptRegion&) = delete;
    KeptRegion& operator=(const KeptRegion&) = delete;

    const std::wstring& Own() const noexcept { return own_; }
    /// The separator of another region: "," where the machine has ".", else ".".
    std::wstring Other() const { return own_ == L"." ? L"," : L"."; }

private:
    std::wstring own_;
};
