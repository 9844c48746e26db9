#pragma once

#include "platform/linux/applications/DesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// One argument of an Exec line, its quoting undone, its field codes still in place.
struct ExecWord {
    std::string text;
    bool quoted = false; ///< some part of it stood in quotes

    bool operator==(const ExecWord &) const = default;
};

/// The arguments of an Exec line. Double quotes with backslash escapes as the Desktop Entry Specification has
/// them; beyond it, as desktops take them too, single quotes, and a backslash before any character outside of
/// quotes. Nothing when a quote stays open or a backslash ends the line.
[[nodiscard]] std::optional<std::vector<ExecWord>> execWords(std::string_view exec);

/// Whether the entry's Exec line can be launched at all: a program, quoting that closes, and only field codes
/// that the Desktop Entry Specification knows, none of them (but %%) in the program, and none where a URL
/// would be interpreted.
[[nodiscard]] bool hasValidExec(const DesktopEntry &entry);

/// Whether the entry's Exec line is written correctly, but lets a shell or another interpreter read a URL as
/// a part of a program. Such a line is never launched.
[[nodiscard]] bool interpretsUrls(const DesktopEntry &entry);

/// The program and its arguments for one launch with `urls` (any bytes but NUL). The line is split into
/// arguments first; a URL then goes in as it is, whole, and nothing in it is read as a code or a quote. %f
/// and %F stand for URLs as %u and %U do; without any of the four the URL becomes the last argument. Nothing
/// when the Exec line is not valid, or when it takes one URL (no %U, %F) and there are several.
[[nodiscard]] std::optional<std::vector<std::string>> execArguments(const DesktopEntry &entry,
                                                                    const std::vector<std::string> &urls);

/// The launches, in order, that hand all of `urls` to the entry: one, or one for each URL. Empty when the
/// Exec line is not valid.
[[nodiscard]] std::vector<std::vector<std::string>> execLaunches(const DesktopEntry &entry,
                                                                 const std::vector<std::string> &urls);

} // namespace fernhop::freedesktop
