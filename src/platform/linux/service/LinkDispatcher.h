#pragma once

#include "platform/LinkEvents.h"
#include "platform/linux/launch/LinkDelivery.h"

#include <functional>
#include <memory>
#include <vector>

namespace fernhop::freedesktop {

/// Hands links, however they reached this process, to the controller as GetURL events. Main thread only.
class LinkDispatcher : public LinkEvents {
  public:
    /// `arrived` is told of each sender before its first link is handled; it may be empty. `current` outlives
    /// this object.
    LinkDispatcher(CurrentDelivery &current, std::function<void(const LinkSender &)> arrived);

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

    /// Hands over each link, in order; they wait while there is no handler. `dealtWith` is called when all of
    /// them are with their browsers or dropped, possibly before this returns.
    void deliver(DeliveredLinks links, std::function<void()> dealtWith);

  private:
    struct Waiting {
        DeliveredLinks links;
        std::function<void()> dealtWith;
    };

    void dispatch(Waiting waiting);

    CurrentDelivery &current;
    std::function<void(const LinkSender &)> arrived;
    LinkEventHandler handler;
    std::vector<Waiting> waiting;
};

} // namespace fernhop::freedesktop
