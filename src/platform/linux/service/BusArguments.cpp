#include "platform/linux/service/BusArguments.h"

#include "platform/linux/base/GPointer.h"

#include <limits>

namespace fernhop::freedesktop {
namespace {

std::string bytesOf(GVariant *bytes) {
    gsize length = 0;
    const auto *data = static_cast<const char *>(g_variant_get_fixed_array(bytes, &length, 1));
    std::string result(data == nullptr ? "" : data, data == nullptr ? 0 : length);
    if (!result.empty() && result.back() == '\0')
        result.pop_back();
    return result;
}

std::optional<std::string> textOf(GVariant *value) {
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_BYTESTRING))
        return bytesOf(value);
    if (!g_variant_is_of_type(value, G_VARIANT_TYPE_STRING))
        return std::nullopt;
    gsize length = 0;
    const char *text = g_variant_get_string(value, &length);
    return std::string(text, length);
}

std::optional<std::int64_t> integerOf(GVariant *value) {
    switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_INT32:
        return g_variant_get_int32(value);
    case G_VARIANT_CLASS_UINT32:
        return g_variant_get_uint32(value);
    case G_VARIANT_CLASS_INT64:
        return g_variant_get_int64(value);
    default:
        return std::nullopt;
    }
}

std::optional<std::string> text(GVariant *data, const char *key) {
    const GVariantPointer value(g_variant_lookup_value(data, key, nullptr));
    return value ? textOf(value.get()) : std::nullopt;
}

std::optional<pid_t> process(GVariant *data, const char *key) {
    const GVariantPointer value(g_variant_lookup_value(data, key, nullptr));
    const auto number = value ? integerOf(value.get()) : std::nullopt;
    if (!number || *number <= 0 || *number > std::numeric_limits<pid_t>::max())
        return std::nullopt;
    return static_cast<pid_t>(*number);
}

LinkSender senderOf(GVariant *data) {
    return {{text(data, platformdata::activationToken), text(data, platformdata::startupID)},
            process(data, platformdata::launchedPid),
            process(data, platformdata::parentPid),
            text(data, platformdata::controlGroup),
            text(data, platformdata::desktopFile)};
}

} // namespace

DeliveredLinks deliveredLinks(GVariant *body) {
    if (!g_variant_is_of_type(body, G_VARIANT_TYPE("(asa{sv})")) &&
        !g_variant_is_of_type(body, G_VARIANT_TYPE("(aaya{sv})")))
        return {};
    const GVariantPointer links(g_variant_get_child_value(body, 0));
    const GVariantPointer data(g_variant_get_child_value(body, 1));
    DeliveredLinks delivered{{}, senderOf(data.get())};
    for (gsize index = 0; index < g_variant_n_children(links.get()); ++index) {
        const GVariantPointer link(g_variant_get_child_value(links.get(), index));
        delivered.links.push_back(textOf(link.get()).value_or(""));
    }
    return delivered;
}

} // namespace fernhop::freedesktop
