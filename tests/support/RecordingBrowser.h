#pragma once

#include "tests/support/TemporaryFolder.h"

#include <map>
#include <string>
#include <vector>

/// While it lives, web pages are opened by the given command; then by the machine's own again.
class BrowserCommand {
public:
    explicit BrowserCommand(const std::wstring& command);
    ~BrowserCommand();
    BrowserCommand(const BrowserCommand&) = delete;
    BrowserCommand& operator=(const BrowserCommand&) = delete;

private:
    std::map<std::wstring, std::wstring> former_; ///< by the key of the scheme
};

/// While it lives, the user's browser is a small program that writes down what it is asked to show.
class RecordingBrowser {
public:
    /// The addresses shown so far. The browser is a program of its own: ask until it has come.
    std::vector<std::string> Shown() const;

private:
    TemporaryFolder folder_;
    std::wstring record_ = folder_.File(L"shown");
    BrowserCommand command_{CommandWith(record_)};

    static std::wstring CommandWith(const std::wstring& record);
};

/// While it lives, the program that shall show web pages is missing.
class MissingBrowser {
    BrowserCommand command_{L"\"C:\\no such folder\\browser.exe\" \"%1\""};
};
