#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Environment.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// What in this desktop keeps links from arriving at Fernhop at this moment, for people who ask why one did
/// not: one sentence or two each, the most serious first. Settings that contradict each other are problems
/// only where at least one of them names Fernhop: where none does, routing is off. `ownID` is Fernhop's
/// desktop-file ID, `browserVariable` the value of BROWSER where that is set. Main thread only.
[[nodiscard]] std::vector<std::string> routingProblems(const XdgSession &session,
                                                       const DesktopEntries &entries,
                                                       const std::string &ownID,
                                                       const std::optional<std::string> &browserVariable);

/// Why the application with this identifier is not used although it is installed, the end of a sentence;
/// nothing when it can be used or is not installed. Main thread only.
[[nodiscard]] std::optional<std::string> browserRefusal(const DesktopEntries &entries, const std::string &id);

} // namespace fernhop::freedesktop
