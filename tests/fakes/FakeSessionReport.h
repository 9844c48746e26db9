#pragma once

#include "platform/SessionReport.h"

#include <map>

namespace fernhop::fakes {

/// Reports the values that a test sets.
class FakeSessionReport : public SessionReport {
  public:
    std::optional<std::string> sourceBundleID;
    std::string provider = "fake";
    bool runs = true;
    IconPlace icon = IconPlace::nowhere;
    std::optional<std::string> unreadableSettings;
    std::map<std::string, std::string> refusals; ///< by bundle identifier
    std::vector<std::string> reportedProblems;

    std::optional<std::string> source() const override { return sourceBundleID; }
    std::string sourceProvider() const override { return provider; }
    bool running() const override { return runs; }
    IconPlace iconPlace() const override { return icon; }
    std::optional<std::string> settingsProblem() const override { return unreadableSettings; }
    std::optional<std::string> refusal(const std::string &bundleID) const override {
        const auto found = refusals.find(bundleID);
        return found == refusals.end() ? std::nullopt : std::optional(found->second);
    }
    std::vector<std::string> problems() const override { return reportedProblems; }
};

} // namespace fernhop::fakes
