#pragma once

#include "app/AppDelegate.h"
#include "app/TestDesktop.h"
#include "rules/URLRuleCoding.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fernhop {

/// A controller on a fake desktop with the browsers "browser.a" and "browser.b", installed in this order.
class ControllerTest : public testing::Test {
  protected:
    static constexpr const char *own = "org.fernhop.Fernhop";

    using Steps = std::vector<std::string>;

    TestDesktop desktop;
    std::unique_ptr<AppDelegate> controller;

    ControllerTest() {
        desktop.installBrowser("browser.a");
        desktop.installBrowser("browser.b");
    }

    void construct() { controller = std::make_unique<AppDelegate>(desktop.platform()); }

    void launch() {
        construct();
        controller->applicationDidFinishLaunching();
    }

    void store(std::string_view key, PropertyValue value) {
        desktop.defaults.stored.insert_or_assign(std::string(key), std::move(value));
    }

    void storeFallback(const std::string &browser) {
        store(settingsKey::routingFallbackBrowserID, {browser});
    }

    void storeURLRules(const std::vector<URLRule> &rules) {
        store(settingsKey::urlRules, {PropertyData{encodeURLRules(rules).value()}});
    }

    void storeAppRule(const std::string &app, const std::string &browser) {
        store(settingsKey::appRules, {PropertyDictionary{{app, {browser}}}});
    }

    void setHandlers(const std::string &bundleID) {
        desktop.launchServices.handlers = {{"http", bundleID}, {"https", bundleID}};
    }

    static std::shared_ptr<fakes::FakeRunningApplication> running(std::optional<std::string> bundleID) {
        return std::make_shared<fakes::FakeRunningApplication>(std::move(bundleID));
    }

    void route(const std::string &url) { controller->route(Url::parse(url).value()); }

    /// The links opened so far, each with the path of its application.
    std::vector<std::pair<std::string, std::string>> opened() const {
        std::vector<std::pair<std::string, std::string>> all;
        for (const auto &call : desktop.workspace.opened)
            for (const auto &url : call.urls)
                all.emplace_back(url.absoluteString(), call.applicationUrl.path());
        return all;
    }

    /// The path of the application that opened the last link.
    std::string lastTarget() const {
        return desktop.workspace.opened.empty() ? "" : desktop.workspace.opened.back().applicationUrl.path();
    }

    /// Begins to record steps: each setting that is written, as its key, each handler that is set, as
    /// "scheme identifier", and each menu that is shown, as "menu".
    void recordSteps() {
        recorded.clear();
        handlersRecorded = desktop.launchServices.calls.size();
        desktop.defaults.atWrite = [this](std::string_view key) { record(std::string(key)); };
        desktop.statusBar.atMenu = [this] { record("menu"); };
    }

    /// The steps in their order, since `recordSteps` or the last call.
    Steps steps() {
        recordHandlers();
        return std::exchange(recorded, {});
    }

    /// The steps of storing a rule under `key` while another browser is the default: the rule comes first,
    /// and the menu is shown for the mode and for the rule.
    static Steps storedThenTurnedOn(std::string_view key) {
        return {std::string(key),
                "routingFallbackBrowserID",
                "http org.fernhop.Fernhop",
                "https org.fernhop.Fernhop",
                "menu",
                "menu"};
    }

    /// How often the menu has been rebuilt since the last call.
    int rebuilds() { return std::exchange(desktop.statusBar.menusSet, 0); }

    std::optional<std::string> fallback() const {
        return desktop.defaults.stringForKey(settingsKey::routingFallbackBrowserID);
    }

  private:
    void record(std::string step) {
        recordHandlers();
        recorded.push_back(std::move(step));
    }

    void recordHandlers() {
        const auto &calls = desktop.launchServices.calls;
        for (; handlersRecorded < calls.size(); ++handlersRecorded)
            recorded.push_back(calls[handlersRecorded].first + " " + calls[handlersRecorded].second);
    }

    Steps recorded;
    std::size_t handlersRecorded = 0;
};

} // namespace fernhop
