#pragma once

#include "platform/LinkEvents.h"

#include <utility>
#include <vector>

namespace fernhop::fakes {

/// Delivers links like the system. Links that arrive before a handler is set are queued.
class FakeLinkEvents : public LinkEvents {
  public:
    LinkEventHandler handler;
    FourCharCode eventClass = 0;
    FourCharCode eventID = 0;

    void setEventHandler(LinkEventHandler newHandler, FourCharCode newClass, FourCharCode newID) override {
        handler = std::move(newHandler);
        eventClass = newClass;
        eventID = newID;
        for (const auto &event : std::exchange(waiting, {}))
            deliver(event);
    }

    void deliver(const LinkEventDescriptor &event) {
        if (!handler) {
            waiting.push_back(event);
            return;
        }
        LinkEventDescriptor reply;
        handler(event, reply);
        replies.push_back(std::move(reply));
    }

    void deliver(const std::string &link) { deliver(LinkEventDescriptor::getUrl(link)); }

    std::vector<LinkEventDescriptor> replies; ///< each reply after the handler

  private:
    std::vector<LinkEventDescriptor> waiting;
};

} // namespace fernhop::fakes
