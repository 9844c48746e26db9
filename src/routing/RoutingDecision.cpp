#include "routing/RoutingDecision.h"

namespace fernhop {

namespace {

std::string_view candidateText(RoutingReason reason) {
    switch (reason) {
    case RoutingReason::urlRule:
        return "The URL rule's browser ";
    case RoutingReason::appRule:
        return "The app rule's browser ";
    case RoutingReason::fallback:
        return "The fallback browser ";
    case RoutingReason::firstBrowser:
        return "The installed browser ";
    case RoutingReason::none:
        break;
    }
    return "";
}

std::string_view causeText(PassedOver::Cause cause) {
    switch (cause) {
    case PassedOver::Cause::isFernhop:
        return " is Fernhop itself.";
    case PassedOver::Cause::notInstalled:
        return " is not installed.";
    case PassedOver::Cause::outranked:
        break;
    }
    return " is overridden by a matching URL rule.";
}

} // namespace

std::string_view nameOf(RoutingReason reason) {
    switch (reason) {
    case RoutingReason::urlRule:
        return "urlRule";
    case RoutingReason::appRule:
        return "appRule";
    case RoutingReason::fallback:
        return "fallback";
    case RoutingReason::firstBrowser:
        return "firstBrowser";
    case RoutingReason::none:
        break;
    }
    return "none";
}

std::string describe(const PassedOver &passed, const std::optional<std::string> &refusal) {
    const auto candidate = std::string(candidateText(passed.candidate)) + passed.bundleID;
    if (refusal && passed.cause == PassedOver::Cause::notInstalled)
        return candidate + " is not used: " + *refusal;
    return candidate + std::string(causeText(passed.cause));
}

std::string noTargetLogLine(const RoutingDecision &decision) {
    std::string line = "Fernhop: No valid target browser for URL " + decision.url.absoluteString();
    line += ". source=" + decision.source.value_or("unknown");
    line += " urlRule=" + (decision.urlRule ? decision.urlRule->pattern : "none");
    line += " appRule=" + decision.appRule.value_or("none");
    line += " fallback=" + decision.fallback.value_or("none");
    return line;
}

std::string openFailureLogLine(const Url &url, const Browser &browser, std::string_view reason) {
    return "Fernhop: Failed to open " + url.absoluteString() + " with " + browser.bundleID + ": " +
           std::string(reason);
}

} // namespace fernhop
