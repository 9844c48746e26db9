#pragma once

#include "platform/Object.h"

#include <string>
#include <utility>

namespace fernhop {

/// What a browser item in an application's submenu carries: the application and the browser to choose for it.
class RuleSelection : public Object {
  public:
    RuleSelection() = delete;
    RuleSelection(std::string source, std::string browser)
        : sourceBundleID(std::move(source)), browserBundleID(std::move(browser)) {}

    const std::string sourceBundleID;
    const std::string browserBundleID;
};

} // namespace fernhop
