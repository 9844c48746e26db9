#include "platform/linux/tray/EmbeddedTray.h"

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

XTray::XTray(const std::string &display, std::function<void()> whenChanged)
    : connection(display), changed(std::move(whenChanged)) {
    if (!connection.isAlive())
        return;
    selection = connection.atom(selectionName);
    manager = connection.atom(managerName);
    // Before the question, so that a tray that comes in between is announced.
    watch(connection, connection.root());
    (void)look();
    connection.listen([this](const auto &event) { handle(event); },
                      [this] {
                          owner = XCB_WINDOW_NONE;
                          changed();
                      });
}

void XTray::handle(const xcb_generic_event_t &event) {
    const auto kind = event.response_type & ~sentFlag;
    const bool isAnnounced = kind == XCB_CLIENT_MESSAGE &&
                             as<xcb_client_message_event_t>(event).type == manager &&
                             as<xcb_client_message_event_t>(event).data.data32[1] == selection;
    const bool isGone =
        kind == XCB_DESTROY_NOTIFY && as<xcb_destroy_notify_event_t>(event).window == owner && isPresent();
    if ((isAnnounced || isGone) && look())
        changed();
}

bool XTray::look() {
    const auto before = owner;
    // With the server held, the window cannot go between being found and being watched.
    xcb_grab_server(connection.get());
    const auto cookie = xcb_get_selection_owner(connection.get(), selection);
    const XPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection.get(), cookie, nullptr));
    owner = reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    if (isPresent())
        watch(connection, owner);
    xcb_ungrab_server(connection.get());
    connection.flush();
    return owner != before;
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
