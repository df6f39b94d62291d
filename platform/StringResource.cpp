#include "platform/StringResource.h"

#include "platform/RuntimeError.h"

#include <windows.h>

namespace {

constexpr WORD tableLanguage = MAKELANGID(LANG_SWEDISH, SUBLANG_SWEDISH);
constexpr int textsPerBlock = 16;

} // namespace

// The table is stored in blocks of 16 texts, each text behind its length. The system's own loader searches the blocks
// of other languages too, in an order that depends on the user's locale; here only one block can be meant.
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
