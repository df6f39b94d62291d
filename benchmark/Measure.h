#pragma once

#include <windows.h>

#include <cstdio>

// Common parts of all measurements: a clock, and lines "name <tab> number" on standard output, which measure.py reads.
// Lines with the same name are repetitions of one measurement.

/// Milliseconds since a fixed moment.
inline double Now()
{
    LARGE_INTEGER count{};
    LARGE_INTEGER perSecond{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(count.QuadPart) * 1000 / static_cast<double>(perSecond.QuadPart);
}

/// Writes a result to standard output.
inline void Record(const char* name, double number)
{
    std::printf("%s\t%.4f\n", name, number);
    std::fflush(stdout);
}

/// Runs the action and records its time in milliseconds.
template <class Action>
void Measure(const char* name, const Action& action)
{
    const double begin = Now();
    action();
    Record(name, Now() - begin);
}

/// Loading and saving the journal in the folder of this program, and only the conversions of its fields.
void MeasureJournal(int rounds);

/// Adding the entries of the journal, oldest first, to an empty store.
void MeasureAdding(int rounds);

/// The main window with that journal: clicks on months, and the rebuild after the deletion of a day.
void MeasureWindow(int rounds);

/// Printing the report of the newest entries.
void MeasureReport(const wchar_t* printer, int entries);

/// Printing only the words of that report, by GDI calls.
void MeasureWords(const wchar_t* printer, int entries);
