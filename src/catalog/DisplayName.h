#pragma once

#include "platform/Bundle.h"
#include "platform/FileManager.h"

#include <string>

namespace fernhop {

/// The name by which people know the application at `appURL`: what its bundle calls itself, even when that is
/// empty, else the file manager's name for its path. `bundle` is null when it cannot be opened.
[[nodiscard]] std::string displayName(const Url &appURL, const Bundle *bundle,
                                      const FileManager &fileManager);

} // namespace fernhop
