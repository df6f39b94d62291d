#include "platform/system/StringResource.h"

#include "platform/system/RuntimeError.h"

#include <windows.h>

namespace {

constexpr WORD tableLanguage = MAKELANGID(LANG_SWEDISH, SUBLANG_SWEDISH);
constexpr int textsPerBlock = 16;

} // namespace

// A block of the string table has 16 strings, each after its length. LoadString is not used, because it also searches
// other resource languages, in an order that depends on the user's locale.
std::wstring LoadStringResource(std::int16_t id)
{
    const auto number = static_cast<std::uint16_t>(id);
    const HMODULE program = GetModuleHandleW(nullptr);
    const auto blockName = static_cast<WORD>(number / textsPerBlock + 1);
    const HRSRC found = FindResourceExW(program, RT_STRING, MAKEINTRESOURCEW(blockName), tableLanguage);
    const HGLOBAL loaded = found != nullptr ? LoadResource(program, found) : nullptr;
    const auto* position = static_cast<const wchar_t*>(loaded != nullptr ? LockResource(loaded) : nullptr);
    if (position == nullptr) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    for (int i = 0; i < number % textsPerBlock; ++i) {
        position += 1 + *position;
    }
    const std::size_t length = *position;
    if (length == 0) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    return {position + 1, length};
}
