#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace fernhop {

/// A code of four characters as in Apple Events; the first is in the highest byte.
using FourCharCode = std::uint32_t;

/// "GURL": both the class and the identifier of the event that delivers a link.
inline constexpr FourCharCode getUrlEventCode = 0x4755524C;
/// "----": the keyword of an event's direct object.
inline constexpr FourCharCode directObjectKeyword = 0x2D2D2D2D;

/// An event, or one parameter of it. A parameter may have no text.
struct LinkEventDescriptor {
    std::optional<std::string> stringValue;
    std::map<FourCharCode, LinkEventDescriptor> parameters;

    /// The parameter with this keyword, or null; it lives as long as the event.
    [[nodiscard]] const LinkEventDescriptor *paramDescriptorForKeyword(FourCharCode keyword) const {
        const auto found = parameters.find(keyword);
        return found == parameters.end() ? nullptr : &found->second;
    }

    /// The event that delivers one link.
    [[nodiscard]] static LinkEventDescriptor getUrl(std::string link) {
        return {std::nullopt, {{directObjectKeyword, {std::move(link), {}}}}};
    }
};

/// Receives the event and the reply to its sender.
using LinkEventHandler = std::function<void(const LinkEventDescriptor &event, LinkEventDescriptor &reply)>;

/// Delivers the links that other applications open. Main thread only; the handler is called on it.
class LinkEvents {
  public:
    virtual ~LinkEvents() = default;

    /// Sets the only handler of events with this class and identifier, until the process ends. Links that
    /// have already arrived are delivered to it.
    virtual void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) = 0;
};

} // namespace fernhop
