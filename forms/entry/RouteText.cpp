#include "forms/entry/RouteText.h"

#include "platform/system/Conversions.h"

std::wstring RouteOf(const std::wstring& typed)
{
    // The conversion may turn another character into a line break.
    const std::wstring held = AsUserCodePageHoldsIt(typed);
    return held.substr(0, held.find_first_of(L"\r\n"));
}
