#include "forms/Guide.h"

#include "app/Module1.h"
#include "platform/system/Application.h"
#include "platform/system/FileSystem.h"
#include "platform/system/Shell.h"
#include "platform/windows/Form.h"
#include "platform/windows/ModalOwner.h"
#include "platform/windows/MsgBox.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

/// The file of a guide in the folder of the program, and the messages if it cannot be shown.
struct Guide {
    std::int16_t languageOffset;
    const wchar_t* file;
    const wchar_t* missing;
    const wchar_t* notOpened;
};

constexpr std::array<Guide, 2> guides{{
    {0, L"guide.html", L"The guide is missing:", L"The guide could not be opened in a web browser:"},
    {100, L"guide.sv.html", L"Handboken saknas:", L"Det gick inte att öppna handboken i en webbläsare:"},
}};

/// The English guide if the language of the program has none.
const Guide& GuideInLanguage()
{
    const auto found = std::ranges::find(guides, Module1::languageOffset, &Guide::languageOffset);
    return found != guides.end() ? *found : guides.front();
}

} // namespace

void ShowGuide(const Form& form, const std::wstring& anchor)
{
    const Guide& guide = GuideInLanguage();
    const std::wstring path = PathIn(ProgramFolder(), guide.file);
    if (!FileExists(path)) {
        MsgBox(std::wstring(guide.missing) + L"\r\n\r\n" + path);
    } else if (!AskOverForm([&] { return ShellOpenPage(form.Handle(), path, anchor); })) {
        MsgBox(std::wstring(guide.notOpened) + L"\r\n\r\n" + path);
    }
}
