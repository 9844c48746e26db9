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

/// What a browser was, or would have been, chosen by; in order of precedence.
enum class RoutingReason {
    urlRule,      ///< the first URL rule that matches
    appRule,      ///< the rule of the source application
    fallback,     ///< the stored fallback browser
    firstBrowser, ///< the first installed browser
    none,         ///< nothing: the link is dropped
};

/// A browser that could have taken the link, and why it did not.
struct PassedOver {
    enum class Cause {
        isFernhop,    ///< it would send the link round in a circle
        notInstalled, ///< no application with this identifier
        outranked,    ///< an app rule beside a URL rule that matches, usable or not
    };

    RoutingReason candidate;
    std::string bundleID;
    Cause cause;

    bool operator==(const PassedOver &) const = default;
};

/// Which browser a link goes to, and everything that led there.
struct RoutingDecision {
    RoutingDecision(Url link, std::optional<std::string> sourceBundleID)
        : url(std::move(link)), source(std::move(sourceBundleID)) {}

    Url url;
    std::optional<std::string> source;   ///< bundle identifier of the application that the link comes from
    std::optional<URLRule> urlRule;      ///< the rule that matched, its browser usable or not
    std::optional<std::string> appRule;  ///< the browser that the source's app rule names
    std::optional<std::string> fallback; ///< the stored fallback as it stands
    std::optional<Browser> target;       ///< none: the link is dropped
    RoutingReason because = RoutingReason::none;
    std::vector<PassedOver> passedOver; ///< in the order in which they were considered
};

/// The reason in one word: "urlRule", "appRule", "fallback", "firstBrowser" or "none".
[[nodiscard]] std::string_view nameOf(RoutingReason reason);

/// A sentence for people: what the candidate was and why it was passed over.
[[nodiscard]] std::string describe(const PassedOver &passed);

/// The log's line for a link that no browser can take.
[[nodiscard]] std::string noTargetLogLine(const RoutingDecision &decision);

/// The log's line for a link that its browser did not take; `reason` is the platform's description of the
/// error.
[[nodiscard]] std::string openFailureLogLine(const Url &url, const Browser &browser, std::string_view reason);

} // namespace fernhop
