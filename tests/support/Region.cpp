#include "tests/support/Region.h"

#include "platform/system/Conversions.h"

#include <windows.h>

void BroadcastRegionChange()
{
    constexpr UINT timeout = 5000;
    SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"), SMTO_ABORTIFHUNG,
                        timeout, nullptr);
}

void ChooseDecimalSeparator(const std::wstring& separator)
{
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator.c_str());
    BroadcastRegionChange();
}

KeptRegion::KeptRegion() : own_(DecimalSeparator()) {}

KeptRegion::~KeptRegion()
{
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, own_.c_str());
}
