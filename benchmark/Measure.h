#pragma once

#include <windows.h>

#include <cstdio>

// What every measurement of this folder shares: a clock, and lines "name <tab> number" on standard output, which
// bench.py gathers. A name that comes several times is one measurement repeated.

/// Milliseconds since some moment in the past.
inline double Now()
{
    LARGE_INTEGER count{};
    LARGE_INTEGER perSecond{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(count.QuadPart) * 1000 / static_cast<double>(perSecond.QuadPart);
}

inline void Tell(const char* name, double number)
{
    std::printf("%s\t%.4f\n", name, number);
    std::fflush(stdout);
}

/// Runs the action and tells how many milliseconds it took.
template <class Action>
void Measure(const char* name, const Action& action)
{
    const double begin = Now();
    action();
    Tell(name, Now() - begin);
}

/// The journal beside this program: loading and saving it, each beside the bare conversions of its fields.
void MeasureJournal(int rounds);

/// Adding the entries of the journal, oldest first, to an empty store.
void MeasureAdding(int rounds);

/// The main window with that journal: clicks on months, and what follows the deletion of a day.
void MeasureWindow(int rounds);

/// The report over the journal's whole range, to the given printer.
void MeasureReport(const wchar_t* printer);

/// Only the words of that report, printed by the bare calls of the system.
void MeasureWords(const wchar_t* printer);
