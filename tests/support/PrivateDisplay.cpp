#include "support/PrivateDisplay.h"

#include "support/ReadyPipe.h"

#include <signal.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace fernhop::support {

namespace {

/// Window managers that follow the desktop's conventions set this property on the root window when they are
/// ready.
bool hasWindowManager(const std::string &display) {
    constexpr std::string_view property = "_NET_SUPPORTING_WM_CHECK";
    xcb_connection_t *connection = xcb_connect(display.c_str(), nullptr);
    bool found = false;
    const auto atomCookie = xcb_intern_atom(connection, 1, property.size(), property.data());
    auto *const atom = xcb_intern_atom_reply(connection, atomCookie, nullptr);
    if (atom && atom->atom != XCB_ATOM_NONE) {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        const auto cookie = xcb_get_property(connection, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1);
        auto *const value = xcb_get_property_reply(connection, cookie, nullptr);
        found = value && xcb_get_property_value_length(value) > 0;
        std::free(value);
    }
    std::free(atom);
    xcb_disconnect(connection);
    return found;
}

} // namespace

PrivateDisplay::PrivateDisplay(const TemporaryHome &home) {
    ReadyPipe ready;
    Command serverCommand{{"Xvfb", "-displayfd", std::to_string(ready.writer()), "-screen", "0",
                           "1280x800x24", "-nolisten", "tcp", "-noreset"},
                          home.environment()};
    serverCommand.keptDescriptors = {ready.writer()};
    server = std::make_unique<ChildProcess>(serverCommand);
    const std::string number = ready.readLine();
    if (number.empty())
        throw std::runtime_error("Xvfb did not start");
    displayName = ":" + number;
    windowManager = std::make_unique<ChildProcess>(Command{{"openbox"}, home.environment() + environment()});
    if (!waitUntil([this] { return hasWindowManager(displayName); }))
        throw std::runtime_error("openbox did not start");
}

void PrivateDisplay::kill() {
    server->signal(SIGKILL);
    server->wait();
}

} // namespace fernhop::support
