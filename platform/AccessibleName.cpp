#include "platform/AccessibleName.h"

#include "platform/Com.h"

#include <oleacc.h>

namespace {

/// Does something with the system's keeper of such names. False: there is none, or it did not do it.
template <class Deed>
bool WithKeeper(Deed deed) noexcept
{
    const ComApartment com;
    void* found = nullptr;
    if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices, &found))) {
        return false;
    }
    const ComOwner<IAccPropServices> keeper(static_cast<IAccPropServices*>(found));
    return SUCCEEDED(deed(*keeper));
}

constexpr auto client = static_cast<DWORD>(OBJID_CLIENT);

} // namespace

void AccessibleName::Set(WindowHandle window, const std::wstring& name) noexcept
{
    const bool kept = WithKeeper([&](IAccPropServices& keeper) {
        return keeper.SetHwndPropStr(window, client, CHILDID_SELF, PROPID_ACC_NAME, name.c_str());
    });
    window_ = kept ? window : nullptr;
}

void AccessibleName::Clear() noexcept
{
    if (window_ != nullptr) {
        WithKeeper([this](IAccPropServices& keeper) {
            MSAAPROPID which = PROPID_ACC_NAME;
            return keeper.ClearHwndProps(window_, client, CHILDID_SELF, &which, 1);
        });
        window_ = nullptr;
    }
}
