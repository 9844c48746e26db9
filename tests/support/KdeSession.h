#pragma once

#include "support/TemporaryHome.h"

namespace fernhop::support {

/// Whether KDE's program for opening links is installed.
[[nodiscard]] bool isKdeInstalled();

/// Writes the files from which KDE's programs learn types and applications.
void writeKdeSystem(const TemporaryHome &home);

/// The variables of a KDE session.
[[nodiscard]] Environment kdeSession();

} // namespace fernhop::support
