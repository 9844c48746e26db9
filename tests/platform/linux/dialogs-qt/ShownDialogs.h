#pragma once

#include "app/Controller.h"
#include "dialogs/ExpectViews.h"
#include "platform/linux/dialogs-qt/QtAlerts.h"
#include "platform/linux/dialogs-qt/Toolkit.h"

#include <QPushButton>
#include <QTimer>
#include <cstdlib>
#include <exception>
#include <functional>
#include <map>
#include <memory>

namespace fernhop::freedesktop {

/// A controller whose dialogs are shown by the toolkit on a screen that nobody sees.
class ShownDialogs : public ControllerTest {
  protected:
    static QtAlerts &presenter() {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        if (!toolkit) // a process has one at a time
            toolkit = std::make_unique<Toolkit>("offscreen");
        if (!alerts)
            alerts = std::make_unique<QtAlerts>(context(), [] { ++current->timesShown; });
        return *alerts;
    }

    /// At exit it would be too late: the toolkit's own statics go first.
    static void TearDownTestSuite() {
        alerts.reset();
        toolkit.reset();
    }

    static inline std::unique_ptr<Toolkit> toolkit;
    static inline std::unique_ptr<QtAlerts> alerts;

    ShownDialogs() {
        setHandlers(own);
        storeFallback("browser.b");
        desktop.installFourApplications();
        launch();
        current = this;
    }
    ~ShownDialogs() override { current = nullptr; }

    /// Opens a dialog by its selector; `user` works in it while it is open, and must close it.
    void open(std::string_view selector, const std::function<void(AlertDialog &, const ui::View &)> &user,
              const std::string &identifier = "") {
        ui::Button sender;
        sender.identifier = identifier;
        desktop.alerts.user = [&](const ui::Alert &alert) { return run(alert, user); };
        controller->perform(selector, {.sender = &sender});
    }

    /// Shows an alert; `user` works in it while it is open.
    static int run(const ui::Alert &alert, const std::function<void(AlertDialog &, const ui::View &)> &user) {
        QtAlerts &dialogs = presenter();
        QTimer::singleShot(0, [&] {
            auto *dialog = dynamic_cast<AlertDialog *>(QApplication::activeModalWidget());
            if (!dialog) {
                ADD_FAILURE() << "no dialog is open";
                dialogs.dismiss();
                return;
            }
            try {
                user(*dialog, *alert.accessoryView);
            } catch (const std::exception &error) {
                ADD_FAILURE() << error.what();
            }
            dialogs.dismiss();
        });
        dialogs.setAppearance(current->stated);
        return dialogs.runModal(alert);
    }

    std::map<std::string, std::string> iconsOfEntries; ///< by the paths of the entries
    std::optional<ui::AppearanceName> stated;
    int timesShown = 0; ///< how often an alert came to the screen or to the front

    /// Has the keyboard's events go to the dialog, as a window manager does.
    static void activate(AlertDialog &dialog) {
        dialog.activateWindow();
        QApplication::processEvents();
    }

    static QPushButton *buttonNamed(AlertDialog &dialog, const QString &text) {
        for (auto *button : dialog.findChildren<QPushButton *>())
            if (button->text() == text)
                return button;
        throw std::runtime_error("no button " + text.toStdString());
    }

    static void press(AlertDialog &dialog, const QString &text) { buttonNamed(dialog, text)->click(); }

  private:
    static ViewContext context() {
        return {[](ui::Selector action, const Object &sender) {
                    if (!action.empty())
                        current->controller->perform(action, {.sender = &sender});
                },
                [](const std::string &entry) { return current->iconsOfEntries[entry]; }};
    }

    static inline ShownDialogs *current = nullptr;
};

} // namespace fernhop::freedesktop
