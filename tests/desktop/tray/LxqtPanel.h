#pragma once

#include "PanelSession.h"

#include <memory>
#include <string>

namespace fernhop::desktoptest {

/// Starts LXQt's panel in white, 30 pixels high, with nothing but the icons of StatusNotifier items in it, at
/// an edge of the screen: "Top" or "Bottom".
[[nodiscard]] inline std::unique_ptr<support::ChildProcess> startLxqtPanel(PanelSession &session,
                                                                           const std::string &edge) {
    session.home.write(session.home.config() + "/lxqt/panel.conf",
                       "[General]\npanels=panel1\n[panel1]\nplugins=statusnotifier\nposition=" + edge +
                           "\ndesktop=0\npanelSize=30\niconSize=22\nwidth=100\nwidth-percent=true\n"
                           "alignment=-1\nbackground-color=#ffffff\n[statusnotifier]\n"
                           "type=statusnotifier\nalignment=Left\n");
    // Its plug-ins are the machine's.
    return session.start({"lxqt-panel"}, {{"XDG_DATA_DIRS", "/usr/share"}});
}

} // namespace fernhop::desktoptest
