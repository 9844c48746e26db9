#pragma once

#include "platform/Object.h"

#include <string>
#include <utility>

namespace fernhop {

/// What a browser item in a URL rule's submenu carries: the rule and the browser to choose for it.
class URLRuleSelection : public Object {
  public:
    URLRuleSelection() = delete;
    URLRuleSelection(std::string rule, std::string browser)
        : ruleID(std::move(rule)), browserBundleID(std::move(browser)) {}

    const std::string ruleID;
    const std::string browserBundleID;
};

} // namespace fernhop
