#include "platform/linux/source/XWindows.h"

#include "platform/linux/base/Text.h"

#include <unistd.h>
#include <xcb/res.h>

#include <algorithm>
#include <array>
#include <climits>
#include <string_view>

namespace fernhop::freedesktop {

namespace {

/// In units of four bytes. Names beyond it are no names; window lists beyond it are cut.
constexpr std::uint32_t longestText = 256;
constexpr std::uint32_t longestList = 4096;

/// WM_CLASS holds two texts, each ended by a zero byte.
std::vector<std::string> classNames(std::string_view value) {
    auto names = nonEmptyPieces(value, '\0');
    names.resize(std::min<std::size_t>(names.size(), 2));
    return {names.begin(), names.end()};
}

std::string hostName() {
    std::array<char, HOST_NAME_MAX + 1> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string();
}

} // namespace

/// The requests about a window whose replies have not been read yet.
struct XWindows::Requests {
    xcb_window_t window;
    xcb_get_property_cookie_t windowClass, type, processID, clientMachine, gtkApplicationID, kdeDesktopFile;
    xcb_res_query_client_ids_cookie_t client;
};

XWindows::XWindows(const XConnection &server)
    : connection(server), atoms(internAtoms(server)), hasClientPids(serverHasClientPids(server)) {}

XWindows::Atoms XWindows::internAtoms(const XConnection &server) {
    return {server.atom("_NET_ACTIVE_WINDOW"),
            server.atom("_NET_CLIENT_LIST"),
            server.atom("_NET_CLIENT_LIST_STACKING"),
            server.atom("_NET_WM_WINDOW_TYPE"),
            server.atom("_NET_WM_WINDOW_TYPE_DOCK"),
            server.atom("_NET_WM_WINDOW_TYPE_DESKTOP"),
            server.atom("_NET_WM_PID"),
            server.atom("_GTK_APPLICATION_ID"),
            server.atom("_KDE_NET_WM_DESKTOP_FILE"),
            server.atom("UTF8_STRING")};
}

/// The X-Resource extension knows the client's process from 1.2.
bool XWindows::serverHasClientPids(const XConnection &server) {
    const auto *const extension = xcb_get_extension_data(server.get(), &xcb_res_id);
    if (!extension || !extension->present)
        return false;
    const auto cookie = xcb_res_query_version(server.get(), 1, 2);
    const XPointer<xcb_res_query_version_reply_t> reply(
        xcb_res_query_version_reply(server.get(), cookie, nullptr));
    return reply && (reply->server_major > 1 || (reply->server_major == 1 && reply->server_minor >= 2));
}

xcb_get_property_cookie_t XWindows::requestProperty(xcb_window_t window, xcb_atom_t property) const {
    return xcb_get_property(connection.get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                            window == connection.root() ? longestList : longestText);
}

XPointer<xcb_get_property_reply_t> XWindows::reply(xcb_get_property_cookie_t cookie) const {
    return XPointer<xcb_get_property_reply_t>(xcb_get_property_reply(connection.get(), cookie, nullptr));
}

std::string XWindows::text(xcb_get_property_cookie_t cookie) const {
    const auto answer = reply(cookie);
    if (!answer || answer->format != 8 || answer->bytes_after > 0 ||
        (answer->type != XCB_ATOM_STRING && answer->type != atoms.utf8String))
        return {};
    return {static_cast<const char *>(xcb_get_property_value(answer.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(answer.get()))};
}

std::vector<std::uint32_t> XWindows::numbers(xcb_get_property_cookie_t cookie, xcb_atom_t type) const {
    const auto answer = reply(cookie);
    if (!answer || answer->format != 32 || answer->type != type)
        return {};
    const auto *const first = static_cast<const std::uint32_t *>(xcb_get_property_value(answer.get()));
    return {first, first + xcb_get_property_value_length(answer.get()) / 4};
}

xcb_window_t XWindows::active() const {
    const auto windows = numbers(requestProperty(connection.root(), atoms.activeWindow), XCB_ATOM_WINDOW);
    // The root window belongs to no application, and we need its events.
    return windows.empty() || windows.front() == connection.root() ? xcb_window_t{XCB_WINDOW_NONE}
                                                                   : windows.front();
}

std::vector<xcb_window_t> XWindows::managed() const {
    const auto stacking = requestProperty(connection.root(), atoms.clientListStacking);
    const auto mapping = requestProperty(connection.root(), atoms.clientList);
    auto stacked = numbers(stacking, XCB_ATOM_WINDOW);
    auto mapped = numbers(mapping, XCB_ATOM_WINDOW);
    return stacked.empty() ? mapped : stacked;
}

std::vector<XWindow> XWindows::describe(const std::vector<xcb_window_t> &windows) const {
    std::vector<Requests> allRequests;
    for (const auto window : windows)
        allRequests.push_back(request(window));
    std::vector<XWindow> described;
    for (const auto &requests : allRequests)
        described.push_back(description(requests));
    return described;
}

XWindows::Requests XWindows::request(xcb_window_t window) const {
    Requests requests{window,
                      requestProperty(window, XCB_ATOM_WM_CLASS),
                      requestProperty(window, atoms.windowType),
                      requestProperty(window, atoms.processID),
                      requestProperty(window, XCB_ATOM_WM_CLIENT_MACHINE),
                      requestProperty(window, atoms.gtkApplicationID),
                      requestProperty(window, atoms.kdeDesktopFile),
                      {}};
    const xcb_res_client_id_spec_t process{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    if (hasClientPids)
        requests.client = xcb_res_query_client_ids(connection.get(), 1, &process);
    return requests;
}

XWindow XWindows::description(const Requests &requests) const {
    XWindow window;
    window.id = requests.window;
    window.identity.names = classNames(text(requests.windowClass));
    window.identity.pid = process(requests);
    for (const auto cookie : {requests.gtkApplicationID, requests.kdeDesktopFile})
        if (auto id = text(cookie); !id.empty())
            window.identity.applicationIDs.push_back(std::move(id));
    const auto types = numbers(requests.type, XCB_ATOM_ATOM);
    window.isPartOfDesktop =
        !types.empty() && (types.front() == atoms.typeDock || types.front() == atoms.typeDesktop);
    return window;
}

/// The server knows the process at the other end of the connection; the property is a claim, and inside of a
/// sandbox with process numbers of its own a wrong one.
std::optional<pid_t> XWindows::process(const Requests &requests) const {
    const auto claimed = numbers(requests.processID, XCB_ATOM_CARDINAL);
    const auto machine = text(requests.clientMachine);
    if (hasClientPids)
        return clientProcess(requests);
    const bool isOurs = !claimed.empty() && claimed.front() > 0 && claimed.front() <= INT_MAX &&
                        !machine.empty() && machine == hostName();
    return isOurs ? std::optional(static_cast<pid_t>(claimed.front())) : std::nullopt;
}

std::optional<pid_t> XWindows::clientProcess(const Requests &requests) const {
    const XPointer<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection.get(), requests.client, nullptr));
    if (!reply)
        return std::nullopt;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        const bool isProcess = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isProcess && xcb_res_client_id_value_value_length(ids.data) > 0) {
            const std::uint32_t pid = *xcb_res_client_id_value_value(ids.data);
            return pid > 0 && pid <= INT_MAX ? std::optional(static_cast<pid_t>(pid)) : std::nullopt;
        }
    }
    return std::nullopt;
}

void XWindows::activate(xcb_window_t window) const {
    constexpr std::uint32_t pager = 2;
    xcb_client_message_event_t message{};
    message.format = 32;
    message.window = window;
    message.type = atoms.activeWindow;
    message.data.data32[0] = pager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    connection.sendToRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, message);
    connection.flush();
}

void XWindows::watchProperties(xcb_window_t window, bool watch) const {
    const std::uint32_t mask = watch ? XCB_EVENT_MASK_PROPERTY_CHANGE : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &mask);
    connection.flush();
}

bool XWindows::isIdentityProperty(xcb_atom_t property) const {
    const std::array identity{xcb_atom_t{XCB_ATOM_WM_CLASS}, atoms.gtkApplicationID, atoms.kdeDesktopFile,
                              atoms.windowType, atoms.processID};
    return std::ranges::find(identity, property) != identity.end();
}

} // namespace fernhop::freedesktop
