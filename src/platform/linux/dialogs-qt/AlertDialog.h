#pragma once

#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/ViewWidgets.h"
#include "platform/ui/Alert.h"

#include <QDialog>
#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// An alert in the desktop's own manner.
class AlertDialog : public QDialog {
  public:
    /// `context` outlives the dialog.
    AlertDialog(const ui::Alert &alert, const ViewContext &context);

    /// The response that the user gave; before that, and when the dialog was closed otherwise, the last
    /// button's.
    [[nodiscard]] int response() const { return answer; }

    /// The accessory view's widgets, or null.
    [[nodiscard]] ViewWidgets *accessory() const { return views; }

    /// Calls `tell` once, when the dialog is on the screen.
    void whenShown(std::function<void()> tell) { shown = std::move(tell); }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    [[nodiscard]] QWidget *makeTexts(const ui::Alert &alert);
    [[nodiscard]] QWidget *makeButtons(const ui::Alert &alert);
    void focusConfirmingButton();

    int answer;
    std::function<void()> shown;
    ViewWidgets *views = nullptr;
};

} // namespace fernhop::freedesktop
