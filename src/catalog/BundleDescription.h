#pragma once

#include "platform/Bundle.h"
#include "platform/FileManager.h"

#include <set>
#include <string>

namespace fernhop {

/// The name of the application at `appURL` as people know it: the one in its bundle, even when that is empty,
/// else the file manager's name for its path. `bundle` is null when it cannot be opened.
[[nodiscard]] std::string displayName(const Url &appURL, const Bundle *bundle,
                                      const FileManager &fileManager);

/// The URL schemes that a bundle declares under "CFBundleURLTypes", in lower case; empty when it declares
/// none, or in another form than an array of dictionaries.
[[nodiscard]] std::set<std::string> declaredSchemes(const Bundle &bundle);

} // namespace fernhop
