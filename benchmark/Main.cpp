// odomira_bench journal|adding|window ROUNDS
// odomira_bench report|words PRINTER ENTRIES
#include "benchmark/Measure.h"

#include "platform/system/Conversions.h"
#include "platform/system/RuntimeError.h"

#include <psapi.h>
#include <shellapi.h>

#include <memory>
#include <string>

namespace {

struct LocalMemoryDeleter {
    void operator()(wchar_t** memory) const noexcept { LocalFree(memory); }
};

/// Returns false if there is no such measurement.
bool MeasureRounds(const std::wstring& what, int rounds)
{
    if (what == L"journal") {
        MeasureJournal(rounds);
    } else if (what == L"adding") {
        MeasureAdding(rounds);
    } else if (what == L"window") {
        MeasureWindow(rounds);
    } else {
        return false;
    }
    return true;
}

bool MeasurePrinting(const std::wstring& what, const wchar_t* printer, int entries)
{
    if (what != L"report" && what != L"words") {
        return false;
    }
    (what == L"report" ? MeasureReport : MeasureWords)(printer, entries);
    return true;
}

} // namespace

int main()
{
    int count = 0;
    const std::unique_ptr<wchar_t*, LocalMemoryDeleter> words(CommandLineToArgvW(GetCommandLineW(), &count));
    try {
        wchar_t** const word = words.get();
        if (!(count == 3 && MeasureRounds(word[1], ToInt16(word[2]))) &&
            !(count == 4 && MeasurePrinting(word[1], word[2], ToInt16(word[3])))) {
            std::puts("odomira_bench journal|adding|window ROUNDS, or report|words PRINTER ENTRIES");
            return 2;
        }
    } catch (const RuntimeError& error) {
        std::printf("odomira_bench: error %d\n", static_cast<int>(error.Number()));
        return 1;
    }
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    Record("peak KiB", static_cast<double>(memory.PeakWorkingSetSize) / 1024);
    return 0;
}
