#pragma once

#include "platform/Url.h"
#include "rules/Browser.h"
#include "rules/URLRule.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fernhop {

/// Why a browser was, or would have been, chosen; in order of precedence.
enum class RoutingReason {
    urlRule,      ///< the first URL rule that matches
    appRule,      ///< the rule of the source application
    fallback,     ///< the stored fallback browser
    firstBrowser, ///< the first installed browser
    none,         ///< nothing: the link is dropped
};

/// A candidate for a link that was not chosen, and why.
struct PassedOver {
    enum class Cause {
        isFernhop,    ///< the link would loop
        notInstalled, ///< no application with this identifier
        outranked,    ///< the candidate of an app rule when a URL rule matches, usable or not
    };

    RoutingReason candidate;
    std::string bundleID;
    Cause cause;

    bool operator==(const PassedOver &) const = default;
};

/// Which browser a link opens in, and everything that the choice depends on.
struct RoutingDecision {
    RoutingDecision(Url link, std::optional<std::string> sourceBundleID)
        : url(std::move(link)), source(std::move(sourceBundleID)) {}

    Url url;
    std::optional<std::string> source;   ///< bundle identifier of the application that the link comes from
    std::optional<URLRule> urlRule;      ///< the rule that matched, whether or not its browser is usable
    std::optional<std::string> appRule;  ///< the browser that the source's app rule names
    std::optional<std::string> fallback; ///< the stored fallback, whether or not it is usable
    std::optional<Browser> target;       ///< none: the link is dropped
    RoutingReason because = RoutingReason::none;
    std::vector<PassedOver> passedOver; ///< in the order in which they were considered
};

/// The name of the reason: "urlRule", "appRule", "fallback", "firstBrowser" or "none".
[[nodiscard]] std::string_view nameOf(RoutingReason reason);

/// A sentence for people: what the candidate was and why it was not chosen. `refusal` says why one that is
/// "not installed" is installed, but treated as if it were not.
[[nodiscard]] std::string describe(const PassedOver &passed,
                                   const std::optional<std::string> &refusal = std::nullopt);

/// The log line for a link that no browser can open.
[[nodiscard]] std::string noTargetLogLine(const RoutingDecision &decision);

/// The log line for a link that its browser failed to open; `reason` is the platform's description of the
/// error.
[[nodiscard]] std::string openFailureLogLine(const Url &url, const Browser &browser, std::string_view reason);

} // namespace fernhop
