#include "platform/linux/launch/BusActivation.h"

#include "platform/linux/base/GPointer.h"

#include <algorithm>
#include <array>
#include <memory>

namespace fernhop::freedesktop {
namespace {

using Kind = BusActivationResult::Kind;
using Ended = std::function<void(const BusActivationResult &)>;

// The bus answers these itself, or the application before it looked at the links.
constexpr std::array unavailableErrors = {
    G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER, G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND,
    G_DBUS_ERROR_UNKNOWN_METHOD,  G_DBUS_ERROR_UNKNOWN_INTERFACE, G_DBUS_ERROR_UNKNOWN_OBJECT,
};

Kind kindOf(const GError &error) {
    const bool unavailable = std::any_of(unavailableErrors.begin(), unavailableErrors.end(), [&](auto code) {
        return g_error_matches(&error, G_DBUS_ERROR, code) != FALSE;
    });
    return unavailable ? Kind::unavailable : Kind::failed;
}

void addToken(GVariantBuilder &data, const char *key, const std::optional<std::string> &token) {
    if (token && g_utf8_validate(token->c_str(), static_cast<gssize>(token->size()), nullptr))
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

void openEnded(GObject *source, GAsyncResult *result, gpointer data) {
    const std::unique_ptr<Ended> ended(static_cast<Ended *>(data));
    GError *error = nullptr;
    const GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error));
    if (error == nullptr)
        return (*ended)({Kind::opened, {}});
    const auto kind = kindOf(*error);
    g_dbus_error_strip_remote_error(error);
    const GErrorPointer failure(error);
    (*ended)({kind, failure->message});
}

void later(Ended ended) {
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) {
            (*static_cast<Ended *>(data))({Kind::unavailable, {}});
            return G_SOURCE_REMOVE;
        },
        new Ended(std::move(ended)), [](gpointer data) { delete static_cast<Ended *>(data); });
}

} // namespace

std::string applicationObjectPath(const std::string &busName) {
    std::string path = "/" + busName;
    std::replace(path.begin(), path.end(), '.', '/');
    std::replace(path.begin(), path.end(), '-', '_');
    return path;
}

void openThroughBus(GDBusConnection *bus, const std::string &desktopID, const std::vector<std::string> &urls,
                    const LaunchTokens &tokens, Ended ended) {
    const auto path = applicationObjectPath(desktopID);
    if (!g_dbus_is_name(desktopID.c_str()) || !g_variant_is_object_path(path.c_str()))
        return later(std::move(ended));
    // Starting an application has no time limit of ours: the bus has one, and a link that is given up here
    // could still be opened afterwards.
    g_dbus_connection_call(bus, desktopID.c_str(), path.c_str(), "org.freedesktop.Application", "Open",
                           openArguments(urls, tokens), nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr,
                           openEnded, new Ended(std::move(ended)));
}

} // namespace fernhop::freedesktop
