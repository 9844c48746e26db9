#include "platform/linux/dialogs-qt/TrayMenu.h"

#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/tray/MenuText.h"

#include <QApplication>

namespace fernhop::freedesktop {

namespace {

// A single '&' would mark an access key and not show.
QString titleOf(const ui::MenuItem &item) {
    return toText(shownText(item.title)).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

void addItems(QMenu &target, const ui::Menu &menu, const TrayMenuSource &source);

void addSubmenu(QMenu &target, QAction &action, const ui::Menu &menu, const TrayMenuSource &source) {
    auto *submenu = new QMenu(&target);
    action.setMenu(submenu);
    QObject::connect(submenu, &QMenu::aboutToShow, submenu, [submenu, &menu, source] {
        if (submenu->isEmpty())
            addItems(*submenu, menu, source);
    });
}

void connectAction(QAction &action, const ui::MenuItem &item, const TrayMenuSource &source) {
    // Later and from elsewhere, as what the action does may take the icon away, menu and all. The item lives
    // in the menu that the source keeps.
    QObject::connect(
        &action, &QAction::triggered, qApp, [&item, source] { source.perform(item.action, item); },
        Qt::QueuedConnection);
}

void addItem(QMenu &target, const ui::MenuItem &item, const TrayMenuSource &source) {
    if (item.isSeparator) {
        target.addSeparator();
        return;
    }
    QAction &action = *target.addAction(titleOf(item));
    action.setEnabled(item.enabled);
    action.setIcon(controlIcon(item.image, source.host));
    action.setCheckable(item.state == ui::ControlState::on);
    action.setChecked(item.state == ui::ControlState::on);
    // The command modifier of this desktop is Control.
    if (!item.keyEquivalent.empty())
        action.setShortcut(QKeySequence(QStringLiteral("Ctrl+") + toText(std::string(item.keyEquivalent))));
    if (item.submenu)
        addSubmenu(target, action, *item.submenu, source);
    else if (!item.action.empty())
        connectAction(action, item, source);
}

void addItems(QMenu &target, const ui::Menu &menu, const TrayMenuSource &source) {
    for (const ui::MenuItem &item : menu.items)
        addItem(target, item, source);
}

} // namespace

void fillMenu(QMenu &target, const TrayMenuSource &source) {
    addItems(target, *source.menu, source);
}

} // namespace fernhop::freedesktop
