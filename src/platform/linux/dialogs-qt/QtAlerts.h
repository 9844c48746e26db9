#pragma once

#include "platform/linux/dialogs-qt/AlertDialog.h"
#include "platform/linux/dialogs-qt/DialogHost.h"

#include <QApplication>
#include <QPointer>
#include <memory>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Shows alerts with Qt, whose events come through the process's own main loop: what the process does
/// otherwise goes on while an alert is open.
class QtAlerts : public DialogPresenter {
  public:
    /// `platformPlugin` is one that can show windows here.
    QtAlerts(DialogHost asks, std::string platformPlugin);

    [[nodiscard]] bool bringToFront() override;
    [[nodiscard]] std::unique_ptr<EmbeddedIcon> makeEmbeddedIcon(PerformAction perform) override;
    [[nodiscard]] int runModal(const ui::Alert &alert) override;
    void dismiss() override;
    void appearanceChanged() override;

  private:
    void bringForward(AlertDialog &dialog) const;

    DialogHost host;
    std::vector<std::string> words; ///< the toolkit's command line, which it refers to
    std::vector<char *> arguments;
    int argumentCount;
    std::unique_ptr<QApplication> application;
    QPointer<AlertDialog> open;
};

} // namespace fernhop::freedesktop
