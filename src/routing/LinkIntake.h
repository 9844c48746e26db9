#pragma once

#include "platform/LinkEvents.h"
#include "platform/Url.h"

#include <functional>
#include <vector>

namespace fernhop {

/// Takes the links that the system delivers and holds back those that come before launch has finished. Main
/// thread only.
class LinkIntake {
  public:
    /// `route` is called for each link, in order of arrival.
    explicit LinkIntake(std::function<void(const Url &)> route);

    /// Takes the link out of a GetURL event. An event without one, or whose text is no URL, is ignored.
    void handleGetURLEvent(const LinkEventDescriptor &event);

    /// Routes the link at once when launch has finished, else keeps it.
    void enqueueURLForRouting(const Url &url);

    /// Routes the links that were kept.
    void processPendingURLs();

    /// From now on links are routed as they come; there is no way back.
    void finishLaunching() { launched = true; }
    [[nodiscard]] bool didFinishLaunching() const { return launched; }

    /// Links kept until launch has finished, in order of arrival.
    [[nodiscard]] const std::vector<Url> &pendingURLs() const { return pending; }

  private:
    std::function<void(const Url &)> route;
    std::vector<Url> pending;
    bool launched = false;
};

} // namespace fernhop
