// odomira_bench journal|adding|window ROUNDS
// odomira_bench report|words PRINTER
#include "benchmark/Measure.h"

#include "platform/Conversions.h"
#include "platform/RuntimeError.h"

#include <psapi.h>
#include <shellapi.h>

#include <memory>
#include <string>

namespace {

struct LocalMemoryDeleter {
    void operator()(wchar_t** memory) const noexcept { LocalFree(memory); }
};

/// False for words that mean nothing here.
bool Run(const std::wstring& what, const wchar_t* word)
{
    if (what == L"report" || what == L"words") {
        (what == L"report" ? MeasureReport : MeasureWords)(word);
        return true;
    }
    const int rounds = ToInt16(word);
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

} // namespace

int main()
{
    int count = 0;
    const std::unique_ptr<wchar_t*, LocalMemoryDeleter> words(CommandLineToArgvW(GetCommandLineW(), &count));
    try {
        if (count != 3 || !Run(words.get()[1], words.get()[2])) {
            std::puts("odomira_bench journal|adding|window ROUNDS, or report|words PRINTER");
            return 2;
        }
    } catch (const RuntimeError& error) {
        std::printf("odomira_bench: error %d\n", static_cast<int>(error.Number()));
        return 1;
    }
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    Tell("peak KiB", static_cast<double>(memory.PeakWorkingSetSize) / 1024);
    return 0;
}
