#pragma once

#include "platform/Sound.h"
#include "platform/linux/dialogs-qt/DialogHost.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

/// Shows alerts with the dialogs' module, which is loaded when the first one opens or a tray is there that
/// takes only windows: until then no toolkit is in the process. Where the module is missing or finds no
/// screen, an alert beeps and is cancelled. Main thread only.
class LoadedAlerts : public DialogPresenter {
  public:
    /// `modulePath` is the module's file; `beeper` outlives this object.
    LoadedAlerts(std::string modulePath, Sound &beeper) : path(std::move(modulePath)), sound(beeper) {}

    /// What the dialogs ask; set before the first one opens.
    void setHost(DialogHost asked) { host = std::move(asked); }

    /// `loaded` is called when the toolkit has come into the process.
    void setWhenLoaded(std::function<void()> loaded) { whenLoaded = std::move(loaded); }

    [[nodiscard]] bool bringToFront() override { return presenter && presenter->bringToFront(); }
    [[nodiscard]] std::unique_ptr<EmbeddedIcon> makeEmbeddedIcon(PerformAction perform) override;
    [[nodiscard]] int runModal(const ui::Alert &alert) override;
    void dismiss() override;
    void appearanceChanged() override;

  private:
    void load();

    std::string path;
    Sound &sound;
    DialogHost host;
    std::function<void()> whenLoaded;
    std::unique_ptr<DialogPresenter> presenter;
};

} // namespace fernhop::freedesktop
