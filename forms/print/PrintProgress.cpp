#include "forms/print/PrintProgress.h"

#include "platform/windows/UnhandledError.h"

#include <utility>

namespace {

constexpr std::chrono::milliseconds shortPrint(500); // without a window
constexpr std::chrono::milliseconds betweenLooks(200);

} // namespace

PrintProgress::PrintProgress(Form& over, int daysOfCopy, int copies, std::function<void()> cancel)
    : over_(over), daysOfCopy_(daysOfCopy), days_(daysOfCopy * copies), cancel_(std::move(cancel)),
      busy_(std::in_place), nextLook_(Clock::now() + shortPrint)
{
}

PrintProgress::~PrintProgress()
{
    if (window_) {
        Guarded([this] { window_->Unload(); });
    }
}

void PrintProgress::DayIsPrinted(std::int16_t page)
{
    ++daysPrinted_;
    const bool onFirstPage = page == 1 && daysPrinted_ <= daysOfCopy_;
    if (onFirstPage || Clock::now() < nextLook_) {
        return;
    }
    if (!window_) {
        OpenWindow();
    }
    window_->ShowPage(page, daysPrinted_);
    DoEvents();
    nextLook_ = Clock::now() + betweenLooks;
}

void PrintProgress::OpenWindow()
{
    SettleWindows();
    busy_.reset();
    window_ = Instance<frmProgress>();
    window_->Load();
    window_->ProgressBar1.SetMaximum(days_);
    window_->Cancelled.Connect(cancel_);
    window_->ShowOver(over_.shared_from_this());
}
