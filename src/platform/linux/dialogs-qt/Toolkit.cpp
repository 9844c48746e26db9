#include "platform/linux/dialogs-qt/Toolkit.h"

#include "platform/linux/base/Text.h"
#include "platform/linux/dialogs-qt/Icons.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <cstring>

namespace fernhop::freedesktop {

namespace {

bool takesConnections(const std::string &socketPath) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size());
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    const bool connected =
        connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(descriptor);
    return connected;
}

bool compositorAnswers() {
    const std::string display = qgetenv("WAYLAND_DISPLAY").toStdString(); // a name or a whole path
    if (display.empty())
        return false;
    const std::string folder = qgetenv("XDG_RUNTIME_DIR").toStdString();
    return takesConnections(display.front() == '/' ? display : folder + "/" + display);
}

bool displayAnswers() {
    if (qgetenv("DISPLAY").isEmpty())
        return false;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool connected = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return connected;
}

bool pluginLoads(const QString &file) {
    const QDir folder(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
    return QPluginLoader(folder.filePath(file)).load();
}

} // namespace

std::optional<std::string> usablePlatformPlugin() {
    const std::string asked = qgetenv("QT_QPA_PLATFORM").toStdString();
    if (asked == "offscreen")
        return asked;
    const bool wantsX = asked.starts_with("xcb");
    if (!wantsX && compositorAnswers() && pluginLoads(QStringLiteral("libqwayland-generic.so")))
        return "wayland";
    if (displayAnswers() && pluginLoads(QStringLiteral("libqxcb.so")))
        return "xcb";
    return std::nullopt;
}

Toolkit::Toolkit(std::string platformPlugin)
    : words{"fernhop", "-platform", std::move(platformPlugin)}, arguments(pointersTo(words)),
      argumentCount(static_cast<int>(words.size())) {
    QApplication::setDesktopFileName(QStringLiteral("org.fernhop.Fernhop"));
    application = std::make_unique<QApplication>(argumentCount, arguments.data());
    QApplication::setQuitOnLastWindowClosed(false);
    useAllIconPlaces();
}

} // namespace fernhop::freedesktop
