#include "forms/LocalText.h"

#include "app/Module1.h"
#include "platform/system/CheckedArithmetic.h"
#include "settings/TextTable.h"

std::wstring LocalText(std::int16_t baseAndItem)
{
    return LoadText(CheckedInt16(Module1::languageOffset + baseAndItem));
}
