// From a request for a dialog, as the menu makes it, to its window on the screen: beside a bare Qt program
// that shows a dialog of one label and one button, taking turns in one run. The program of the dialogs starts
// anew each time.

#include "desktop/links/LinkSession.h"
#include "platform/linux/base/GPointer.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gio/gio.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace fernhop;
using namespace fernhop::support;
using freedesktop::GObjectPointer;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int rounds = 25;

/// The windows that the window manager manages.
class ManagedWindows {
  public:
    explicit ManagedWindows(const std::string &display)
        : connection(xcb_connect(display.c_str(), nullptr), xcb_disconnect),
          root(xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root) {
        constexpr const char *name = "_NET_CLIENT_LIST";
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection.get(), xcb_intern_atom(connection.get(), 0, 16, name), nullptr),
            std::free);
        clientList = reply->atom;
    }

    [[nodiscard]] bool areShown() const {
        const Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(
                connection.get(),
                xcb_get_property(connection.get(), 0, root, clientList, XCB_ATOM_WINDOW, 0, 16), nullptr),
            std::free);
        return reply && xcb_get_property_value_length(reply.get()) > 0;
    }

  private:
    template <typename T>
    using Reply = std::unique_ptr<T, decltype(&std::free)>;

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection;
    xcb_window_t root;
    xcb_atom_t clientList = XCB_ATOM_NONE;
};

void requestDialog(GDBusConnection *bus) {
    g_dbus_connection_call(
        bus, "org.fernhop.Fernhop", "/org/fernhop/Fernhop", "org.fernhop.Fernhop", "Perform",
        g_variant_new("(^as@ay@a{sv})", std::vector<const char *>{"dialog", "feedback", nullptr}.data(),
                      g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, nullptr, 0, 1),
                      g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)),
        nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    g_dbus_connection_flush_sync(bus, nullptr, nullptr);
}

double millisecondsUntilShown(const ManagedWindows &windows, Clock::time_point start) {
    while (!windows.areShown())
        g_usleep(500);
    return Milliseconds(Clock::now() - start).count();
}

void print(const char *name, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    std::printf("%-44s median %7.1f ms   slowest %7.1f ms\n", name, times[times.size() / 2], times.back());
}

GObjectPointer<GDBusConnection> connectTo(const std::string &address) {
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return GObjectPointer<GDBusConnection>(
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
}

} // namespace

int main(int, char **arguments) {
    if (!PrivateDisplay::isAvailable() || !isInstalled("xdotool")) {
        std::puts("not measured: needs Xvfb, openbox and xdotool");
        return 0;
    }
    desktoptest::LinkSession session;
    const PrivateDisplay display(session.home);
    session.environment = session.environment + display.environment();
    session.startBus();
    session.startFernhop();
    const auto bus = connectTo(session.bus->address());
    const ManagedWindows windows(display.name());
    const auto bareDialog = std::filesystem::path(arguments[0]).parent_path() / "fernhop_bare_dialog";
    const auto haveGone = [&windows] { return !windows.areShown(); };
    std::vector<double> fernhop;
    std::vector<double> bare;
    for (int round = 0; round < rounds; ++round) {
        auto start = Clock::now();
        const auto program = session.start({bareDialog});
        bare.push_back(millisecondsUntilShown(windows, start));
        program->terminate();
        (void)waitUntil(haveGone);
        start = Clock::now();
        requestDialog(bus.get());
        fernhop.push_back(millisecondsUntilShown(windows, start));
        (void)session.run({"xdotool", "key", "Escape"});
        (void)waitUntil(haveGone);
        std::this_thread::sleep_for(std::chrono::milliseconds(300)); // the program ends
    }
    print("Fernhop's feedback dialog, from the request", fernhop);
    print("a bare Qt dialog program, from its start", bare);
    return 0;
}
