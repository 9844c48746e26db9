#pragma once

#include "platform/LinkEvents.h"

#include <utility>
#include <vector>

namespace fernhop::fakes {

/// Delivers links as the system would. What arrives before a handler is set waits for it.
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

    std::vector<LinkEventDescriptor> replies; ///< what the handler left of each reply

  private:
    std::vector<LinkEventDescriptor> waiting;
};

} // namespace fernhop::fakes
