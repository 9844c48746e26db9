#pragma once

#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// The file name of the program that an Exec line runs, `env` and its assignments skipped; empty when the
/// line cannot be parsed or runs a program that says nothing about the application (see
/// `isGenericProgram`).
[[nodiscard]] std::string programOfExec(const std::string &exec);

/// The desktop-file ID that a text names which may be an ID, a file name or a path: folder and ".desktop"
/// taken away.
[[nodiscard]] std::string desktopIDOf(std::string_view text);

/// Whether a program of this file name runs on behalf of any application: a shell, an interpreter, an opener
/// of links, a launcher of a sandbox.
[[nodiscard]] bool isGenericProgram(std::string_view fileName);

/// Whether a program of this file name runs scripts, so that its first argument tells more than itself.
[[nodiscard]] bool isInterpreter(std::string_view fileName);

/// Whether this is the desktop-file ID of a part of the desktop itself: its shell, panel or window manager.
/// Users open links with these, not in them.
[[nodiscard]] bool isDesktopShell(std::string_view desktopID);

/// ASCII letters in lower case, other bytes as they are.
[[nodiscard]] std::string asciiLowercased(std::string_view text);

} // namespace fernhop::freedesktop
