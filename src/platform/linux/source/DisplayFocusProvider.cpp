#include "platform/linux/source/DisplayFocusProvider.h"

#include "platform/linux/base/CallSoon.h"

#include <utility>

namespace fernhop::freedesktop {

DisplayFocusProvider::DisplayFocusProvider(Connect connect)
    : display(std::make_shared<Display>(Display{std::move(connect), nullptr})) {
    thread.post([display = display, focusHasChanged = onMainThread(&DisplayFocusProvider::focusChanged),
                 hasEnded = onMainThread(&DisplayFocusProvider::ended)] {
        display->provider = display->connect();
        if (!display->provider)
            return;
        display->provider->observe([focusHasChanged](const auto &) { focusHasChanged(); });
        display->provider->onDisplayEnd(hasEnded);
    });
}

DisplayFocusProvider::~DisplayFocusProvider() {
    thread.post([display = display] { display->provider.reset(); });
}

/// What calls a member function on the main thread, as long as this object lives.
std::function<void()> DisplayFocusProvider::onMainThread(void (DisplayFocusProvider::*call)()) {
    return [this, call, watched = std::weak_ptr(alive)] {
        callSoon([this, call, watched] {
            if (!watched.expired())
                (this->*call)();
        });
    };
}

template <typename Answer>
std::optional<Answer> DisplayFocusProvider::ask(std::function<Answer(FocusProvider &)> question) {
    const auto answer = std::make_shared<std::optional<Answer>>();
    const bool hasAnswered = thread.perform([display = display, answer, question = std::move(question)] {
        if (display->provider)
            *answer = question(*display->provider);
    });
    return hasAnswered ? std::move(*answer) : std::nullopt;
}

void DisplayFocusProvider::tell(std::function<void(FocusProvider &)> message) {
    thread.post([display = display, message = std::move(message)] {
        if (display->provider)
            message(*display->provider);
    });
}

std::string DisplayFocusProvider::name() {
    return ask<std::string>([](auto &provider) { return provider.name(); }).value_or(linkSenderProvider);
}

// What changed the focus and what opened a link may have come at the same time: this is asked for each link,
// and the observer knows the answer before the link is handled.
std::shared_ptr<RunningApplication> DisplayFocusProvider::frontmost() {
    using Application = std::shared_ptr<RunningApplication>;
    auto front = ask<Application>([](auto &provider) { return provider.frontmost(); }).value_or(nullptr);
    if (std::exchange(observed, front) != front && front && observer)
        observer(front);
    return front;
}

void DisplayFocusProvider::observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) {
    observer = std::move(activated);
}

bool DisplayFocusProvider::raise(const RaiseRequest &request) {
    // One more request in the queue would raise a window long after the link.
    if (thread.hangs())
        return false;
    tell([request](auto &provider) { provider.raise(request); });
    return true;
}

std::optional<std::string> DisplayFocusProvider::announceStartup(const StartupAnnouncement &startup) {
    return ask<std::optional<std::string>>(
               [startup](auto &provider) { return provider.announceStartup(startup); })
        .value_or(std::nullopt);
}

void DisplayFocusProvider::withdrawStartup(const std::string &startupID) {
    tell([startupID](auto &provider) { provider.withdrawStartup(startupID); });
}

} // namespace fernhop::freedesktop
