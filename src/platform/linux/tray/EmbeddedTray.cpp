#include "platform/linux/tray/EmbeddedTray.h"

#include "platform/linux/base/CallSoon.h"
#include "platform/linux/source/XConnection.h"

#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr const char *selectionName = "_NET_SYSTEM_TRAY_S0"; // of the first screen
constexpr const char *managerName = "MANAGER";               // announces who manages a selection from now on
constexpr std::uint8_t sentFlag = 0x80;                      // of events that came from another client

template <typename Event>
const Event &as(const xcb_generic_event_t &event) {
    return reinterpret_cast<const Event &>(event);
}

void watch(const XConnection &connection, xcb_window_t window) {
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
}

} // namespace

/// The connection to the display, for the thread.
class XTray::Connection {
  public:
    using Found = std::function<void(bool isPresent)>;

    Connection(const std::string &display, Found whenFound) : server(display), found(std::move(whenFound)) {
        if (!server.isAlive())
            return;
        selection = server.atom(selectionName);
        manager = server.atom(managerName);
        // Before the question, so that a tray that comes in between is announced.
        watch(server, server.root());
        look();
        server.listen([this](const auto &event) { handle(event); }, [this] { found(false); });
    }

  private:
    void handle(const xcb_generic_event_t &event) {
        const auto kind = event.response_type & ~sentFlag;
        const bool isAnnounced = kind == XCB_CLIENT_MESSAGE &&
                                 as<xcb_client_message_event_t>(event).type == manager &&
                                 as<xcb_client_message_event_t>(event).data.data32[1] == selection;
        const bool isGone = kind == XCB_DESTROY_NOTIFY && owner != XCB_WINDOW_NONE &&
                            as<xcb_destroy_notify_event_t>(event).window == owner;
        if (isAnnounced || isGone)
            look();
    }

    /// Finds the window of the tray and watches it.
    void look() {
        // With the server held, the window cannot go between being found and being watched.
        xcb_grab_server(server.get());
        const auto cookie = xcb_get_selection_owner(server.get(), selection);
        const XPointer<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(server.get(), cookie, nullptr));
        owner = reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
        if (owner != XCB_WINDOW_NONE)
            watch(server, owner);
        xcb_ungrab_server(server.get());
        server.flush();
        found(owner != XCB_WINDOW_NONE);
    }

    XConnection server;
    const Found found;
    xcb_atom_t selection = XCB_ATOM_NONE;
    xcb_atom_t manager = XCB_ATOM_NONE;
    xcb_window_t owner = XCB_WINDOW_NONE;
};

XTray::XTray(const std::string &display, std::function<void()> whenChanged)
    : changed(std::move(whenChanged)), connection(std::make_shared<std::unique_ptr<Connection>>()) {
    const auto found = [this, watched = std::weak_ptr(alive)](bool isPresent) {
        callSoon([this, watched, isPresent] {
            if (!watched.expired() && std::exchange(present, isPresent) != isPresent)
                changed();
        });
    };
    thread.post([connection = connection, display, found] {
        *connection = std::make_unique<Connection>(display, found);
    });
}

XTray::~XTray() {
    thread.post([connection = connection] { connection->reset(); });
}

EmbeddedTray::EmbeddedTray(NotifierWatcher &notifierWatcher, EmbeddedTrayPlace trayPlace)
    : place(std::move(trayPlace)), watcher(notifierWatcher) {
    watcher.whenHostChanges([this] { update(); });
    update();
}

void EmbeddedTray::update() {
    if (place.display.empty())
        return;
    if (watcher.hasHost().value_or(true)) {
        delay.stop();
        icon.reset();
        tray.reset();
        return;
    }
    if (!tray)
        tray = std::make_unique<XTray>(place.display, [this] { update(); });
    if (!tray->isPresent()) {
        delay.stop();
        icon.reset();
    } else if (!icon && !delay.isRunning()) {
        // While a session starts the tray of a panel may be there before its StatusNotifier host; no program
        // is to be started for that moment.
        delay.start(place.patience, [this] { icon = place.showIcon(); });
    }
}

} // namespace fernhop::freedesktop
