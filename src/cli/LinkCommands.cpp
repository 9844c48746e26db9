#include "catalog/OwnBundleID.h"
#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/LinkArgument.h"
#include "cli/NameLookup.h"
#include "cli/PatternTest.h"
#include "cli/PlainText.h"
#include "cli/Results.h"
#include "platform/Ascii.h"
#include "platform/UrlEncoding.h"

#include <string>

namespace fernhop::cli {

namespace {

std::string stepText(const PassedOver &passed, const Context &context) {
    return describe(passed, context.session.refusal(passed.bundleID));
}

/// What the system does with a link now, before any rule.
struct SystemHandling {
    SystemHandling(const Url &url, const Context &context)
        : scheme(ascii::lowercased(urlComponents(url.absoluteString()).scheme)),
          isWebLink(scheme == "http" || scheme == "https"), defaultBrowser(context.defaultHandlers.read()) {
        if (isWebLink)
            handler = context.launchServices.copyDefaultHandlerForUrlScheme(scheme);
        isFernhop = handler == ownBundleID(context.bundles);
    }

    std::string scheme;
    bool isWebLink;
    DefaultHandlerControl::Reading defaultBrowser;
    std::optional<std::string> handler; ///< of the link's scheme; nothing unless it is a web link
    bool isFernhop;                     ///< the handler is
};

/// Where the link goes when it does not reach Fernhop; empty when it does.
std::string handlingText(const SystemHandling &system, const Context &context) {
    if (!system.isWebLink)
        return "The system sends only http and https links to Fernhop.\nIf it sent this one:\n";
    if (system.isFernhop)
        return "";
    const std::string handling =
        system.handler ? "opens the link in " + plain(describeApplication(*system.handler, context))
                       : "has no handler for the link";
    if (!system.defaultBrowser.routingEnabled)
        return "App Routing is off: the system " + handling + ".\nIf App Routing were on:\n";
    return "Fernhop is not the handler of " + system.scheme + ": the system " + handling + ".\nIf it were:\n";
}

/// What turning App Routing on changes in the decision: the default browser becomes the fallback. Empty when
/// it changes nothing.
std::string turningOnText(const SystemHandling &system, const RoutingDecision &decision,
                          const Context &context) {
    const auto &[handler, routingEnabled, effectiveDefault] = system.defaultBrowser;
    const bool isRuled =
        decision.because == RoutingReason::urlRule || decision.because == RoutingReason::appRule;
    if (routingEnabled || isRuled || !handler || handler == decision.fallback)
        return "";
    return "Turning App Routing on makes " + plain(describeApplication(*handler, context)) +
           " the fallback.\n";
}

Json explanationDocument(const RoutingDecision &decision, const SystemHandling &system,
                         const Context &context) {
    Json steps = Json::array();
    for (const auto &passed : decision.passedOver)
        steps.push_back(stepText(passed, context));
    return {{"url", decision.url.absoluteString()},  {"routing", system.defaultBrowser.routingEnabled},
            {"handler", toJson(system.handler)},     {"source", toJson(decision.source)},
            {"urlRule", toJson(decision.urlRule)},   {"appRule", toJson(decision.appRule)},
            {"fallback", toJson(decision.fallback)}, {"target", toJson(decision.target)},
            {"because", nameOf(decision.because)},   {"steps", std::move(steps)}};
}

std::string_view reasonText(RoutingReason reason) {
    switch (reason) {
    case RoutingReason::urlRule:
        return "the URL rule names it";
    case RoutingReason::appRule:
        return "the app rule names it";
    case RoutingReason::fallback:
        return "it is the fallback browser";
    case RoutingReason::firstBrowser:
        return "it is the first installed browser";
    case RoutingReason::none:
        break;
    }
    return "no browser can open it";
}

std::string line(std::string_view label, std::string_view value) {
    return std::string(label) + plain(value) + "\n";
}

std::string explanationText(const RoutingDecision &decision, const Context &context) {
    const auto named = [&](const std::optional<std::string> &bundleID, const char *otherwise) {
        return bundleID ? describeApplication(*bundleID, context) : std::string(otherwise);
    };
    std::string text = line("Link:       ", decision.url.absoluteString());
    text += line("Comes from: ", decision.source ? *decision.source : "unknown");
    text += line("URL rule:   ", decision.urlRule ? decision.urlRule->pattern + " -> " +
                                                        named(decision.urlRule->browserBundleID, "")
                                                  : "none matches");
    text += line("App rule:   ", named(decision.appRule, "none"));
    text += line("Fallback:   ", named(decision.fallback, "none stored"));
    for (const auto &passed : decision.passedOver)
        text += line("Passed over: ", stepText(passed, context));
    text +=
        line("Opens in:   ",
             decision.target ? decision.target->name + " (" + decision.target->bundleID + ")" : "nothing");
    return text + line("Because:    ", reasonText(decision.because));
}

} // namespace

CommandResult carryOut(const command::Explain &explain, const Call &call) {
    const auto url = linkArgument(explain.url);
    if (!url)
        return misused(whyNoLink(explain.url));
    const Context &context = call.context;
    auto source = context.session.source();
    if (explain.source) {
        const auto app = lookUpApplication(*explain.source, context);
        if (const auto *failure = std::get_if<CommandResult>(&app))
            return *failure;
        source = std::get<std::string>(app);
    }
    const auto decision = context.controller.decide(*url, source);
    const SystemHandling system(*url, context);
    if (explain.json)
        return done(documentText(explanationDocument(decision, system, context)));
    return done(handlingText(system, context) + explanationText(decision, context) +
                turningOnText(system, decision, context));
}

// The command line delivers links as applications do, and has its outcome from there.
CommandResult carryOut(const command::Open &, const Call &) {
    return failed("Links are not opened by this call: use OpenLinks, or org.freedesktop.Application.Open.");
}

CommandResult carryOut(const command::Match &match, const Call &call) {
    PatternTest test(match.pattern);
    std::string answers;
    for (const auto &url : match.urls)
        answers += test.answerFor(url);
    std::string_view lines = match.urls.empty() ? call.input : std::string_view();
    while (!lines.empty()) {
        const auto end = lines.find('\n');
        answers += test.answerFor(lines.substr(0, end));
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
    }
    return {test.allMatched() ? exitStatus::success : exitStatus::failure, std::move(answers), ""};
}

} // namespace fernhop::cli
