#pragma once

#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/base/Files.h"
#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"
#include "platform/linux/defaulthandler/RoutingDiagnostics.h"
#include "support/TemporaryHome.h"

#include <optional>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

inline constexpr const char *ownID = "org.fernhop.Fernhop";

/// A user's folders, with Fernhop and two browsers installed.
class Session {
  public:
    Session() {
        for (const auto *id : {ownID, "firefox", "chromium"})
            entries.installBrowser(id);
    }

    support::TemporaryHome home;
    fakes::FakeDesktopEntries entries;

    /// From now on no application declares that it opens links, so that only settings count.
    void declareNothing() {
        for (auto &entry : entries.installed)
            entry.schemes.clear();
    }

    [[nodiscard]] XdgSession places(const std::string &desktop) const {
        const support::ScopedEnvironment environment(home.environment() +
                                                     support::Environment{{"XDG_CURRENT_DESKTOP", desktop}});
        return XdgSession::of(Environment::current());
    }

    [[nodiscard]] FreedesktopLaunchServices services(const std::string &desktop) const {
        return {places(desktop), entries, ownID};
    }

    [[nodiscard]] std::vector<std::string> problems(const std::string &desktop,
                                                    const std::optional<std::string> &browser = {}) const {
        return routingProblems(places(desktop), entries, ownID, browser);
    }

    [[nodiscard]] std::string config(const std::string &name) const { return home.config() + '/' + name; }
    [[nodiscard]] std::string admin(const std::string &name) const { return home.root() + "/etc/" + name; }

    void writeConfig(const std::string &name, const std::string &text) const {
        home.write(config(name), text);
    }

    [[nodiscard]] std::string readConfig(const std::string &name) const {
        return readFile(config(name)).value_or("(none)");
    }

    /// The line of one default application.
    [[nodiscard]] static std::string defaults(const std::string &scheme, const std::string &id) {
        return "[Default Applications]\nx-scheme-handler/" + scheme + '=' + id + ".desktop\n";
    }
};

/// The handler that a desktop's opener would start.
[[nodiscard]] inline std::optional<std::string> handler(const Session &session, const std::string &desktop,
                                                        const std::string &scheme = "https") {
    return session.services(desktop).copyDefaultHandlerForUrlScheme(scheme);
}

/// Makes an application the handler of both schemes; whether that succeeded.
[[nodiscard]] inline bool setBoth(const Session &session, const std::string &desktop, const std::string &id) {
    auto services = session.services(desktop);
    const bool http = services.setDefaultHandlerForUrlScheme("http", id);
    return services.setDefaultHandlerForUrlScheme("https", id) && http;
}

} // namespace fernhop::freedesktop
