#pragma once

#include <windows.h>

#include <atomic>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A message box as the user saw it.
struct SeenMessageBox {
    std::wstring title;
    std::wstring text;
    std::vector<int> buttons; ///< IDOK, IDYES, ... from left to right
    int defaultButton = 0;    ///< the button that Enter presses
    bool hasIcon = false;
    bool isCritical = false; ///< the icon is the stop sign
    HWND owner = nullptr;
};

/// The user who answers message boxes. While it lives, every box that the thread of its making shows is read, kept and
/// answered: by the answers given, in their order, then by the box's default button.
class MessageBoxWatcher {
public:
    MessageBoxWatcher();
    ~MessageBoxWatcher();
    MessageBoxWatcher(const MessageBoxWatcher&) = delete;
    MessageBoxWatcher& operator=(const MessageBoxWatcher&) = delete;

    /// IDOK, IDYES, IDNO or IDCANCEL for the next box that has no answer yet.
    void AnswerNext(int button);

    std::vector<SeenMessageBox> Seen() const;
    std::vector<std::wstring> Texts() const;

private:
    void Watch();
    HWND FindBox() const;
    void ReadAndAnswer(HWND box);

    const DWORD watchedThread_ = GetCurrentThreadId();
    mutable std::mutex mutex_; ///< guards answers_ and seen_
    std::deque<int> answers_;
    std::vector<SeenMessageBox> seen_;
    std::atomic<bool> stopping_ = false;
    std::thread thread_;
};
