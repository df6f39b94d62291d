#include "tests/soak/QuickAnswers.h"

#include <map>

#include <windows.h>

namespace {

std::map<std::wstring, std::int64_t> boxes;

int WINAPI AnswerAtOnce(HWND, LPCWSTR text, LPCWSTR, UINT)
{
    ++boxes[text];
    return IDOK;
}

} // namespace

/// The import of MessageBoxW for the whole program. It replaces that of the import library.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cppcoreguidelines-interfaces-global-init): the linker's name for it
extern "C" decltype(&MessageBoxW) const __imp_MessageBoxW = &AnswerAtOnce;

std::int64_t QuickAnswers::Count(const std::wstring& text)
{
    const auto found = boxes.find(text);
    return found == boxes.end() ? 0 : found->second;
}

std::int64_t QuickAnswers::Count()
{
    std::int64_t count = 0;
    for (const auto& [text, times] : boxes) {
        count += times;
    }
    return count;
}

void QuickAnswers::Forget()
{
    boxes.clear();
}
