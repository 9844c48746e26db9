#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace fernhop {

/// A code of four characters, the first in the highest byte, as Apple Events use them.
using FourCharCode = std::uint32_t;

/// "GURL": both the class and the identifier of the event that carries a link.
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

/// Takes the event and the reply that goes back to the sender.
using LinkEventHandler = std::function<void(const LinkEventDescriptor &event, LinkEventDescriptor &reply)>;

/// Where links that other applications open arrive. Main thread only: the handler is called on it.
class LinkEvents {
  public:
    virtual ~LinkEvents() = default;

    /// Sets the one handler of events of this class and identifier; it stays until the process ends. Links
    /// that arrived before are delivered to it, none is lost.
    virtual void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) = 0;
};

} // namespace fernhop
