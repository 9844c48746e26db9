#pragma once

#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/ViewWidgets.h"
#include "platform/ui/Alert.h"
#include "platform/ui/Appearance.h"

#include <QDialog>
#include <QPointer>
#include <functional>
#include <optional>
#include <string>
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

/// Shows alerts with Qt, while a Toolkit is there. Main thread only.
class QtAlerts : public ui::AlertPresenter {
  public:
    /// `onShown` is called whenever an alert has come to the screen or to the front.
    QtAlerts(ViewContext viewContext, std::function<void()> onShown);

    [[nodiscard]] bool bringToFront() override;
    [[nodiscard]] int runModal(const ui::Alert &alert) override;

    /// Closes the open alert as its last button does; without one nothing happens.
    void dismiss();

    /// The desktop's token by which an alert may come to the front next, good for once; empty: none.
    void setActivationToken(std::string newToken) { token = std::move(newToken); }

    /// Has alerts, the open one included, look as the user asks; nothing: as the toolkit's theme says.
    void setAppearance(std::optional<ui::AppearanceName> appearance);

  private:
    void bringForward(AlertDialog &dialog);

    const ViewContext context;
    const std::function<void()> onShown;
    std::string token;
    std::optional<ui::AppearanceName> appearance;
    QPointer<AlertDialog> open;
};

} // namespace fernhop::freedesktop
