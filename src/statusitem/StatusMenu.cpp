#include "statusitem/StatusMenu.h"

#include "rules/RuleSelection.h"

#include <memory>
#include <utility>

namespace fernhop {

using namespace ui;

namespace {

constexpr double menuIconSize = 16;

MenuItem disabledItem(std::string title) {
    MenuItem item(std::move(title), "");
    item.enabled = false;
    return item;
}

MenuItem itemWithSubmenu(std::string title, bool isEnabled) {
    MenuItem item(std::move(title), "");
    item.enabled = isEnabled;
    item.submenu.emplace();
    return item;
}

MenuItem checkedItem(std::string title, Selector action, bool checked) {
    MenuItem item(std::move(title), action);
    item.state = checked ? ControlState::on : ControlState::off;
    return item;
}

MenuItem itemWithText(std::string title, Selector action, const std::string &text) {
    MenuItem item(std::move(title), action);
    item.representedObject = text;
    return item;
}

} // namespace

/// The state that is read once for a whole menu.
struct StatusMenu::Snapshot {
    AppRules appRules;
    DefaultHandlerControl::Reading defaultBrowser;
    std::vector<ImageReference> browserIcons; ///< in the order of the browsers
};

StatusMenu::Snapshot StatusMenu::read() const {
    return read(sources.defaultHandlers.read());
}

StatusMenu::Snapshot StatusMenu::read(const DefaultHandlerControl::Reading &defaultBrowser) const {
    Snapshot now{sources.preferences.appRules(), defaultBrowser, {}};
    for (const Browser &browser : sources.installedBrowsers)
        now.browserIcons.push_back(sources.icons.appIcon(browser.appURL, menuIconSize));
    return now;
}

Menu StatusMenu::build(const DefaultHandlerControl::Reading &defaultBrowser) const {
    const bool routingEnabled = defaultBrowser.routingEnabled;
    const Snapshot now = read(defaultBrowser);
    Menu menu;
    addHeader(menu, defaultBrowser);
    addBrowsers(menu, now);
    menu.items.push_back(MenuItem::separator());
    menu.items.push_back(urlRulesMenuItem(routingEnabled, now));
    menu.items.push_back(allAppsRuleMenuItem(routingEnabled, now));
    menu.items.push_back(rulesMenuItem(routingEnabled, now));
    menu.items.push_back(MenuItem::separator());
    menu.items.emplace_back("刷新 App 列表", "refreshApplicationList");
    menu.items.emplace_back("建议反馈", "showFeedbackDialog");
    menu.items.emplace_back("Quit", "quit").keyEquivalent = "q";
    return menu;
}

void StatusMenu::addHeader(Menu &menu, const DefaultHandlerControl::Reading &defaultBrowser) const {
    const bool restores =
        sources.preferences.userDefaults().boolForKey(settingsKey::restoresDefaultBrowserOnQuit);
    menu.items.push_back(disabledItem("Fernhop"));
    menu.items.push_back(disabledItem(headline(defaultBrowser)));
    menu.items.push_back(MenuItem::separator());
    menu.items.push_back(
        checkedItem("Enable App Routing", "enableAppRouting", defaultBrowser.routingEnabled));
    menu.items.push_back(checkedItem("退出时恢复默认浏览器", "toggleRestoreDefaultBrowserOnQuit:", restores));
    menu.items.push_back(MenuItem::separator());
}

std::string StatusMenu::headline(const DefaultHandlerControl::Reading &defaultBrowser) const {
    if (defaultBrowser.routingEnabled)
        return "App routing is enabled";
    return "System default: " + (defaultBrowser.handler ? nameOfBrowser(*defaultBrowser.handler) : "Unknown");
}

void StatusMenu::addBrowsers(Menu &menu, const Snapshot &now) const {
    menu.items.push_back(disabledItem("Switch System Default"));
    for (std::size_t index = 0; index < sources.installedBrowsers.size(); ++index) {
        const std::string &bundleID = sources.installedBrowsers[index].bundleID;
        menu.items.push_back(
            browserItem(index, "switchSystemDefaultBrowser:", bundleID == now.defaultBrowser.handler, now));
        menu.items.back().representedObject = bundleID;
    }
}

MenuItem StatusMenu::urlRulesMenuItem(bool isEnabled, const Snapshot &now) const {
    MenuItem item = itemWithSubmenu("URL Rules", isEnabled);
    auto &items = item.submenu->items;
    items.emplace_back("Add URL Rule…", "showAddURLRuleDialog");
    items.push_back(MenuItem::separator());
    const auto rules = sources.preferences.urlRules();
    if (rules.empty())
        items.push_back(disabledItem("No URL rules yet"));
    const auto symbol = rules.empty() ? nullptr : sources.images.imageWithSystemSymbolName("link.circle", 0);
    for (const URLRule &rule : rules) {
        MenuItem &ruleItem = items.emplace_back(rule.pattern, "");
        ruleItem.image = symbol;
        ruleItem.submenu = urlRuleSelectionSubmenu(rule, now);
    }
    return item;
}

MenuItem StatusMenu::allAppsRuleMenuItem(bool isEnabled) const {
    return allAppsRuleMenuItem(isEnabled, read());
}

MenuItem StatusMenu::allAppsRuleMenuItem(bool isEnabled, const Snapshot &now) const {
    MenuItem item = itemWithSubmenu("Set Browser for Apps", isEnabled);
    auto &items = item.submenu->items;
    if (sources.installedApplications.empty()) {
        items.push_back(disabledItem("No apps found"));
        return item;
    }
    if (sources.installedBrowsers.empty()) {
        items.push_back(disabledItem("No browsers found"));
        return item;
    }
    items.reserve(sources.installedApplications.size());
    for (const InstalledApplication &application : sources.installedApplications) {
        MenuItem &appItem = items.emplace_back(application.name, "");
        appItem.image = sources.icons.appIcon(application.appURL, menuIconSize);
        appItem.submenu = browserSelectionSubmenu(application.bundleID, now);
    }
    return item;
}

MenuItem StatusMenu::rulesMenuItem(bool isEnabled) const {
    return rulesMenuItem(isEnabled, read());
}

MenuItem StatusMenu::rulesMenuItem(bool isEnabled, const Snapshot &now) const {
    MenuItem item = itemWithSubmenu("App Rules", isEnabled);
    if (now.appRules.empty())
        item.submenu->items.push_back(disabledItem("No app rules yet"));
    // The map already has the order to show: by identifier, in code point order, as UTF-8 sorts.
    for (const auto &[source, browserID] : now.appRules)
        item.submenu->items.push_back(ruleItem(source, browserID, now));
    return item;
}

MenuItem StatusMenu::ruleItem(const std::string &source, const std::string &browserID,
                              const Snapshot &now) const {
    MenuItem item(sources.icons.appName(source) + " -> " + nameOfBrowser(browserID), "");
    item.image = sources.icons.appIcon(std::optional(source), menuIconSize);
    item.submenu = browserSelectionSubmenu(source, now);
    return item;
}

Menu StatusMenu::browserSelectionSubmenu(const std::string &source) const {
    return browserSelectionSubmenu(source, read());
}

Menu StatusMenu::browserSelectionSubmenu(const std::string &source, const Snapshot &now) const {
    const auto rule = now.appRules.find(source);
    const bool hasRule = rule != now.appRules.end();
    const auto checked = hasRule ? std::optional(rule->second) : now.defaultBrowser.effectiveDefault;
    Menu menu;
    menu.items.reserve(sources.installedBrowsers.size() + 2);
    for (std::size_t index = 0; index < sources.installedBrowsers.size(); ++index) {
        const std::string &browserID = sources.installedBrowsers[index].bundleID;
        menu.items.push_back(browserItem(index, "setBrowserForSelectedApp:", browserID == checked, now));
        menu.items.back().representedObject = std::make_shared<const RuleSelection>(source, browserID);
    }
    if (hasRule) {
        menu.items.push_back(MenuItem::separator());
        menu.items.push_back(itemWithText("Clear Rule", "clearRule:", source));
    }
    return menu;
}

Menu StatusMenu::urlRuleSelectionSubmenu(const URLRule &rule) const {
    return urlRuleSelectionSubmenu(rule, read());
}

Menu StatusMenu::urlRuleSelectionSubmenu(const URLRule &rule, const Snapshot &now) const {
    Menu menu;
    for (std::size_t index = 0; index < sources.installedBrowsers.size(); ++index) {
        const std::string &browserID = sources.installedBrowsers[index].bundleID;
        menu.items.push_back(
            browserItem(index, "setBrowserForURLRule:", browserID == rule.browserBundleID, now));
        menu.items.back().representedObject = std::make_shared<const URLRuleSelection>(rule.id, browserID);
    }
    menu.items.push_back(MenuItem::separator());
    menu.items.push_back(itemWithText("Edit Rule…", "editURLRule:", rule.id));
    menu.items.push_back(itemWithText("Remove Rule", "clearURLRule:", rule.id));
    return menu;
}

MenuItem StatusMenu::browserItem(std::size_t index, Selector action, bool checked,
                                 const Snapshot &now) const {
    MenuItem item = checkedItem(sources.installedBrowsers[index].name, action, checked);
    item.image = now.browserIcons[index];
    return item;
}

std::string StatusMenu::nameOfBrowser(const std::string &bundleID) const {
    const auto browser = sources.catalog.browser(bundleID);
    return browser ? browser->name : bundleID;
}

} // namespace fernhop
