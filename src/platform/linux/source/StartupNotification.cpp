#include "platform/linux/source/StartupNotification.h"

#include "platform/linux/source/XConnection.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <random>
#include <string_view>

namespace fernhop::freedesktop {
namespace {

constexpr std::size_t pieceSize = 20;

/// A window on the display that messages come from.
class Messenger {
  public:
    explicit Messenger(const std::string &display) : connection(display) {
        if (!isUsable())
            return;
        window = xcb_generate_id(connection.get());
        const std::array<std::uint32_t, 2> values = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
        xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -100, -100, 1, 1,
                          0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    }

    [[nodiscard]] bool isUsable() const { return connection.isAlive(); }

    /// The display's clock, in milliseconds: it comes with the event of a property that does not change.
    [[nodiscard]] xcb_timestamp_t serverTime() const {
        xcb_change_property(connection.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                            8, 0, "");
        connection.flush();
        while (const XPointer<xcb_generic_event_t> event{xcb_wait_for_event(connection.get())}) {
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
                return reinterpret_cast<const xcb_property_notify_event_t &>(*event).time;
        }
        return XCB_CURRENT_TIME;
    }

    /// Sends a text, its end included, in pieces.
    void broadcast(const std::string &text) const {
        auto type = connection.atom("_NET_STARTUP_INFO_BEGIN");
        const auto next = connection.atom("_NET_STARTUP_INFO");
        for (std::size_t at = 0; at <= text.size(); at += pieceSize, type = next) {
            const auto piece = std::string_view(text).substr(at, pieceSize);
            xcb_client_message_event_t message = {};
            message.format = 8;
            message.window = window;
            message.type = type;
            std::ranges::copy(piece, std::begin(message.data.data8));
            connection.sendToRoot(XCB_EVENT_MASK_PROPERTY_CHANGE, message);
        }
        // A reply shows that the messages have been sent before the connection closes.
        (void)connection.atom("_NET_STARTUP_INFO");
    }

  private:
    XConnection connection;
    xcb_window_t window = XCB_WINDOW_NONE;
};

std::string quoted(std::string_view value) {
    std::string result = "\"";
    for (const char character : value) {
        if (character == '"' || character == '\\')
            result.push_back('\\');
        if (character != '\0')
            result.push_back(character);
    }
    return result + '"';
}

std::string makeStartupID(const std::string &desktopID, xcb_timestamp_t time) {
    std::random_device device;
    return "fernhop-" + std::to_string(getpid()) + "-" + std::to_string(device()) + "-" + desktopID +
           "_TIME" + std::to_string(time);
}

} // namespace

std::string startupMessage(const std::string &startupID, const StartupAnnouncement &announcement) {
    auto text = "new: ID=" + quoted(startupID) + " NAME=" + quoted(announcement.name) +
                " SCREEN=0 APPLICATION_ID=" + quoted(announcement.desktopID + ".desktop");
    if (!announcement.windowClass.empty())
        text += " WMCLASS=" + quoted(announcement.windowClass);
    return text;
}

std::optional<std::string> announceStartup(const std::string &display,
                                           const StartupAnnouncement &announcement) {
    const Messenger messenger(display);
    if (!messenger.isUsable())
        return std::nullopt;
    const auto startupID = makeStartupID(announcement.desktopID, messenger.serverTime());
    messenger.broadcast(startupMessage(startupID, announcement));
    return startupID;
}

void withdrawStartup(const std::string &display, const std::string &startupID) {
    if (const Messenger messenger(display); messenger.isUsable())
        messenger.broadcast("remove: ID=" + quoted(startupID));
}

} // namespace fernhop::freedesktop
