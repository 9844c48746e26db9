#include "platform/linux/source/XConnection.h"

#include <algorithm>
#include <utility>

namespace fernhop::freedesktop {

/// GLib allocates it, and uses the first member.
struct XConnection::Source {
    GSource base;
    XConnection *owner;
    gpointer descriptor;
};

XConnection::XConnection(const std::string &display) : connection(xcb_connect(display.c_str(), nullptr)) {
    if (isAlive())
        rootWindow = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

XConnection::~XConnection() {
    if (source) {
        g_source_destroy(&source->base);
        g_source_unref(&source->base);
    }
    free(next);
    xcb_disconnect(connection);
}

bool XConnection::isAlive() const {
    return xcb_connection_has_error(connection) == 0;
}

xcb_atom_t XConnection::atom(const std::string &name) const {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void XConnection::sendToRoot(std::uint32_t eventMask, xcb_client_message_event_t message) const {
    message.response_type = XCB_CLIENT_MESSAGE;
    xcb_send_event(connection, 0, rootWindow, eventMask, reinterpret_cast<const char *>(&message));
}

void XConnection::listen(std::function<void(const xcb_generic_event_t &)> event, std::function<void()> lost) {
    static GSourceFuncs functions{prepare, check, dispatch, nullptr, nullptr, nullptr};
    onEvent = std::move(event);
    onLost = std::move(lost);
    GSource *const base = g_source_new(&functions, sizeof(Source));
    source = reinterpret_cast<Source *>(base);
    source->owner = this;
    source->descriptor = g_source_add_unix_fd(base, xcb_get_file_descriptor(connection),
                                              static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    g_source_attach(base, g_main_context_get_thread_default());
}

/// Waiting for a reply may have read events, too, and these do not make the socket readable again.
gboolean XConnection::prepare(GSource *base, gint *timeout) {
    *timeout = -1;
    return reinterpret_cast<Source *>(base)->owner->hasEvent();
}

gboolean XConnection::check(GSource *base) {
    auto *const own = reinterpret_cast<Source *>(base);
    return g_source_query_unix_fd(base, own->descriptor) != 0 || own->owner->hasEvent();
}

gboolean XConnection::dispatch(GSource *base, GSourceFunc, gpointer) {
    XConnection *const owner = reinterpret_cast<Source *>(base)->owner;
    owner->deliver();
    if (owner->isAlive())
        return G_SOURCE_CONTINUE;
    if (const auto lost = std::exchange(owner->onLost, nullptr))
        lost();
    return G_SOURCE_REMOVE;
}

bool XConnection::hasEvent() {
    xcb_flush(connection);
    if (!next)
        next = xcb_poll_for_queued_event(connection);
    return next || !isAlive();
}

void XConnection::deliver() {
    XPointer<xcb_generic_event_t> event(std::exchange(next, nullptr));
    if (!event)
        event.reset(xcb_poll_for_event(connection));
    for (; event; event.reset(xcb_poll_for_event(connection)))
        onEvent(*event);
}

} // namespace fernhop::freedesktop
