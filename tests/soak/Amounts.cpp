#include "tests/soak/Amounts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

int FailuresOfThisTest()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    int failures = 0;
    for (int i = 0; i < test->result()->total_part_count(); ++i) {
        failures += test->result()->GetTestPartResult(i).failed() ? 1 : 0;
    }
    return failures;
}

} // namespace

bool IsLongRun()
{
    const char* length = std::getenv("ODOMIRA_SOAK");
    return length != nullptr && std::string_view(length) == "long";
}

std::int64_t Amount(std::int64_t shortSlice, std::int64_t longRun)
{
    return IsLongRun() ? longRun : shortSlice;
}

std::uint32_t Seed()
{
    static const std::uint32_t seed = [] {
        constexpr std::uint32_t usual = 20040212;
        const char* wanted = std::getenv("ODOMIRA_SEED");
        const std::uint32_t chosen =
            wanted != nullptr ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10)) : usual;
        std::printf("seed %u\n", chosen);
        return chosen;
    }();
    return seed;
}

ClosingReport::~ClosingReport()
{
    std::printf("soak: %s%d findings\n", line_.c_str(), FailuresOfThisTest());
    std::fflush(stdout);
}

void ClosingReport::Did(std::int64_t count, const std::string& what)
{
    line_ += std::to_string(count) + ' ' + what + ", ";
}
