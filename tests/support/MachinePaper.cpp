#include "tests/support/MachinePaper.h"

#include <windows.h>

#include <winspool.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <vector>

namespace {

constexpr std::size_t nameLength = 64; // of a paper, in the list that the driver gives

/// The number that the driver has for a paper.
short NumberOf(const std::wstring& paper, const std::wstring& printer)
{
    const wchar_t* name = printer.c_str();
    const auto count = DeviceCapabilitiesW(name, nullptr, DC_PAPERNAMES, nullptr, nullptr);
    std::vector<std::array<wchar_t, nameLength>> names(static_cast<std::size_t>(std::max(0, count)));
    std::vector<short> numbers(names.size());
    DeviceCapabilitiesW(name, nullptr, DC_PAPERNAMES, names.data()->data(), nullptr);
    DeviceCapabilitiesW(name, nullptr, DC_PAPERS, reinterpret_cast<wchar_t*>(numbers.data()), nullptr);
    const auto found = std::ranges::find_if(names, [&](const auto& one) { return paper == one.data(); });
    if (found == names.end()) {
        throw std::runtime_error("the machine's printer has no such paper");
    }
    return numbers[static_cast<std::size_t>(found - names.begin())];
}

std::vector<std::byte> DefaultMode(std::wstring name) // OpenPrinter wants it writable
{
    HANDLE printer = nullptr;
    if (OpenPrinterW(name.data(), &printer, nullptr) == FALSE) {
        throw std::runtime_error("this test needs a machine with a printer");
    }
    const auto size = DocumentPropertiesW(nullptr, printer, name.data(), nullptr, nullptr, 0);
    std::vector<std::byte> mode(static_cast<std::size_t>(std::max<LONG>(0, size)));
    DocumentPropertiesW(nullptr, printer, name.data(), reinterpret_cast<DEVMODEW*>(mode.data()), nullptr,
                        DM_OUT_BUFFER);
    ClosePrinter(printer);
    return mode;
}

} // namespace

PrinterDevice PrinterWith(const MachinePaper& paper)
{
    const std::wstring name = paper.dotsPerInch == 300 ? L"Other" : L"Paper";
    PrinterDevice device{.name = name, .mode = DefaultMode(name)};
    auto& mode = *reinterpret_cast<DEVMODEW*>(device.mode.data());
    mode.dmFields |= DM_PAPERSIZE | DM_ORIENTATION;
    mode.dmFields &= ~static_cast<DWORD>(DM_FORMNAME | DM_PAPERLENGTH | DM_PAPERWIDTH);
    mode.dmPaperSize = NumberOf(paper.name, name);
    mode.dmOrientation = paper.landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
    return device;
}

Sheet SheetOf(const PrinterDevice& device)
{
    std::vector<std::byte> mode = device.mode;
    HDC context = CreateICW(nullptr, device.name.c_str(), nullptr, reinterpret_cast<DEVMODEW*>(mode.data()));
    const auto twips = [context](int length, int resolution) {
        return GetDeviceCaps(context, length) * 1440.0 / GetDeviceCaps(context, resolution);
    };
    const Sheet sheet{twips(HORZRES, LOGPIXELSX), twips(VERTRES, LOGPIXELSY), twips(PHYSICALOFFSETX, LOGPIXELSX),
                      twips(PHYSICALOFFSETY, LOGPIXELSY)};
    DeleteDC(context);
    return sheet;
}
