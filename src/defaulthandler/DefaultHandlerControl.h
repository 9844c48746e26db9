#pragma once

#include "platform/Bundle.h"
#include "platform/LaunchServices.h"
#include "platform/Object.h"
#include "platform/Sound.h"
#include "platform/UserDefaults.h"
#include "rules/Browser.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Turns App Routing on and off, changes the system's default browser and restores it on quit. Keeps no
/// state: the mode is read from the system each time. Every change sets "http" first and "https" second, to
/// the same application. Main thread only.
class DefaultHandlerControl {
  public:
    /// What it uses; must outlive this object. `installedBrowsers` is read at each use.
    struct Sources {
        LaunchServices &launchServices;
        UserDefaults &defaults;
        const Bundles &bundles;
        Sound &sound;
        const std::vector<Browser> &installedBrowsers;
    };

    /// The default browser from a single system query. Another program may change it at any time, so values
    /// that must agree come from the same query.
    struct Reading {
        std::optional<std::string> handler;          ///< of "https"; nothing when none is set
        bool routingEnabled;                         ///< the handler is Fernhop itself
        std::optional<std::string> effectiveDefault; ///< as of `effectiveDefaultBrowserID()`
    };

    /// `rebuildMenu` is called after each change that is visible in the menu.
    DefaultHandlerControl(Sources sources, std::function<void()> rebuildMenu);

    /// Queries the system once.
    [[nodiscard]] Reading read() const;

    /// Whether App Routing is on, which means that the system's handler of "https" is Fernhop itself. The
    /// mode is stored nowhere else; the handler of "http" is not checked.
    [[nodiscard]] bool isRoutingEnabled() const;

    /// The browser to show as the default: the system's or, while App Routing is on, the one that opens links
    /// which no rule matches; nothing when there is none.
    [[nodiscard]] std::optional<std::string> effectiveDefaultBrowserID() const;

    /// Toggles App Routing. When it is turned on, the previous default browser becomes the fallback.
    void enableAppRouting();

    /// Stores the fallback that turning App Routing on now would store. False when it could not be stored;
    /// what is stored already needs no writing.
    [[nodiscard]] bool rememberFallback();

    /// Turns App Routing on when it is off.
    void turnAppRoutingOn();

    /// Turns App Routing off; beeps and leaves it on when no browser can become the default.
    void disableAppRouting();

    /// Makes the browser of the sender (a menu item) the system's default, which turns App Routing off.
    void switchSystemDefaultBrowser(const Object *sender);

    /// Makes the browser selected in the sender (a pop-up button) the default; while App Routing is on, only
    /// the fallback.
    void updateDefaultBrowserFromWindow(const Object *sender);

    /// Changes whether the default browser is restored on quit: to the state of a check box, to the opposite
    /// state of a menu item or, for any other sender, to the opposite of the stored value. False when the
    /// change could not be stored.
    bool toggleRestoreDefaultBrowserOnQuit(const Object *sender);

    /// Restores the default browser if the user wants that, Fernhop is the default and a browser is known.
    void restoreSystemDefaultBrowserOnQuitIfNeeded();

  private:
    [[nodiscard]] std::optional<std::string> defaultHandler() const;
    [[nodiscard]] std::optional<std::string> storedFallback() const;
    [[nodiscard]] std::optional<std::string> defaultBrowserFallbackChoice() const;
    bool rememberFallback(const std::optional<std::string> &formerHandler);
    bool storeFallback(std::optional<std::string> bundleID);
    void setDefaultHandler(const std::string &bundleID);

    Sources sources;
    std::function<void()> rebuildMenu;
};

} // namespace fernhop
