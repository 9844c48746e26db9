#include "support/KdeSession.h"

#include "support/ChildProcess.h"

#include <filesystem>

namespace fernhop::support {

bool isKdeInstalled() {
    return isInstalled("kde-open5");
}

void writeKdeSystem(const TemporaryHome &home) {
    std::filesystem::create_directory_symlink("/usr/share/mime", home.systemData() + "/mime");
    // The first is read up to version 5 of the frameworks, the second from version 6 on.
    for (const auto *name : {"kf5-applications.menu", "applications.menu"})
        home.write(home.root() + "/etc/menus/" + name,
                   "<!DOCTYPE Menu PUBLIC '-//freedesktop//DTD Menu 1.0//EN' "
                   "'http://www.freedesktop.org/standards/menu-spec/1.0/menu.dtd'>\n"
                   "<Menu><Name>All</Name><DefaultAppDirs/><Include><All/></Include></Menu>\n");
}

Environment kdeSession() {
    return {{"KDE_FULL_SESSION", "true"}, {"KDE_SESSION_VERSION", "5"}};
}

} // namespace fernhop::support
