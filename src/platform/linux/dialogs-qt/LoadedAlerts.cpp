#include "platform/linux/dialogs-qt/LoadedAlerts.h"

#include <dlfcn.h>

#include <utility>

namespace fernhop::freedesktop {

std::unique_ptr<EmbeddedIcon> LoadedAlerts::makeEmbeddedIcon(PerformAction perform) {
    if (!presenter)
        load();
    return presenter ? presenter->makeEmbeddedIcon(std::move(perform)) : nullptr;
}

int LoadedAlerts::runModal(const ui::Alert &alert) {
    // Tried at each alert, for a screen may be there by now.
    if (!presenter)
        load();
    if (presenter)
        return presenter->runModal(alert);
    sound.beep();
    return ui::alertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
}

void LoadedAlerts::dismiss() {
    if (presenter)
        presenter->dismiss();
}

void LoadedAlerts::appearanceChanged() {
    if (presenter)
        presenter->appearanceChanged();
}

void LoadedAlerts::load() {
    // Never closed again: the toolkit leaves threads and exit handlers behind.
    void *module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr)
        return;
    const auto make = reinterpret_cast<MakeDialogPresenter>(dlsym(module, makeDialogPresenterName));
    if (make != nullptr)
        presenter.reset(make(host));
    if (presenter && whenLoaded)
        whenLoaded();
}

} // namespace fernhop::freedesktop
