#pragma once

#include "platform/linux/applications/DesktopEntries.h"

namespace fernhop::freedesktop {

/// Whether the entry would hand a link back to the desktop instead of showing it: it runs Fernhop itself, or
/// a program that opens a link in whatever is the default (xdg-open, gio open, sensible-browser, ...), also
/// when that stands behind env, a shell script given in the line, or another wrapper. With Fernhop as the
/// default, a link sent there would go round in a circle. Judged by the entry alone: no program is looked at.
[[nodiscard]] bool isGenericOpener(const DesktopEntry &entry);

/// Whether the entry is Fernhop's own.
[[nodiscard]] bool isFernhop(const DesktopEntry &entry);

} // namespace fernhop::freedesktop
