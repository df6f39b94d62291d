#pragma once

#include <functional>
#include <utility>

/// What a control tells its form. Each event has at most one handler; a form joins them in its Wire().
template <class... Arguments>
class Event {
public:
    void Connect(std::function<void(Arguments...)> handler) { handler_ = std::move(handler); }

    /// Runs the handler, if there is one. An error of the handler goes to the caller.
    void operator()(Arguments... arguments) const
    {
        // A handler may unload the form that holds this event: it runs from a copy.
        if (const auto handler = handler_) {
            handler(arguments...);
        }
    }

private:
    std::function<void(Arguments...)> handler_;
};
