#pragma once

#include "platform/linux/base/Bus.h"
#include "platform/ui/Image.h"

#include <functional>
#include <string>

namespace fernhop::freedesktop {

/// An icon with a tooltip and a menu on the bus, by org.kde.StatusNotifierItem; trays show it once a
/// NotifierWatcher has registered it. Main thread only.
class NotifierItem {
  public:
    /// `menuPath` is where the menu is on the same bus, which outlives the object. `takeToken` is given each
    /// token that a host sends ahead of a click, by which a window of ours may come to the front.
    NotifierItem(GDBusConnection *bus, const char *menuPath,
                 std::function<void(const std::string &token)> takeToken);
    NotifierItem(const NotifierItem &) = delete;
    NotifierItem &operator=(const NotifierItem &) = delete;

    /// Hosts are told of these when they differ from what was set before. A rim is for an image that need not
    /// stand out from the panel by itself.
    void setImage(ui::ImageReference newImage, bool withRim);
    void setToolTip(const std::string &text);
    /// The title names the item, for screen readers too; an empty one gives way to the application's name.
    void setTitle(const std::string &text);

  private:
    [[nodiscard]] GVariant *property(std::string_view name) const;
    [[nodiscard]] GVariant *toolTipProperty() const;
    [[nodiscard]] GVariant *iconProperty() const;
    void call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation) const;

    std::string menu;
    std::function<void(const std::string &token)> takeToken;
    ui::ImageReference image;
    bool hasRim = false;
    mutable GVariantPointer pixmaps; ///< of the image, in all sizes; null: not drawn yet
    std::string toolTip;
    std::string title;
    const BusObject object;
};

} // namespace fernhop::freedesktop
