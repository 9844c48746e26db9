#include "cli/ResidentSession.h"

#include <utility>

namespace fernhop::cli {

ResidentSession::ResidentSession(AppDelegate &running, const Platform &desktop,
                                 const SessionReport &sessionReport, RequestDialog request)
    : delegate(running), platform(desktop), report(sessionReport), requestDialog(std::move(request)) {}

Context ResidentSession::context() {
    return {delegate.settings(),
            platform.launchServices,
            platform.bundles,
            delegate.browserCatalog(),
            delegate.defaultHandlers(),
            *this,
            report};
}

const std::vector<InstalledApplication> &ResidentSession::installedApplications() {
    return delegate.applications();
}

const std::vector<Browser> &ResidentSession::installedBrowsers() {
    return delegate.browsers();
}

RoutingDecision ResidentSession::decide(const Url &url, const std::optional<std::string> &source) {
    return delegate.decide(url, source);
}

void ResidentSession::rebuildMenu() {
    delegate.rebuildMenu();
}

bool ResidentSession::refresh() {
    return delegate.perform("refreshApplicationList").has_value();
}

bool ResidentSession::openDialog(ui::Selector selector, const std::string &identifier) {
    requestDialog({std::string(selector), identifier});
    return true;
}

bool ResidentSession::quit() {
    return delegate.perform("quit").has_value();
}

} // namespace fernhop::cli
