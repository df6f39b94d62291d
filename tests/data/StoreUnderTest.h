#pragma once

#include "data/DataInterface.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

/// Each test starts with the program's own journal file missing and an empty store read from it.
class StoreUnderTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
};

/// The entries in use, in store order.
std::vector<DayEntry> Entries();

/// Their dates as "2004-02-12".
std::vector<std::string> Dates();

/// Reads these lines into the store as they come, as from a file.
void Load(std::initializer_list<std::wstring> lines);
