#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/defaulthandler/KdeBrowser.h"
#include "platform/linux/defaulthandler/MimeDefaults.h"
#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Finds what in this desktop keeps links from arriving at Fernhop, for people who ask why one did not. Main
/// thread only.
class RoutingDiagnostics {
  public:
    /// `ownID` is Fernhop's desktop-file ID, `browserVariable` the value of BROWSER where that is set.
    /// `desktopEntries` outlives this object.
    RoutingDiagnostics(XdgSession session, const DesktopEntries &desktopEntries, std::string ownID,
                       std::optional<std::string> browserVariable);

    /// The problems of this moment, one sentence or two each, the most serious first. Settings that
    /// contradict each other are problems only where at least one of them names Fernhop: where none does,
    /// routing is off.
    [[nodiscard]] std::vector<std::string> find() const;

  private:
    using Problems = std::vector<std::string>;
    using Setting = std::optional<MimeDefaults::Setting>;

    void findInOwnEntry(Problems &problems) const;
    void findInFiles(Problems &problems) const;
    void findInDefaults(Problems &problems) const;
    void findInXfce(Problems &problems) const;
    void findInKde(Problems &problems) const;
    void findInEnvironment(Problems &problems) const;
    [[nodiscard]] bool isOurs(const Setting &setting) const;
    [[nodiscard]] bool isRoutingMeant() const;
    [[nodiscard]] std::string describe(const std::string &scheme, const Setting &setting) const;

    XdgSession session;
    const DesktopEntries &entries;
    std::string ownDesktopID;
    std::optional<std::string> browser;
    MimeDefaults defaults;
    KdeBrowser kde;
    XfceBrowser xfce;
};

} // namespace fernhop::freedesktop
