#pragma once

#include "platform/Bundle.h"

#include <set>
#include <string>

namespace fernhop {

/// The URL schemes that a bundle declares under "CFBundleURLTypes", in lower case. Empty when it declares
/// none, or in another shape than an array of dictionaries.
[[nodiscard]] std::set<std::string> declaredSchemes(const Bundle &bundle);

} // namespace fernhop
