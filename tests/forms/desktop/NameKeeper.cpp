#include "tests/forms/desktop/NameKeeper.h"

#include <objbase.h>
#include <oleacc.h>

#include <map>

#include <gtest/gtest.h>

/// Implements the functions that the program calls. Its NameKeeper owns it; it has no reference count.
struct NameKeeper::Service final : IClassFactory {
    struct Names final : IAccPropServices {
        std::map<HWND, std::wstring> names;
        bool lostOne = false; ///< a window was destroyed before its name was removed

        virtual ~Names() = default;

        HRESULT WINAPI QueryInterface(REFIID wanted, void** object) override
        {
            const bool mine = wanted == IID_IAccPropServices || wanted == IID_IUnknown;
            *object = mine ? this : nullptr;
            return mine ? S_OK : E_NOINTERFACE;
        }
        ULONG WINAPI AddRef() override { return 2; }
        ULONG WINAPI Release() override { return 1; }

        HRESULT WINAPI SetHwndPropStr(HWND window, DWORD object, DWORD child, MSAAPROPID which, LPCWSTR name) override
        {
            if (object != static_cast<DWORD>(OBJID_CLIENT) || child != CHILDID_SELF || which != PROPID_ACC_NAME) {
                return E_INVALIDARG;
            }
            names[window] = name;
            return S_OK;
        }
        HRESULT WINAPI ClearHwndProps(HWND window, DWORD object, DWORD child, const MSAAPROPID* which,
                                      int count) override
        {
            if (object != static_cast<DWORD>(OBJID_CLIENT) || child != CHILDID_SELF || count != 1 ||
                *which != PROPID_ACC_NAME) {
                return E_INVALIDARG;
            }
            lostOne = lostOne || IsWindow(window) == FALSE;
            names.erase(window);
            return S_OK;
        }

        HRESULT WINAPI SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
        HRESULT WINAPI SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override
        {
            return E_NOTIMPL;
        }
        HRESULT WINAPI ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override { return E_NOTIMPL; }
        HRESULT WINAPI SetHwndProp(HWND, DWORD, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
        HRESULT WINAPI SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                         AnnoScope) override
        {
            return E_NOTIMPL;
        }
        HRESULT WINAPI ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override { return E_NOTIMPL; }
        HRESULT WINAPI DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override
        {
            return E_NOTIMPL;
        }
        HRESULT WINAPI SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
        HRESULT WINAPI SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return E_NOTIMPL; }
        HRESULT WINAPI SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override
        {
            return E_NOTIMPL;
        }
        HRESULT WINAPI ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override { return E_NOTIMPL; }
        HRESULT WINAPI ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override { return E_NOTIMPL; }
        HRESULT WINAPI DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override { return E_NOTIMPL; }
    };

    Names names;

    virtual ~Service() = default;

    HRESULT WINAPI QueryInterface(REFIID wanted, void** object) override
    {
        const bool mine = wanted == IID_IClassFactory || wanted == IID_IUnknown;
        *object = mine ? this : nullptr;
        return mine ? S_OK : E_NOINTERFACE;
    }
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }
    HRESULT WINAPI CreateInstance(IUnknown*, REFIID wanted, void** object) override
    {
        return names.QueryInterface(wanted, object);
    }
    HRESULT WINAPI LockServer(BOOL) override { return S_OK; }
};

NameKeeper::NameKeeper() : service_(std::make_unique<Service>())
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    EXPECT_EQ(CoRegisterClassObject(CLSID_AccPropServices, service_.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                    &registration_),
              S_OK);
}

NameKeeper::~NameKeeper()
{
    CoRevokeClassObject(registration_);
    CoUninitialize();
}

std::wstring NameKeeper::NameOf(HWND window) const
{
    const auto& names = service_->names.names;
    const auto found = names.find(window);
    return found != names.end() ? found->second : L"";
}

std::size_t NameKeeper::Count() const
{
    return service_->names.names.size();
}

bool NameKeeper::EveryNameWasTakenBack() const
{
    return service_->names.names.empty() && !service_->names.lostOne;
}
