#pragma once

#include "catalog/BrowserCatalog.h"
#include "platform/Bundle.h"
#include "platform/FileManager.h"
#include "platform/Workspace.h"
#include "routing/RoutingDecision.h"
#include "rules/Browser.h"
#include "settings/Preferences.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Decides which browser a link goes to. Changes nothing and opens nothing. Main thread only.
class Router {
  public:
    /// What decisions depend on; must outlive the router. `installedBrowsers` is read at each decision, so
    /// its owner may refresh it in between.
    struct Sources {
        const Preferences &preferences;
        const BrowserCatalog &catalog;
        const Workspace &workspace;
        const FileManager &files;
        const Bundles &bundles;
        const std::vector<Browser> &installedBrowsers;
    };

    explicit Router(Sources routerSources) : sources(routerSources) {}

    /// The decision for a link from the application `source` (nothing: unknown). Reads the rules anew.
    [[nodiscard]] RoutingDecision decide(const Url &url, const std::optional<std::string> &source) const;

    /// The browser that a rule names or, if that is unusable or no rule applies, the fallback; nothing when
    /// there is no usable browser at all.
    [[nodiscard]] std::optional<Browser>
    resolvedTargetBrowser(const std::optional<std::string> &ruleBrowserID) const;

    /// The application with this identifier, browser or not: from the browser list, else from the system.
    [[nodiscard]] std::optional<Browser> browserForRouting(const std::string &bundleID) const;

    /// The stored fallback if it is usable, else the first installed browser that is not Fernhop. Does not
    /// change the stored value.
    [[nodiscard]] std::optional<std::string> validFallbackBrowserID() const;

  private:
    struct Choice {
        std::optional<Browser> target;
        RoutingReason because = RoutingReason::none;
        std::vector<PassedOver> passedOver;
    };

    [[nodiscard]] Choice choose(const std::optional<std::string> &ruleBrowserID, RoutingReason rule) const;
    bool tryCandidate(const std::string &bundleID, RoutingReason candidate, Choice &choice) const;
    void tryFallback(Choice &choice) const;

    Sources sources;
};

} // namespace fernhop
