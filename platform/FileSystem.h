#pragma once

#include <string>

/// True if a directory search for exactly this path finds an ordinary file. Folders, hidden files and system files do
/// not count.
bool FileExists(const std::wstring& path);
