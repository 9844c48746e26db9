#include "defaulthandler/DefaultHandlerControl.h"

#include "catalog/OwnBundleID.h"
#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"
#include "platform/ui/PopUpButton.h"
#include "settings/Preferences.h"

#include <algorithm>
#include <utility>

namespace fernhop {

namespace {

bool wantsRestore(const Object *sender, bool stored) {
    if (const auto *button = dynamic_cast<const ui::Button *>(sender))
        return button->state == ui::ControlState::on; // a check box has already changed
    if (const auto *item = dynamic_cast<const ui::MenuItem *>(sender))
        return item->state != ui::ControlState::on; // a menu item still shows the old state
    return !stored;
}

} // namespace

DefaultHandlerControl::DefaultHandlerControl(Sources controlSources, std::function<void()> rebuild)
    : sources(controlSources), rebuildMenu(std::move(rebuild)) {}

DefaultHandlerControl::Reading DefaultHandlerControl::read() const {
    const auto handler = defaultHandler();
    const bool routingEnabled = handler == ownBundleID(sources.bundles);
    return {handler, routingEnabled, handler && !routingEnabled ? handler : defaultBrowserFallbackChoice()};
}

bool DefaultHandlerControl::isRoutingEnabled() const {
    return defaultHandler() == ownBundleID(sources.bundles);
}

std::optional<std::string> DefaultHandlerControl::effectiveDefaultBrowserID() const {
    return read().effectiveDefault;
}

void DefaultHandlerControl::enableAppRouting() {
    const auto handler = defaultHandler();
    const std::string own = ownBundleID(sources.bundles);
    if (handler == own) {
        disableAppRouting();
        return;
    }
    rememberFallback(handler);
    setDefaultHandler(own);
    rebuildMenu();
}

bool DefaultHandlerControl::rememberFallback() {
    const auto handler = defaultHandler();
    const auto stored = storedFallback();
    return stored && (!handler || handler == stored) ? true : rememberFallback(handler);
}

void DefaultHandlerControl::turnAppRoutingOn() {
    if (!isRoutingEnabled())
        enableAppRouting();
}

void DefaultHandlerControl::disableAppRouting() {
    const auto browser = defaultBrowserFallbackChoice();
    if (!browser) {
        sources.sound.beep();
        return;
    }
    setDefaultHandler(*browser);
    rebuildMenu();
}

void DefaultHandlerControl::switchSystemDefaultBrowser(const Object *sender) {
    const std::string *browser = ui::representedText(dynamic_cast<const ui::MenuItem *>(sender));
    if (!browser)
        return;
    storeFallback(*browser);
    setDefaultHandler(*browser);
    rebuildMenu();
}

void DefaultHandlerControl::updateDefaultBrowserFromWindow(const Object *sender) {
    const auto *popUp = dynamic_cast<const ui::PopUpButton *>(sender);
    const std::string *browser = ui::representedText(popUp ? popUp->selectedItem() : nullptr);
    if (!browser)
        return;
    storeFallback(*browser);
    if (!isRoutingEnabled())
        setDefaultHandler(*browser);
    rebuildMenu();
}

bool DefaultHandlerControl::toggleRestoreDefaultBrowserOnQuit(const Object *sender) {
    const bool isStored = sources.defaults.update([&] {
        const bool stored = sources.defaults.boolForKey(settingsKey::restoresDefaultBrowserOnQuit);
        sources.defaults.setBool(wantsRestore(sender, stored), settingsKey::restoresDefaultBrowserOnQuit);
    });
    rebuildMenu();
    return isStored;
}

void DefaultHandlerControl::restoreSystemDefaultBrowserOnQuitIfNeeded() {
    if (!sources.defaults.boolForKey(settingsKey::restoresDefaultBrowserOnQuit) || !isRoutingEnabled())
        return;
    const auto browser = defaultBrowserFallbackChoice();
    if (browser && *browser != ownBundleID(sources.bundles))
        setDefaultHandler(*browser);
}

std::optional<std::string> DefaultHandlerControl::defaultHandler() const {
    return sources.launchServices.copyDefaultHandlerForUrlScheme("https");
}

std::optional<std::string> DefaultHandlerControl::storedFallback() const {
    return sources.defaults.stringForKey(settingsKey::routingFallbackBrowserID);
}

std::optional<std::string> DefaultHandlerControl::defaultBrowserFallbackChoice() const {
    if (auto stored = storedFallback())
        return stored;
    const auto &installed = sources.installedBrowsers;
    const auto found =
        std::ranges::find_if(installed, [own = ownBundleID(sources.bundles)](const Browser &browser) {
            return browser.bundleID != own;
        });
    return found == installed.end() ? std::nullopt : std::optional(found->bundleID);
}

bool DefaultHandlerControl::rememberFallback(const std::optional<std::string> &formerHandler) {
    if (formerHandler)
        return storeFallback(formerHandler);
    if (storedFallback())
        return true;
    return storeFallback(sources.installedBrowsers.empty()
                             ? std::nullopt
                             : std::optional(sources.installedBrowsers.front().bundleID));
}

bool DefaultHandlerControl::storeFallback(std::optional<std::string> bundleID) {
    std::optional<PropertyValue> value;
    if (bundleID)
        value = PropertyValue{std::move(*bundleID)};
    return sources.defaults.setObject(std::move(value), settingsKey::routingFallbackBrowserID);
}

void DefaultHandlerControl::setDefaultHandler(const std::string &bundleID) {
    // A refused change is not reported: afterwards the menu shows what the system has set.
    sources.launchServices.setDefaultHandlerForUrlScheme("http", bundleID);
    sources.launchServices.setDefaultHandlerForUrlScheme("https", bundleID);
}

} // namespace fernhop
