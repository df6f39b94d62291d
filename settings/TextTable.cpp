#include "settings/TextTable.h"

#include "platform/StringResource.h"

std::wstring LoadText(std::int16_t id)
{
    return LoadStringResource(id);
}
