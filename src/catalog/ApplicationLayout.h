#pragma once

#include "platform/ApplicationLayout.h"
#include "platform/FileManager.h"

namespace fernhop {

/// The four application folders of macOS, the current user's last, with the extension "app".
[[nodiscard]] ApplicationLayout macApplicationLayout(const FileManager &fileManager);

} // namespace fernhop
