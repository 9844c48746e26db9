#pragma once

#include "platform/linux/base/LoopThread.h"
#include "platform/linux/base/Timer.h"
#include "platform/linux/tray/NotifierWatcher.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// Whether a tray of the System Tray Protocol is on the first screen of an X display. The display is looked
/// at on another thread, as one that does not answer holds up whoever asks it. Main thread only.
class XTray {
  public:
    /// Connects to the display, ":0" say; `changed` is called when a tray was found, and when one came or
    /// went.
    XTray(const std::string &display, std::function<void()> changed);
    ~XTray();
    XTray(const XTray &) = delete;
    XTray &operator=(const XTray &) = delete;

    [[nodiscard]] bool isPresent() const { return present; }

  private:
    class Connection;

    std::function<void()> changed;
    bool present = false;
    std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
    std::shared_ptr<std::unique_ptr<Connection>> connection; ///< the thread's
    LoopThread thread;
};

/// What shows the tray item in an XEmbed tray, from construction to destruction.
class EmbeddedIcon {
  public:
    virtual ~EmbeddedIcon() = default;
    /// Whether it does so now.
    [[nodiscard]] virtual bool isShown() const = 0;
};

/// How the icon is shown in an XEmbed tray.
struct EmbeddedTrayPlace {
    std::string display; ///< of the X session, ":0" say; empty: there is no tray of this kind
    std::function<std::unique_ptr<EmbeddedIcon>()> showIcon;
    std::chrono::milliseconds patience; ///< how long no host must be seen before the icon is shown
};

/// Decides whether the icon shows in an XEmbed tray: while there is such a tray and no
/// StatusNotifier host, so that there are never two icons. Main thread only.
class EmbeddedTray {
  public:
    /// `watcher`, which outlives the object and tells it of hosts, is used by one such object at a time.
    EmbeddedTray(NotifierWatcher &watcher, EmbeddedTrayPlace place);
    ~EmbeddedTray() {
        watcher.whenHostChanges([] {});
    }
    EmbeddedTray(const EmbeddedTray &) = delete;
    EmbeddedTray &operator=(const EmbeddedTray &) = delete;

    /// Whether an XEmbed tray shows the icon.
    [[nodiscard]] bool isShown() const { return icon && icon->isShown(); }

  private:
    void update();

    const EmbeddedTrayPlace place;
    std::unique_ptr<XTray> tray; ///< while there is no StatusNotifier host
    std::unique_ptr<EmbeddedIcon> icon;
    Timer delay; ///< from the moment that there is a tray to the icon
    NotifierWatcher &watcher;
};

} // namespace fernhop::freedesktop
