#include "cli/NameLookup.h"

#include "catalog/OwnBundleID.h"
#include "cli/Results.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

namespace fernhop::cli {

namespace {

/// An entry of a list of applications or browsers that is searched.
struct Candidate {
    std::string bundleID;
    std::string name;
};

template <typename List>
std::vector<Candidate> candidatesOf(const List &list) {
    std::vector<Candidate> candidates;
    for (const auto &entry : list)
        candidates.push_back({entry.bundleID, entry.name});
    return candidates;
}

CommandResult ambiguous(const std::string &word, const std::vector<Candidate> &named) {
    std::string reason = inQuotes(word) + " is the name of several. Use an identifier instead:";
    for (const auto &candidate : named)
        reason += ' ' + candidate.bundleID;
    return failed(reason);
}

std::optional<Lookup> byIdentifierOrName(const std::string &word, const std::vector<Candidate> &candidates) {
    std::vector<Candidate> named;
    for (const auto &candidate : candidates) {
        if (candidate.bundleID == word)
            return word;
        if (candidate.name == word)
            named.push_back(candidate);
    }
    if (named.empty())
        return std::nullopt;
    return named.size() == 1 ? Lookup(named.front().bundleID) : ambiguous(word, named);
}

bool isInstalled(const std::string &bundleID, const Context &context) {
    return !bundleID.empty() && context.browsers.browser(bundleID).has_value();
}

} // namespace

Lookup lookUpBrowser(const std::string &word, BrowserKind kind, const Context &context) {
    if (word == ownBundleID(context.bundles))
        return failed("Fernhop cannot open links itself: they would loop.");
    const auto candidates = candidatesOf(context.controller.installedBrowsers());
    const bool isListed = std::ranges::find(candidates, word, &Candidate::bundleID) != candidates.end();
    if (!isListed && kind == BrowserKind::anyInstalled && isInstalled(word, context))
        return word;
    if (const auto found = byIdentifierOrName(word, candidates))
        return *found;
    if (const auto refusal = context.session.refusal(word))
        return failed(inQuotes(word) + " is not used: " + *refusal);
    return failed("No installed browser has the identifier or name " + inQuotes(word) +
                  ". 'fernhop browsers' lists them.");
}

Lookup lookUpApplication(const std::string &word, const Context &context) {
    if (word == ownBundleID(context.bundles))
        return failed("Fernhop itself is never the source of a link.");
    if (isInstalled(word, context))
        return word;
    if (const auto found = byIdentifierOrName(word, candidatesOf(context.controller.installedApplications())))
        return *found;
    return failed("No installed application has the identifier or name " + inQuotes(word) +
                  ". 'fernhop apps' lists them.");
}

Lookup lookUpRuledApplication(const std::string &word, const Context &context) {
    std::vector<Candidate> candidates;
    for (const auto &[app, browser] : context.preferences.appRules())
        candidates.push_back({app, context.browsers.appDisplayName(app)});
    if (const auto found = byIdentifierOrName(word, candidates))
        return *found;
    return failed("There is no app rule for " + inQuotes(word) + ". 'fernhop app-rules list' lists them.");
}

CommandResult noSuchURLRule(const std::string &id) {
    return failed("There is no URL rule " + inQuotes(id) + ". 'fernhop url-rules list' lists them.");
}

std::string describeApplication(const std::string &bundleID, const Context &context) {
    if (!isInstalled(bundleID, context))
        return bundleID + (context.session.refusal(bundleID) ? " (not used)" : " (not installed)");
    const std::string name = context.browsers.appDisplayName(bundleID);
    return name == bundleID ? name : name + " (" + bundleID + ")";
}

} // namespace fernhop::cli
