#pragma once

#include <windows.h>

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A message box that was shown.
struct SeenMessageBox {
    std::wstring title;
    std::wstring text;
    std::vector<int> buttons; ///< IDOK, IDYES, ... from left to right
    int defaultButton = 0;    ///< the button that Enter presses
    bool hasIcon = false;
    bool isCritical = false; ///< the icon is the stop sign
    HWND owner = nullptr;
};

/// Records and answers message boxes. During its lifetime it answers every box of the thread that created it: with the
/// given answers in their order, then with the default button.
class MessageBoxWatcher {
public:
    MessageBoxWatcher();
    ~MessageBoxWatcher();
    MessageBoxWatcher(const MessageBoxWatcher&) = delete;
    MessageBoxWatcher& operator=(const MessageBoxWatcher&) = delete;

    /// IDOK, IDYES, IDNO or IDCANCEL for the next box that has no answer yet.
    void AnswerNext(int button);

    /// Leaves the next box that has no answer yet open, and runs the action in another thread. The action must close
    /// the box.
    void LeaveNextOpenWhile(std::function<void()> action);

    std::vector<SeenMessageBox> Seen() const;
    std::vector<std::wstring> Texts() const;

private:
    struct Answer {
        int button = 0;
        std::function<void()> action = {}; ///< instead of the button
    };

    void Watch();
    HWND FindBox() const;
    void ReadAndAnswer(HWND box);

    const DWORD watchedThread_ = GetCurrentThreadId();
    mutable std::mutex mutex_; ///< guards answers_ and seen_
    std::deque<Answer> answers_;
    std::vector<SeenMessageBox> seen_;
    std::atomic<bool> stopping_ = false;
    std::vector<HWND> leftOpen_;       ///< used by the watching thread only
    std::vector<std::thread> actions_; ///< used by the watching thread only
    std::thread thread_;
};
