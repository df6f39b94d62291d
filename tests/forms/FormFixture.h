#pragma once

#include "app/Module1.h"
#include "settings/registerModule.h"
#include "tests/support/FormUser.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include <windows.h>

/// A main window without function, as the owner of dialogs.
class PlainMainForm : public Form {
public:
    const FormLayout& Layout() const override
    {
        static constexpr FormLayout layout{.kind = FormKind::Main, .width = 9000, .height = 7500, .rows = {}};
        return layout;
    }

protected:
    void Wire() override {}
};

/// A program in English with kilometres and a main window, without stored settings.
class FormFixture : public testing::Test {
protected:
    void SetUp() override
    {
        ForgetStored();
        Module1::distanceUnit = L"km";
        Module1::languageOffset = 0;
        Instance<PlainMainForm>()->Show();
    }

    void TearDown() override
    {
        UnloadInstance<PlainMainForm>();
        ForgetStored();
    }

    static constexpr const wchar_t* programKey = L"Software\\Velmora\\Tav";

    static void ForgetStored() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Velmora"); }

    static bool AnythingIsStored()
    {
        HKEY key = nullptr;
        const bool exists = RegOpenKeyExW(HKEY_LOCAL_MACHINE, programKey, 0, KEY_READ, &key) == ERROR_SUCCESS;
        RegCloseKey(key);
        return exists;
    }

    /// The text of a REG_SZ value; no value if it does not exist.
    static std::optional<std::wstring> Stored(const std::wstring& section, const std::wstring& name)
    {
        std::wstring text(1000, L'\0');
        auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        const std::wstring key = std::wstring(programKey) + L'\\' + section;
        if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
            ERROR_SUCCESS) {
            return std::nullopt;
        }
        return text.substr(0, text.find(L'\0'));
    }

    static void Store(const std::wstring& section, const std::wstring& name, const std::wstring& text)
    {
        registerModule::SaveRegistryValue(section, name, text);
    }

    /// Makes every write of a setting fail: the key of the program becomes volatile, and a volatile key accepts
    /// volatile subkeys only.
    static void RefuseToStore()
    {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, programKey, 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE, nullptr, &key,
                        nullptr);
        RegCloseKey(key);
    }

    /// Shows a form modally, calls the user's actions, and closes the form if they have not.
    template <class F>
    static void WhileOpen(const std::function<void(F&)>& script)
    {
        ModalUser user;
        user.In<F>([&](F& form) {
            BringToFront(form);
            script(form);
            form.Unload();
        });
        Instance<F>()->ShowModal();
    }

    static bool HasFocus(const Control& control) { return GetFocus() == control.Handle(); }

    static void AwaitClosed(const Form& form)
    {
        Await([&] { return !form.IsLoaded(); }, "the form to close");
    }

    static void CloseByItsBox(const Form& form)
    {
        PostMessageW(form.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        AwaitClosed(form);
    }

    /// The number of visible windows besides the main window.
    static std::size_t OpenDialogs() { return Form::OpenForms().size() - 1; }
};
