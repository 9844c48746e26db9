#pragma once

#include "platform/LaunchServices.h"

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace fernhop::fakes {

/// The handlers in memory. `calls` has all changes in order; `refuses` makes each change fail; `afterRead` is
/// called after each read, so that a test can change the handlers like another program.
class FakeLaunchServices : public LaunchServices {
  public:
    std::map<std::string, std::string> handlers;
    std::vector<std::pair<std::string, std::string>> calls;
    bool refuses = false;
    std::function<void()> afterRead;

    std::optional<std::string> copyDefaultHandlerForUrlScheme(const std::string &scheme) const override {
        const auto found = handlers.find(scheme);
        auto handler = found == handlers.end() ? std::nullopt : std::optional(found->second);
        if (afterRead)
            afterRead();
        return handler;
    }

    bool setDefaultHandlerForUrlScheme(const std::string &scheme, const std::string &bundleID) override {
        calls.emplace_back(scheme, bundleID);
        if (!refuses)
            handlers.insert_or_assign(scheme, bundleID);
        return !refuses;
    }
};

} // namespace fernhop::fakes
