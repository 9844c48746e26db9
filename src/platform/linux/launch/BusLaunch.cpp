#include "platform/linux/launch/BusLaunch.h"

#include "platform/LogLine.h"
#include "platform/linux/base/CallSoon.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/source/ApplicationUnits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <utility>

namespace fernhop::freedesktop {
namespace {

// The reason is the application's own text, and may be as long as a message on the bus.
constexpr std::size_t longestReason = 1024;

using Ended = std::function<void(const Result<BusOpening> &)>;

bool isUtf8(const std::string &text) {
    return g_utf8_validate(text.c_str(), static_cast<gssize>(text.size()), nullptr) != FALSE;
}

/// "/org/example/Web_2" for "org.example.Web-2" (Desktop Entry Specification, "D-Bus Activation").
std::string objectPathOf(std::string busName) {
    std::ranges::replace(busName, '.', '/');
    std::ranges::replace(busName, '-', '_');
    return "/" + busName;
}

void addToken(GVariantBuilder &data, const char *key, const std::optional<std::string> &token) {
    if (token && isUtf8(*token))
        g_variant_builder_add(&data, "{sv}", key, g_variant_new_string(token->c_str()));
}

GVariant *openArguments(const std::vector<std::string> &urls, const LaunchTokens &tokens) {
    GVariantBuilder links;
    g_variant_builder_init(&links, G_VARIANT_TYPE_STRING_ARRAY);
    for (const auto &url : urls)
        g_variant_builder_add(&links, "s", url.c_str());
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    addToken(data, "activation-token", tokens.activationToken);
    addToken(data, "desktop-startup-id", tokens.startupID);
    return g_variant_new("(asa{sv})", &links, &data);
}

// The bus sends these errors itself, or the application before it looks at the links.
bool isUnavailable(const GError &error) {
    constexpr std::array codes = {
        G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER, G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND,
        G_DBUS_ERROR_UNKNOWN_METHOD,  G_DBUS_ERROR_UNKNOWN_INTERFACE, G_DBUS_ERROR_UNKNOWN_OBJECT,
    };
    return error.domain == G_DBUS_ERROR && std::ranges::find(codes, error.code) != codes.end();
}

void openEnded(GObject *bus, GAsyncResult *result, gpointer data) {
    const std::unique_ptr<Ended> ended(static_cast<Ended *>(data));
    GError *error = nullptr;
    const GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    if (error == nullptr)
        return (*ended)(BusOpening::opened);
    const GErrorPointer failure(error);
    if (isUnavailable(*error))
        return (*ended)(BusOpening::unavailable);
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
        return (*ended)(Failure{"The application does not answer"});
    g_dbus_error_strip_remote_error(error);
    (*ended)(Failure{shortenedLogLine(error->message, longestReason)});
}

std::string randomDigits() {
    std::random_device device;
    std::array<char, 17> text{};
    g_snprintf(text.data(), text.size(), "%08x%08x", device(), device());
    return text.data();
}

GVariant *scopeProperties(pid_t process, const std::string &desktopID) {
    const auto processID = static_cast<std::uint32_t>(process);
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a(sv)"));
    const auto description = "Link opened in " + desktopID;
    g_variant_builder_add(&properties, "(sv)", "Description", g_variant_new_string(description.c_str()));
    g_variant_builder_add(&properties, "(sv)", "PIDs",
                          g_variant_new_fixed_array(G_VARIANT_TYPE_UINT32, &processID, 1, sizeof processID));
    g_variant_builder_add(&properties, "(sv)", "CollectMode", g_variant_new_string("inactive-or-failed"));
    return g_variant_builder_end(&properties);
}

} // namespace

void openThroughBus(GDBusConnection *bus, const std::string &desktopID, const std::vector<std::string> &urls,
                    const LaunchTokens &tokens, Ended ended, std::chrono::milliseconds longestWait) {
    const auto path = objectPathOf(desktopID);
    if (!g_dbus_is_name(desktopID.c_str()) || !g_variant_is_object_path(path.c_str()))
        return callSoon([ended = std::move(ended)] { ended(BusOpening::unavailable); });
    g_dbus_connection_call(bus, desktopID.c_str(), path.c_str(), "org.freedesktop.Application", "Open",
                           openArguments(urls, tokens), nullptr, G_DBUS_CALL_FLAGS_NONE,
                           static_cast<int>(longestWait.count()), nullptr, openEnded,
                           new Ended(std::move(ended)));
}

void moveToLaunchScope(GDBusConnection *bus, pid_t process, const std::string &desktopID) {
    // The identifier is a file name and may hold any byte; a bus text may not.
    if (!isUtf8(desktopID))
        return;
    const auto name = launchScopeName(desktopID, randomDigits());
    g_dbus_connection_call(bus, "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                           "org.freedesktop.systemd1.Manager", "StartTransientUnit",
                           g_variant_new("(ss@a(sv)@a(sa(sv)))", name.c_str(), "fail",
                                         scopeProperties(process, desktopID),
                                         g_variant_new_array(G_VARIANT_TYPE("(sa(sv))"), nullptr, 0)),
                           nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
}

} // namespace fernhop::freedesktop
