#include "platform/linux/service/LinkDispatcher.h"

#include <utility>

namespace fernhop::freedesktop {

LinkDispatcher::LinkDispatcher(CurrentDelivery &currentDelivery,
                               std::function<void(const LinkSender &)> whenArrived)
    : current(currentDelivery), arrived(std::move(whenArrived)) {}

void LinkDispatcher::setEventHandler(LinkEventHandler newHandler, FourCharCode eventClass,
                                     FourCharCode eventID) {
    // Links are the only events of this platform; another handler is for events that never come.
    if (eventClass != getUrlEventCode || eventID != getUrlEventCode)
        return;
    handler = std::move(newHandler);
}

void LinkDispatcher::deliver(DeliveredLinks delivered, std::function<void()> onHandled) {
    auto &[links, sender] = delivered;
    if (arrived)
        arrived(sender);
    auto delivery = std::make_shared<LinkDelivery>(sender.tokens, std::move(onHandled));
    // A link may arrive while another is routed, from a loop that runs within: put back what was.
    const auto before = std::exchange(current.delivery, delivery);
    for (auto &link : links) {
        LinkEventDescriptor reply;
        handler(LinkEventDescriptor::getUrl(std::move(link)), reply);
    }
    current.delivery = before;
}

} // namespace fernhop::freedesktop
