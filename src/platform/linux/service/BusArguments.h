#pragma once

#include "platform/linux/source/LinkDelivery.h"

#include <glib.h>

namespace fernhop::freedesktop {

/// The names of the platform data that comes with links. The first two are those of
/// org.freedesktop.Application; the others are told by `fernhop-open`.
namespace platformdata {
inline constexpr const char *activationToken = "activation-token";
inline constexpr const char *startupID = "desktop-startup-id";
inline constexpr const char *launchedPid = "launched-pid";
inline constexpr const char *parentPid = "parent-pid";
inline constexpr const char *controlGroup = "control-group";
inline constexpr const char *desktopFile = "desktop-file";
} // namespace platformdata

/// The links and their sender out of the body of a message: (asa{sv}), or (aaya{sv}) for links that may hold
/// any byte. A zero byte at the end of such bytes is not part of them. Whatever is of another type than
/// expected is left out; a body of another form brings no link.
[[nodiscard]] DeliveredLinks deliveredLinks(GVariant *body);

} // namespace fernhop::freedesktop
