#pragma once

#include "platform/linux/base/LoopThread.h"
#include "platform/linux/source/FocusProvider.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Uses the focus provider of a display on a thread of its own, as a display that has stopped to answer holds
/// up whoever asks it. While it does, no application is focused, and no window comes to the front. Main
/// thread only.
class DisplayFocusProvider : public FocusProvider {
  public:
    using Connect = std::function<std::unique_ptr<FocusProvider>()>;

    /// `connect` makes the provider, on the thread that is to be the only one that uses it; null: the display
    /// shows no windows. A thread that hangs outlives this object, so `connect`, which is kept as long as the
    /// provider, owns what the two use.
    explicit DisplayFocusProvider(Connect connect);
    ~DisplayFocusProvider() override;
    DisplayFocusProvider(const DisplayFocusProvider &) = delete;
    DisplayFocusProvider &operator=(const DisplayFocusProvider &) = delete;

    [[nodiscard]] std::string name() override;
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override;
    void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) override;
    bool raise(const RaiseRequest &request) override;
    [[nodiscard]] std::optional<std::string> announceStartup(const StartupAnnouncement &startup) override;
    void withdrawStartup(const std::string &startupID) override;

  private:
    /// What the thread uses.
    struct Display {
        Connect connect;
        std::unique_ptr<FocusProvider> provider; ///< null: not connected
    };

    template <typename Answer>
    std::optional<Answer> ask(std::function<Answer(FocusProvider &)> question);
    void tell(std::function<void(FocusProvider &)> message);
    [[nodiscard]] std::function<void()> onMainThread(void (DisplayFocusProvider::*call)());
    void focusChanged() { (void)frontmost(); }
    void ended() { displayEnded(); }

    const std::shared_ptr<Display> display;
    std::function<void(std::shared_ptr<RunningApplication>)> observer;
    std::shared_ptr<RunningApplication> observed; ///< what the observer was told last
    std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
    LoopThread thread;
};

} // namespace fernhop::freedesktop
