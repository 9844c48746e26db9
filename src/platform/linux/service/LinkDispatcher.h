#pragma once

#include "platform/LinkEvents.h"
#include "platform/linux/source/LinkDelivery.h"

#include <functional>

namespace fernhop::freedesktop {

/// Hands links, however they reached this process, to the controller as GetURL events. Main thread only.
class LinkDispatcher : public LinkEvents {
  public:
    /// `arrived` is told of each sender before its first link is handled; it may be empty. `current` outlives
    /// this object.
    LinkDispatcher(CurrentDelivery &current, std::function<void(const LinkSender &)> arrived);

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

    /// Hands over each link, in order; the handler has been set. `onHandled` is called when each link has
    /// been handed to a browser or dropped, possibly before this returns.
    void deliver(DeliveredLinks links, std::function<void()> onHandled);

  private:
    CurrentDelivery &current;
    std::function<void(const LinkSender &)> arrived;
    LinkEventHandler handler;
};

} // namespace fernhop::freedesktop
