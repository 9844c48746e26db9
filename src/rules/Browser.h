#pragma once

#include "platform/Url.h"

#include <string>

namespace fernhop {

/// An application that can open web links.
struct Browser {
    std::string name; ///< as shown to the user
    std::string bundleID;
    Url appURL; ///< its bundle, which the platform needs to open a link in it

    bool operator==(const Browser &) const = default;
};

} // namespace fernhop
