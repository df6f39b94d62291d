#pragma once

#include <string>

/// A typed route as the journal stores it: converted to the code page and back, up to the first line break. A second
/// line would be read as another entry.
std::wstring RouteOf(const std::wstring& typed);
