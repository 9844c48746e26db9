#include "platform/linux/launch/StartupNotification.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string_view>

namespace fernhop::freedesktop {
namespace {

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};
struct Disconnect {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// The display with a window that messages come from.
class Messenger {
  public:
    explicit Messenger(const std::string &display)
        : connection(xcb_connect(display.c_str(), &screenNumber)), window(0) {
        if (usable())
            openWindow();
    }

    [[nodiscard]] bool usable() const { return xcb_connection_has_error(connection.get()) == 0; }

    /// The display's clock, in milliseconds: it comes with the event of a property that does not change.
    [[nodiscard]] xcb_timestamp_t serverTime() {
        xcb_change_property(connection.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                            8, 0, "");
        xcb_flush(connection.get());
        while (const auto event =
                   std::unique_ptr<xcb_generic_event_t, FreeReply>(xcb_wait_for_event(connection.get()))) {
            if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
                continue;
            xcb_property_notify_event_t notified;
            std::memcpy(&notified, event.get(), sizeof notified);
            return notified.time;
        }
        return XCB_CURRENT_TIME;
    }

    /// Sends a text, its end included, in pieces of twenty bytes.
    void broadcast(const std::string &text) {
        auto type = atom("_NET_STARTUP_INFO_BEGIN");
        const auto next = atom("_NET_STARTUP_INFO");
        for (std::size_t at = 0; at <= text.size(); at += pieceSize, type = next)
            sendPiece(type, std::string_view(text).substr(at, pieceSize));
        // The answer to a question shows that the messages are out before the connection closes.
        (void)atom("_NET_STARTUP_INFO");
    }

  private:
    static constexpr std::size_t pieceSize = 20;

    void openWindow() {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
        for (int number = 0; number < screenNumber && screens.rem > 1; ++number)
            xcb_screen_next(&screens);
        root = screens.data->root;
        window = xcb_generate_id(connection.get());
        const std::array<std::uint32_t, 2> values = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
        xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, root, -100, -100, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    }

    [[nodiscard]] xcb_atom_t atom(std::string_view name) {
        const auto cookie =
            xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(
            xcb_intern_atom_reply(connection.get(), cookie, nullptr));
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    void sendPiece(xcb_atom_t type, std::string_view piece) {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 8;
        message.window = window;
        message.type = type;
        std::copy(piece.begin(), piece.end(), std::begin(message.data.data8));
        xcb_send_event(connection.get(), 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&message));
    }

    int screenNumber = 0;
    Connection connection;
    xcb_window_t root = 0;
    xcb_window_t window;
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

std::optional<std::string> announceStartup(const StartupAnnouncement &announcement) {
    Messenger messenger(announcement.display);
    if (!messenger.usable())
        return std::nullopt;
    const auto startupID = makeStartupID(announcement.desktopID, messenger.serverTime());
    messenger.broadcast(startupMessage(startupID, announcement));
    return startupID;
}

void withdrawStartup(const std::string &display, const std::string &startupID) {
    if (Messenger messenger(display); messenger.usable())
        messenger.broadcast("remove: ID=" + quoted(startupID));
}

} // namespace fernhop::freedesktop
