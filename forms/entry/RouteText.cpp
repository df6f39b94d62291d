#include "forms/entry/RouteText.h"

#include "platform/Conversions.h"

std::wstring RouteOf(const std::wstring& typed)
{
    // The code page first: it may have a line break for a character that was none.
    const std::wstring held = AsUserCodePageHoldsIt(typed);
    return held.substr(0, held.find_first_of(L"\r\n"));
}
