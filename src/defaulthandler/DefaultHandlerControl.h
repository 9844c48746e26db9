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

/// Turns App Routing on and off, switches the system's default browser and hands it back on quit. Keeps no
/// state: the mode is asked of the system each time. Every change sets "http" first and "https" second, to
/// the same application. Main thread only.
class DefaultHandlerControl {
  public:
    /// What it works on; everything must outlive it. `installedBrowsers` is read at each use.
    struct Sources {
        LaunchServices &launchServices;
        UserDefaults &defaults;
        const Bundles &bundles;
        Sound &sound;
        const std::vector<Browser> &installedBrowsers;
    };

    /// The default browser as one question to the system told it. Another program may change it at any time,
    /// so what has to agree comes from the same reading.
    struct Reading {
        std::optional<std::string> handler;          ///< of "https"; nothing when none is set
        bool routingEnabled;                         ///< the handler is Fernhop itself
        std::optional<std::string> effectiveDefault; ///< as effectiveDefaultBrowserID() tells it
    };

    /// `rebuildMenu` is called after each change that the menu shows.
    DefaultHandlerControl(Sources sources, std::function<void()> rebuildMenu);

    /// Asks the system once.
    [[nodiscard]] Reading read() const;

    /// Whether App Routing is on: the system's handler of "https" is Fernhop itself. The mode is stored
    /// nowhere else. The handler of "http" plays no part.
    [[nodiscard]] bool isRoutingEnabled() const;

    /// The browser that the user should see as the default: the system's, or with App Routing on the one that
    /// takes the links that no rule claims; nothing when there is none.
    [[nodiscard]] std::optional<std::string> effectiveDefaultBrowserID() const;

    /// Turns App Routing on, or off when it is on. The former default browser becomes the fallback.
    void enableAppRouting();

    /// Turns App Routing on when it is off.
    void turnAppRoutingOn();

    /// Turns App Routing off; beeps and leaves it on when there is no browser to hand the role to.
    void disableAppRouting();

    /// Makes the browser that the sender (a menu item) carries the system's default, and thereby leaves App
    /// Routing.
    void switchSystemDefaultBrowser(const Object *sender);

    /// Makes the browser selected in the sender (a pop-up button) the default, within App Routing only the
    /// fallback.
    void updateDefaultBrowserFromWindow(const Object *sender);

    /// Changes whether the default browser is restored on quit: to the state of a check box, to the opposite
    /// of a menu item's, with any other sender to the opposite of the stored value. False when the
    /// change could not be stored.
    bool toggleRestoreDefaultBrowserOnQuit(const Object *sender);

    /// Hands the default role back when the user wants that, Fernhop has it and a browser is known.
    void restoreSystemDefaultBrowserOnQuitIfNeeded();

  private:
    [[nodiscard]] std::optional<std::string> defaultHandler() const;
    [[nodiscard]] std::optional<std::string> storedFallback() const;
    [[nodiscard]] std::optional<std::string> defaultBrowserFallbackChoice() const;
    void rememberFallback(const std::optional<std::string> &formerHandler);
    void storeFallback(std::optional<std::string> bundleID);
    void setDefaultHandler(const std::string &bundleID);

    Sources sources;
    std::function<void()> rebuildMenu;
};

} // namespace fernhop
