#pragma once

#include "platform/linux/applications/DesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The desktop entry in `contents`, any bytes, with the names for the first fitting of `locales` (see
/// `localeNames`); its `id` and `path` are the caller's to fill. Nothing when this is no application that can
/// be launched: another type, Hidden, or neither a valid Exec line nor activation over D-Bus.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view contents,
                                                            const std::vector<std::string> &locales);

} // namespace fernhop::freedesktop
