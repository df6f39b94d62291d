#pragma once

#include <string>

/// A typed route as the journal keeps it: what the code page holds of it, up to its first line break. A second line of
/// it would be read back as an entry of its own.
std::wstring RouteOf(const std::wstring& typed);
