#pragma once

#include <string>

/// The full path of the running program file.
std::wstring ModulePath();
