#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/source/LinkDelivery.h"

#include <string>

namespace fernhop::freedesktop {

/// The tokens as a launched application wants them: on Wayland a start-up identifier that came alone is a
/// token too, as older GIO passes its token under that name only. Empty ones, and such as no environment can
/// hold, are dropped.
[[nodiscard]] LaunchTokens tokensForLaunch(LaunchTokens received, bool wayland);

/// Whether a session with this environment is a Wayland one.
[[nodiscard]] bool isWaylandSession(const Environment &environment);

/// The environment of an application that is launched for a desktop entry: `base` without what belongs to
/// this process alone (who started it, its journal stream, its own tokens), with exactly the tokens given,
/// and with the entry's file named as GIO does.
[[nodiscard]] Environment launchEnvironment(Environment base, const LaunchTokens &tokens,
                                            const std::string &desktopFilePath);

} // namespace fernhop::freedesktop
