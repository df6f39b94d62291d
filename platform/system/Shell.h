#pragma once

#include <string>

struct HWND__;

/// Opens a web address in the default browser. `owner` is the parent of any message of the shell. Returns false on
/// failure.
bool ShellOpen(HWND__* owner, const std::string& address);

/// Opens an HTML file in the default browser, at the element with this id, or at its beginning if the browser cannot be
/// started with the id. Returns false on failure.
bool ShellOpenPage(HWND__* owner, const std::wstring& path, const std::wstring& id);
