#pragma once

#include <cstdint>
#include <string>

/// True under ./soak, which sets ODOMIRA_SOAK=long. ./test runs a short slice of each program.
bool IsLongRun();

/// The amount for this run.
std::int64_t Amount(std::int64_t shortSlice, std::int64_t longRun);

/// The seed of this run's random choices. It is printed, because the same seed repeats the run and its findings.
/// ODOMIRA_SEED overrides the default.
std::uint32_t Seed();

/// The result of a run. The destructor prints it on one line that ./soak collects: "soak: 1000000 lines read, 0
/// findings". A finding is a failed expectation of the running test.
class ClosingReport {
public:
    ClosingReport() = default;
    ~ClosingReport();
    ClosingReport(const ClosingReport&) = delete;
    ClosingReport& operator=(const ClosingReport&) = delete;

    /// Adds a count to the line: Did(1000000, "lines read").
    void Did(std::int64_t count, const std::string& what);

private:
    std::string line_;
};
