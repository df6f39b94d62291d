#pragma once

#include <functional>
#include <utility>

/// An event of a control, with at most one handler, which the form connects in Wire().
template <class... Arguments>
class Event {
public:
    void Connect(std::function<void(Arguments...)> handler) { handler_ = std::move(handler); }

    /// Calls the handler, if there is one. Its exceptions reach the caller. A handler may unload the form of the event,
    /// so the caller must keep the form alive until the handler returns.
    void operator()(Arguments... arguments) const
    {
        if (handler_) {
            handler_(arguments...);
        }
    }

private:
    std::function<void(Arguments...)> handler_;
};
