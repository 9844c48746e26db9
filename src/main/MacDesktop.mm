#include "main/MacDesktop.h"

#include "catalog/ApplicationLayout.h"

namespace fernhop::macos {

MacDesktop::MacDesktop(const ActionTarget &target)
    : files(), bundles(), workspaceNotifications(SystemNotifications::ofWorkspace()),
      distributedNotifications(SystemNotifications::distributed()), statusBar(target), images(),
      alerts(target) {}

Platform MacDesktop::platform() {
    return {application,
            workspace,
            workspaceNotifications,
            distributedNotifications,
            launchServices,
            defaults,
            files,
            bundles,
            links,
            log,
            sound,
            statusBar,
            images,
            alerts,
            macApplicationLayout(files)};
}

} // namespace fernhop::macos
