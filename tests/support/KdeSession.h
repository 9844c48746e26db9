#pragma once

#include "support/TemporaryHome.h"

namespace fernhop::support {

/// Whether this machine has the program by which KDE opens links.
[[nodiscard]] bool isKdeInstalled();

/// Writes what KDE's programs have to read before they know any type and any application at all.
void writeKdeSystem(const TemporaryHome &home);

/// The variables by which programs know a session of KDE.
[[nodiscard]] Environment kdeSession();

} // namespace fernhop::support
