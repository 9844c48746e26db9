#include "platform/linux/dialogs-qt/QtAlerts.h"
#include "platform/linux/dialogs-qt/Screen.h"

using namespace fernhop::freedesktop;

// The process looks this name up when it opens its first dialog.
extern "C" __attribute__((visibility("default"))) DialogPresenter *
fernhopMakeDialogPresenter(const DialogHost &host) {
    auto plugin = usablePlatformPlugin();
    return plugin ? new QtAlerts(host, *std::move(plugin)) : nullptr;
}
