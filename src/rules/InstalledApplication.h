#pragma once

#include "platform/Url.h"

#include <set>
#include <string>

namespace fernhop {

/// An application that the catalog found.
struct InstalledApplication {
    std::string name; ///< as shown to the user
    std::string bundleID;
    Url appURL;                       ///< its bundle, as the folder scan found it
    std::set<std::string> urlSchemes; ///< the schemes that it declares, in lower case

    bool operator==(const InstalledApplication &) const = default;
};

} // namespace fernhop
