#pragma once

#include "platform/Url.h"

#include <string>
#include <vector>

namespace fernhop {

/// Where a desktop keeps its applications.
struct ApplicationLayout {
    std::vector<Url> directories; ///< in order of precedence; need not exist
    std::string
        bundleExtension; ///< path extension of an application bundle, without the dot, compared exactly
};

} // namespace fernhop
