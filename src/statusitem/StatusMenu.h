#pragma once

#include "catalog/AppIcons.h"
#include "catalog/BrowserCatalog.h"
#include "defaulthandler/DefaultHandlerControl.h"
#include "platform/ui/Images.h"
#include "platform/ui/MenuItem.h"
#include "rules/URLRule.h"
#include "settings/Preferences.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Builds the status menu from the current state. Keeps nothing: each call reads the state and makes all
/// items anew. Main thread only.
class StatusMenu {
  public:
    /// What the menu shows; must outlive this object.
    struct Sources {
        const BrowserCatalog &catalog;
        const Preferences &preferences;
        const DefaultHandlerControl &defaultHandlers;
        const ui::Images &images;
        AppIcons &icons;
        const std::vector<InstalledApplication> &installedApplications;
        const std::vector<Browser> &installedBrowsers;
    };

    explicit StatusMenu(Sources menuSources) : sources(menuSources) {}

    /// The whole menu, for the default browser as read before.
    [[nodiscard]] ui::Menu build(const DefaultHandlerControl::Reading &defaultBrowser) const;

    /// "Set Browser for Apps" with a submenu of browsers for each installed application.
    [[nodiscard]] ui::MenuItem allAppsRuleMenuItem(bool isEnabled) const;
    /// "App Rules" with a submenu of browsers for each stored rule.
    [[nodiscard]] ui::MenuItem rulesMenuItem(bool isEnabled) const;
    /// The browsers to choose from for a source application, and the removal of its rule.
    [[nodiscard]] ui::Menu browserSelectionSubmenu(const std::string &source) const;
    /// The browsers to choose from for a URL rule, and its editing and removal.
    [[nodiscard]] ui::Menu urlRuleSelectionSubmenu(const URLRule &rule) const;

  private:
    struct Snapshot;

    [[nodiscard]] Snapshot read() const;
    [[nodiscard]] Snapshot read(const DefaultHandlerControl::Reading &defaultBrowser) const;
    void addHeader(ui::Menu &menu, const DefaultHandlerControl::Reading &defaultBrowser) const;
    [[nodiscard]] std::string headline(const DefaultHandlerControl::Reading &defaultBrowser) const;
    void addBrowsers(ui::Menu &menu, const Snapshot &now) const;
    [[nodiscard]] ui::MenuItem urlRulesMenuItem(bool isEnabled, const Snapshot &now) const;
    [[nodiscard]] ui::MenuItem allAppsRuleMenuItem(bool isEnabled, const Snapshot &now) const;
    [[nodiscard]] ui::MenuItem rulesMenuItem(bool isEnabled, const Snapshot &now) const;
    [[nodiscard]] ui::MenuItem ruleItem(const std::string &source, const std::string &browserID,
                                        const Snapshot &now) const;
    [[nodiscard]] ui::Menu browserSelectionSubmenu(const std::string &source, const Snapshot &now) const;
    [[nodiscard]] ui::Menu urlRuleSelectionSubmenu(const URLRule &rule, const Snapshot &now) const;
    [[nodiscard]] ui::MenuItem browserItem(std::size_t index, ui::Selector action, bool checked,
                                           const Snapshot &now) const;
    [[nodiscard]] std::string nameOfBrowser(const std::string &bundleID) const;

    Sources sources;
};

} // namespace fernhop
