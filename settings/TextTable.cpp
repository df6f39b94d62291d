#include "settings/TextTable.h"

#include "platform/system/StringResource.h"

std::wstring LoadText(std::int16_t id)
{
    return LoadStringResource(id);
}
