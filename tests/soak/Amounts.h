#pragma once

#include <cstdint>
#include <string>

/// How much a soak program does. ./test runs a short slice of each; ./soak sets ODOMIRA_SOAK=long and has all of it.
bool IsLongRun();

/// The amount for this run.
std::int64_t Amount(std::int64_t shortSlice, std::int64_t longRun);

/// The seed of this run's random choices, printed so that a finding can be made again: the same seed gives the same
/// run. ODOMIRA_SEED sets another than the default.
std::uint32_t Seed();

/// What a run did, told at its end on one line that ./soak collects: "soak: 1000000 lines read, 0 findings". A finding
/// is a failed expectation of the running test.
class ClosingReport {
public:
    ClosingReport() = default;
    ~ClosingReport();
    ClosingReport(const ClosingReport&) = delete;
    ClosingReport& operator=(const ClosingReport&) = delete;

    /// One more piece of the line, as Did(1000000, "lines read").
    void Did(std::int64_t count, const std::string& what);

private:
    std::string line_;
};
