#include "platform/print/PrinterDialog.h"

#include "platform/system/CheckedArithmetic.h"
#include "platform/system/RuntimeError.h"
#include "platform/windows/Handles.h"
#include "platform/windows/ModalOwner.h"

#include <windows.h>

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

/// Locks a global memory block of the dialog during its lifetime.
class LockedMemory {
public:
    explicit LockedMemory(const GlobalMemoryOwner& memory) : memory_(memory.get()), begin_(GlobalLock(memory.get()))
    {
        if (begin_ == nullptr) {
            throw RuntimeError(ErrorNumber::PrinterError);
        }
    }
    ~LockedMemory() { GlobalUnlock(memory_); }
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;

    template <typename Block>
    const Block& As() const noexcept
    {
        return *static_cast<const Block*>(begin_);
    }

private:
    HGLOBAL memory_;
    const void* begin_;
};

std::wstring DeviceName(const GlobalMemoryOwner& names)
{
    const LockedMemory locked(names);
    // The full name of the device. DEVMODE has its first 31 characters only.
    return &locked.As<wchar_t>() + locked.As<DEVNAMES>().wDeviceOffset;
}

/// Returns the device mode with one copy, and the number of copies that it had. The program prints the copies one by
/// one, and the driver would multiply them.
std::pair<std::vector<std::byte>, int> ModeAndCopies(const GlobalMemoryOwner& mode)
{
    const LockedMemory locked(mode);
    const auto& settings = locked.As<DEVMODEW>();
    const auto* begin = &locked.As<std::byte>();
    std::vector<std::byte> block(begin, begin + settings.dmSize + settings.dmDriverExtra);
    int copies = 1;
    auto& own = *reinterpret_cast<DEVMODEW*>(block.data());
    if ((own.dmFields & DM_COPIES) != 0) {
        copies = std::exchange(own.dmCopies, short{1});
    }
    return {std::move(block), copies};
}

} // namespace

PrinterChoice PrinterDialog::ShowPrinter() const
{
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = ModalOwner();
    dialog.Flags = PD_USEDEVMODECOPIES | PD_NOSELECTION;
    const AskingForm asking;
    const bool confirmed = PrintDlgW(&dialog) != FALSE;
    const GlobalMemoryOwner mode(dialog.hDevMode);
    const GlobalMemoryOwner names(dialog.hDevNames);
    asking.EndCommandIfGone();
    if (!confirmed) {
        // If there is no printer, the dialog has shown a message itself; closing it is a cancel.
        const DWORD error = CommDlgExtendedError();
        throw RuntimeError(error == 0 || error == PDERR_NODEFAULTPRN ? ErrorNumber::Cancel : ErrorNumber::PrinterError);
    }
    auto [block, modeCopies] = ModeAndCopies(mode);
    // If the driver cannot print copies, their number is in nCopies.
    const int copies = std::max({1, modeCopies, static_cast<int>(dialog.nCopies)});
    const bool toFile = (dialog.Flags & PD_PRINTTOFILE) != 0;
    return {{DeviceName(names), std::move(block), toFile}, CheckedInt16(copies)};
}
