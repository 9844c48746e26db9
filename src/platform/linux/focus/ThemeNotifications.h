#pragma once

#include "platform/linux/focus/PostingNotificationCenter.h"
#include "platform/linux/glib/GPointer.h"

#include <optional>

namespace fernhop::freedesktop {

/// Posts the theme notification when the desktop changes between light and dark: when the settings portal
/// says that `color-scheme` of `org.freedesktop.appearance` has another value. Main thread only.
class ThemeNotifications {
  public:
    /// `sessionBus` may be null: then nothing is ever posted. The centre outlives this object.
    ThemeNotifications(GDBusConnection *sessionBus, PostingNotificationCenter &distributed);
    ~ThemeNotifications();
    ThemeNotifications(const ThemeNotifications &) = delete;
    ThemeNotifications &operator=(const ThemeNotifications &) = delete;

  private:
    void settingChanged(GVariant *parameters);

    GObjectPointer<GDBusConnection> bus;
    PostingNotificationCenter &notifications;
    guint subscription = 0;
    std::optional<guint32> scheme; ///< as last told
};

} // namespace fernhop::freedesktop
