#include "platform/ModalOwner.h"

namespace {
WindowHandle topForm = nullptr;
}

WindowHandle ModalOwner() noexcept
{
    return topForm;
}

void SetModalOwner(WindowHandle window) noexcept
{
    topForm = window;
}
