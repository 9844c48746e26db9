// The program that shows Fernhop's windows on Linux: its dialogs, and its icon in XEmbed trays. The running
// Fernhop starts it, with a connection as standard input, and ends it by closing that.

#include "app/AppDelegate.h"
#include "app/DialogRequest.h"
#include "app/SenderText.h"
#include "main/LinuxDesktop.h"
#include "main/NoScreen.h"
#include "platform/CommandResult.h"
#include "platform/Version.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Bus.h"
#include "platform/linux/base/CallSoon.h"
#include "platform/linux/dialogs-qt/DialogsProgram.h"
#include "platform/linux/dialogs-qt/MessageSocket.h"
#include "platform/linux/dialogs-qt/QtAlerts.h"
#include "platform/linux/dialogs-qt/Toolkit.h"
#include "platform/linux/dialogs-qt/XEmbedIcon.h"

#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {
namespace {

/// The connection to the running Fernhop. What this process starts must not keep it open.
FileDescriptor residentConnection() {
    fcntl(STDIN_FILENO, F_SETFD, FD_CLOEXEC);
    return FileDescriptor(STDIN_FILENO);
}

/// Has the running Fernhop beep: this process ends with its dialog, and the sound would with it.
class ResidentSound : public Sound {
  public:
    explicit ResidentSound(const MessageSocket &connection) : resident(connection) {}
    void beep() override { resident.send({message::beep}); }

  private:
    const MessageSocket &resident;
};

/// One dialog: the controller with the desktop below it, on the settings that the running Fernhop has too.
class Dialogs {
  public:
    explicit Dialogs(const Environment &environment)
        : resident(residentConnection()), sound(resident), desktop(environment, nullptr),
          alerts({[this](ui::Selector action, const Object &sender) { perform(action, sender); },
                  [this](const std::string &path) { return iconOfEntry(path); }},
                 [this] {
                     resident.send({message::handled, request});
                 }),
          statusBar([this] { hasChanges = true; }), delegate(desktop.platform(statusBar, alerts, sound)) {}

    void run() {
        delegate.refreshBrowsers();
        resident.listen([this](const Message &message) { received(message); },
                        [this] {
                            alerts.dismiss();
                            QCoreApplication::quit();
                        });
        QCoreApplication::exec();
    }

  private:
    void received(const Message &message) {
        if (message.front() == message::appearance && message.size() == 2)
            alerts.setAppearance(appearanceOfWord(message[1]));
        // Later, as the next message must be heard while a dialog is open.
        if (message.front() == message::open && message.size() == 5)
            callSoon([this, message] {
                request = message[4];
                open({message[1], message[2]}, message[3]);
            });
    }

    void open(const DialogRequest &dialog, const std::string &token) {
        alerts.setActivationToken(token);
        const bool isFirst = !std::exchange(isOpen, true);
        openDialog(delegate, dialog); // or brings the open one to the front, which the rest is for
        resident.send({message::handled, request});
        if (!isFirst)
            return;
        if (hasChanges)
            resident.send({message::changed});
        QCoreApplication::quit();
    }

    void perform(ui::Selector action, const Object &sender) {
        const std::string *identifier = identifierOf(&sender);
        // What is started here would depend on how long the dialog stays.
        if (action == "openContactFromButton:" && identifier)
            resident.send({message::perform, std::string(action), *identifier});
        else
            (void)delegate.perform(action, {.sender = &sender});
    }

    std::string iconOfEntry(const std::string &path) const {
        const auto entry = desktop.entries.entryAtPath(path);
        return entry ? iconName(entry->icon) : "";
    }

    MessageSocket resident;
    ResidentSound sound;
    LinuxDesktop desktop;
    QtAlerts alerts;
    NoStatusBar statusBar;
    AppDelegate delegate;
    std::string request; ///< the number of the last one that was handled, or is being handled
    bool isOpen = false;
    bool hasChanges = false;
};

int showIcon(const Environment &environment, const std::string &item) {
    const auto connection = connectToSessionBus(environment);
    if (!connection)
        return EXIT_FAILURE;
    MessageSocket resident(residentConnection());
    resident.listen([](const Message &) {}, [] { QCoreApplication::quit(); });
    const XEmbedIcon icon(connection->get(), item);
    QCoreApplication::exec();
    return EXIT_SUCCESS;
}

int run(const Environment &environment, const std::vector<std::string> &words) {
    const bool isDialog = words.size() == 2 && words[0] == dialogMode;
    const bool isIcon = words.size() == 3 && words[0] == iconMode;
    if (!isDialog && !isIcon) {
        std::fprintf(stderr, "fernhop-dialogs: the running Fernhop starts this program\n");
        return exitStatus::usage;
    }
    if (isOtherVersion(words.back())) {
        std::fprintf(stderr, "fernhop-dialogs: the running Fernhop is another version\n");
        return EXIT_FAILURE;
    }
    const auto plugin = usablePlatformPlugin();
    if (!plugin || (isIcon && *plugin != "xcb"))
        return noDisplayStatus;
    const Toolkit toolkit(*plugin);
    if (isIcon)
        return showIcon(environment, words[1]);
    Dialogs(environment).run();
    return EXIT_SUCCESS;
}

} // namespace
} // namespace fernhop::freedesktop

int main(int count, char **arguments) {
    const auto environment = fernhop::freedesktop::Environment::current();
    std::setlocale(LC_ALL, "");
    return fernhop::freedesktop::run(environment, {arguments + 1, arguments + count});
}
