#pragma once

#include <string>

/// The path of a file in a folder. Only the folder of a whole drive ends with a separator of its own.
std::wstring PathIn(const std::wstring& folder, const std::wstring& file);

/// True if a directory search for exactly this path finds an ordinary file. Folders, hidden files and system files do
/// not count.
bool FileExists(const std::wstring& path);
