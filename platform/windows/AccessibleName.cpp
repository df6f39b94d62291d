#include "platform/windows/AccessibleName.h"

#include "platform/windows/Com.h"

#include <oleacc.h>

namespace {

/// Calls the annotation service of Active Accessibility. False: there is none, or the call failed.
template <class Call>
bool WithAccPropServices(Call call) noexcept
{
    const ComApartment com;
    void* found = nullptr;
    if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices, &found))) {
        return false;
    }
    const ComOwner<IAccPropServices> services(static_cast<IAccPropServices*>(found));
    return SUCCEEDED(call(*services));
}

constexpr auto client = static_cast<DWORD>(OBJID_CLIENT);

} // namespace

void AccessibleName::Set(WindowHandle window, const std::wstring& name) noexcept
{
    const bool named = WithAccPropServices([&](IAccPropServices& services) {
        return services.SetHwndPropStr(window, client, CHILDID_SELF, PROPID_ACC_NAME, name.c_str());
    });
    window_ = named ? window : nullptr;
}

void AccessibleName::Clear() noexcept
{
    if (window_ != nullptr) {
        WithAccPropServices([this](IAccPropServices& services) {
            MSAAPROPID which = PROPID_ACC_NAME;
            return services.ClearHwndProps(window_, client, CHILDID_SELF, &which, 1);
        });
        window_ = nullptr;
    }
}
