#pragma once

#include "platform/linux/dialogs-qt/DialogHost.h"
#include "platform/linux/dialogs-qt/ViewWidgets.h"

#include <QDialog>

namespace fernhop::freedesktop {

/// An alert in the desktop's own manner.
class AlertDialog : public QDialog {
  public:
    /// `host` outlives the dialog.
    AlertDialog(const ui::Alert &alert, const DialogHost &host);

    /// The response that the user gave; before that, and when the dialog was closed otherwise, the last
    /// button's.
    [[nodiscard]] int response() const { return answer; }

    /// The accessory view's widgets, or null.
    [[nodiscard]] ViewWidgets *accessory() const { return views; }

  private:
    [[nodiscard]] QWidget *makeTexts(const ui::Alert &alert);
    [[nodiscard]] QWidget *makeButtons(const ui::Alert &alert);

    int answer;
    ViewWidgets *views = nullptr;
};

} // namespace fernhop::freedesktop
