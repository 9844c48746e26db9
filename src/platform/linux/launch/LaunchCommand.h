#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/base/Result.h"
#include "platform/linux/source/LinkDelivery.h"

#include <string>
#include <vector>

/// The command lines and the environment that a desktop entry is launched with.
namespace fernhop::freedesktop {

/// A program and its arguments.
using Command = std::vector<std::string>;

/// The commands, in order, that open all of `urls` with the entry: one, or one for each URL. Those of a
/// terminal program run in a terminal emulator from `searchPath` (a PATH value). Fails when the Exec line is
/// not valid, a link is longer than an argument can be, or there is no terminal emulator.
[[nodiscard]] Result<std::vector<Command>> launchCommands(const DesktopEntry &entry,
                                                          const std::vector<std::string> &urls,
                                                          const std::string &searchPath);

/// The tokens as a launched application wants them: on Wayland a start-up identifier that came alone is an
/// activation token too, as older GIO passes its token under that name only. Empty ones, and ones that no
/// environment can hold, are dropped.
[[nodiscard]] LaunchTokens tokensForLaunch(LaunchTokens received, bool wayland);

/// Whether a session with this environment is a Wayland one.
[[nodiscard]] bool isWaylandSession(const Environment &environment);

/// The environment of an application that is launched for a desktop entry: `base` without what belongs to
/// this process alone (who started it, its journal stream, its own tokens), with exactly the tokens given,
/// and with the entry's file named as GIO does.
[[nodiscard]] Environment launchEnvironment(Environment base, const LaunchTokens &tokens,
                                            const std::string &desktopFilePath);

} // namespace fernhop::freedesktop
