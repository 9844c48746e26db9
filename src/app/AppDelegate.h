#pragma once

#include "app/ActionTable.h"
#include "app/Platform.h"
#include "app/RuleActions.h"
#include "catalog/AppIcons.h"
#include "catalog/ApplicationCatalog.h"
#include "catalog/BrowserCatalog.h"
#include "defaulthandler/DefaultHandlerControl.h"
#include "dialogs/AddAppRulesDialog.h"
#include "dialogs/EditAppRuleDialog.h"
#include "dialogs/FeedbackDialog.h"
#include "dialogs/URLRuleDialog.h"
#include "platform/ui/StatusItem.h"
#include "routing/LinkIntake.h"
#include "routing/Router.h"
#include "routing/SourceTracker.h"
#include "settings/Preferences.h"
#include "statusitem/StatusItemAppearance.h"
#include "statusitem/StatusMenu.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The one controller: owns all state, receives links, and implements every action of menu items, controls
/// and the desktop. Lives until the process ends. Main thread only.
class AppDelegate {
  public:
    /// Sets up the state and begins to receive links, which are queued until launch has finished.
    explicit AppDelegate(Platform platform);
    AppDelegate(const AppDelegate &) = delete;
    AppDelegate &operator=(const AppDelegate &) = delete;

    /// Performs the operation of a selector; nothing when there is no such selector.
    std::optional<ActionResult> perform(std::string_view selector, const ActionArguments &arguments = {});

    /// Every selector with its operation.
    [[nodiscard]] const ActionTable &actionTable() const { return actions; }

    /// Starts up; called once when the desktop reports that the application has launched.
    void applicationDidFinishLaunching();
    /// False: opening the application again does nothing.
    [[nodiscard]] bool applicationShouldHandleReopen() const { return false; }
    /// False: the application has no main window.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
    /// Restores the default browser if the user wants that; always returns `now`.
    [[nodiscard]] TerminateReply applicationShouldTerminate();

    /// Opens a link in the browser that the router chooses; without one, logs the link and beeps.
    void route(const Url &url);
    /// The decision for a link from `source` (nothing: unknown), which is not opened.
    [[nodiscard]] RoutingDecision decide(const Url &url, const std::optional<std::string> &source);

    /// Rescans the installed applications and browsers. Does not rebuild the menu.
    void refreshBrowsers();
    /// Builds the menu from the current state and updates the status item.
    void rebuildMenu();

    [[nodiscard]] Preferences &settings() { return preferences; }
    [[nodiscard]] const BrowserCatalog &browserCatalog() const { return catalog; }
    [[nodiscard]] DefaultHandlerControl &defaultHandlers() { return defaultHandlerControl; }
    [[nodiscard]] const LinkIntake &linkIntake() const { return intake; }
    [[nodiscard]] const SourceTracker &sourceTracker() const { return sources; }
    [[nodiscard]] const std::vector<InstalledApplication> &applications() const {
        return installedApplications;
    }
    [[nodiscard]] const std::vector<Browser> &browsers() const { return installedBrowsers; }

  private:
    void init();
    [[nodiscard]] ActionTable makeActionTable();
    void addLifecycleActions(ActionTable &table);
    void addDialogActions(ActionTable &table);
    void addDefaultHandlerActions(ActionTable &table);
    void addRuleActions(ActionTable &table);

    void activeApplicationDidChange(const Notification &notification);
    void systemAppearanceDidChange();
    void open(const Url &url, const Browser &browser);

    /// Runs a dialog; if one is already open, brings it to the front instead.
    void runDialog(const std::function<void()> &dialog);
    void showAddURLRuleDialog();
    void showEditURLRuleDialog(const URLRule &rule);
    void showAddRuleDialog();
    void showEditRuleDialog(const std::string &sourceBundleID);
    void showFeedbackDialog();

    Platform platform;
    const std::unique_ptr<ui::StatusItem> statusItem;
    const ApplicationCatalog applicationCatalog;
    const BrowserCatalog catalog;
    Preferences preferences;
    std::vector<InstalledApplication> installedApplications;
    std::vector<Browser> installedBrowsers;
    AppIcons icons;
    SourceTracker sources;
    LinkIntake intake;
    const Router router;
    DefaultHandlerControl defaultHandlerControl;
    const StatusItemAppearance statusItemAppearance;
    const StatusMenu statusMenu;
    const RuleDialogSources ruleDialogSources;
    AddAppRulesDialog addAppRulesDialog;
    const EditAppRuleDialog editAppRuleDialog;
    const URLRuleDialog urlRuleDialog;
    const FeedbackDialog feedbackDialog;
    RuleActions ruleActions;
    const ActionTable actions;
};

} // namespace fernhop
