#pragma once

#include "platform/LinkEvents.h"
#include "platform/Url.h"

#include <functional>
#include <vector>

namespace fernhop {

/// Receives the links that the system delivers and queues those that come before launch has finished. Main
/// thread only.
class LinkIntake {
  public:
    /// `route` is called for each link, in order of arrival.
    explicit LinkIntake(std::function<void(const Url &)> route);

    /// Handles the link of a GetURL event. An event without text, or with text that is not a URL, is ignored.
    void handleGetURLEvent(const LinkEventDescriptor &event);

    /// Routes the link at once if launch has finished, else queues it.
    void enqueueURLForRouting(const Url &url);

    /// Routes the queued links.
    void processPendingURLs();

    /// From now on links are routed at once. Cannot be undone.
    void finishLaunching() { launched = true; }
    [[nodiscard]] bool didFinishLaunching() const { return launched; }

    /// The queued links, in order of arrival.
    [[nodiscard]] const std::vector<Url> &pendingURLs() const { return pending; }

  private:
    std::function<void(const Url &)> route;
    std::vector<Url> pending;
    bool launched = false;
};

} // namespace fernhop
