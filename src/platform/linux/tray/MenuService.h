#pragma once

#include "platform/linux/base/Bus.h"
#include "platform/linux/base/Timer.h"
#include "platform/linux/tray/MenuProperties.h"
#include "platform/linux/tray/MenuTree.h"

#include <functional>
#include <memory>
#include <vector>

namespace fernhop::freedesktop {

/// Called with the selector of an item that was clicked, and the item, which lives until the call is over.
using PerformAction = std::function<void(ui::Selector selector, const ui::MenuItem &sender)>;

/// A menu on the bus by com.canonical.dbusmenu. It is serialized only when a host reads it. Hosts are
/// notified at most once per turn of the main loop, and only when the menu looks different. Main thread only.
class MenuService {
  public:
    static constexpr const char *path = "/MenuBar";

    /// `bus` and `iconFinder`, which tells the icons of applications, outlive the object.
    MenuService(GDBusConnection *bus, const IconFinder &iconFinder, PerformAction perform);
    MenuService(const MenuService &) = delete;
    MenuService &operator=(const MenuService &) = delete;

    /// Replaces the menu, which is not null.
    void setMenu(std::shared_ptr<const ui::Menu> menu);

  private:
    void call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation);
    [[nodiscard]] static GVariant *property(std::string_view name);

    void getLayout(GVariant *body, GDBusMethodInvocation *invocation);
    void getGroupProperties(GVariant *body, GDBusMethodInvocation *invocation);
    void getProperty(GVariant *body, GDBusMethodInvocation *invocation);
    void event(GVariant *body, GDBusMethodInvocation *invocation);
    void eventGroup(GVariant *body, GDBusMethodInvocation *invocation);
    void aboutToShow(GVariant *body, GDBusMethodInvocation *invocation);
    void aboutToShowGroup(GVariant *body, GDBusMethodInvocation *invocation);

    void click(MenuTree::Id id) const;
    /// Puts the latest menu into the tree.
    void bringUpToDate();
    void announce();
    /// Tells hosts the icon of an image that has been read.
    void tellIcon(const ui::ImageReference &image);

    const PerformAction perform;
    MenuIcons icons;
    MenuTree tree;
    MenuReaders readers;
    std::shared_ptr<const ui::Menu> latest; ///< null: it is in the tree already
    MenuTree::Revision announcedRevision = 0;
    Timer announcement;
    const BusObject object;
};

} // namespace fernhop::freedesktop
