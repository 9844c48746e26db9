#pragma once

#include "platform/Url.h"

#include <string>
#include <vector>

namespace fernhop {

/// Where a desktop keeps its applications.
struct ApplicationLayout {
    std::vector<Url> directories; ///< in order of precedence; they need not exist
    std::string bundleExtension;  ///< path extension of bundles, without the dot; compared exactly
};

} // namespace fernhop
