#pragma once

#include "platform/Object.h"

#include <string>
#include <utility>

namespace fernhop {

/// The represented object of a browser item in an application's submenu: the browser to choose for the
/// application.
class RuleSelection : public Object {
  public:
    RuleSelection() = delete;
    RuleSelection(std::string source, std::string browser)
        : sourceBundleID(std::move(source)), browserBundleID(std::move(browser)) {}

    const std::string sourceBundleID;
    const std::string browserBundleID;
};

/// The represented object of a browser item in a URL rule's submenu: the browser to choose for the rule.
class URLRuleSelection : public Object {
  public:
    URLRuleSelection() = delete;
    URLRuleSelection(std::string rule, std::string browser)
        : ruleID(std::move(rule)), browserBundleID(std::move(browser)) {}

    const std::string ruleID;
    const std::string browserBundleID;
};

} // namespace fernhop
