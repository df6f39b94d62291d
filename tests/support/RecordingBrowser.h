#pragma once

#include "tests/support/TemporaryFolder.h"

#include <map>
#include <string>
#include <vector>

/// During its lifetime, this command opens web pages.
class BrowserCommand {
public:
    explicit BrowserCommand(const std::wstring& command);
    ~BrowserCommand();
    BrowserCommand(const BrowserCommand&) = delete;
    BrowserCommand& operator=(const BrowserCommand&) = delete;

private:
    std::map<std::wstring, std::wstring> former_; ///< by the key of the scheme
};

/// During its lifetime, this command opens HTML files.
class PageCommand {
public:
    explicit PageCommand(const std::wstring& command);
    ~PageCommand();
    PageCommand(const PageCommand&) = delete;
    PageCommand& operator=(const PageCommand&) = delete;

private:
    std::wstring former_; ///< the former file type of a page
};

/// During its lifetime, the default browser is a program that records the addresses that it gets.
class RecordingBrowser {
public:
    /// Marked: the command contains %1.
    enum class Place { Marked, None };

    explicit RecordingBrowser(Place place = Place::Marked);

    /// The command that starts it.
    const std::wstring& Command() const noexcept { return line_; }

    /// The addresses so far. The browser is another process: poll.
    std::vector<std::string> Shown() const;

private:
    TemporaryFolder folder_;
    std::wstring record_ = folder_.File(L"shown");
    std::wstring line_;
    BrowserCommand command_;
};

/// During its lifetime, the program of the default browser does not exist.
class MissingBrowser {
public:
    static constexpr const wchar_t* command = L"\"C:\\no such folder\\browser.exe\" \"%1\"";

private:
    BrowserCommand command_{command};
};
