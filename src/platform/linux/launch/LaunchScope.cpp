#include "platform/linux/launch/LaunchScope.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <random>

namespace fernhop::freedesktop {
namespace {

bool standsUnescaped(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_' || character == ':';
}

// Dashes part the components of the name, so one within a component is escaped; so is a dot at the start.
std::string escaped(const std::string &text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char character : text) {
        if (standsUnescaped(character) || (character == '.' && !result.empty())) {
            result.push_back(character);
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        result += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
    }
    return result;
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

std::string launchScopeName(const std::string &desktopID, const std::string &random) {
    return "app-fernhop-" + escaped(desktopID) + "-" + random + ".scope";
}

void moveToLaunchScope(GDBusConnection *bus, pid_t process, const std::string &desktopID) {
    // The identifier is a file name and may hold any byte; a bus text may not.
    if (!g_utf8_validate(desktopID.c_str(), static_cast<gssize>(desktopID.size()), nullptr))
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
