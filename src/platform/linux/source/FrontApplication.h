#pragma once

#include "platform/linux/source/DesktopApplication.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Which application is in front, as a focus provider found out last, and who wants to know of changes.
class FrontApplication {
  public:
    using Observer = std::function<void(std::shared_ptr<RunningApplication>)>;

    [[nodiscard]] const std::shared_ptr<RunningApplication> &current() const { return application; }

    void observe(Observer newObserver) { observer = std::move(newObserver); }

    /// A window of this application is in front now; no ID: of one that nobody knows. Tells the observer when
    /// it is another application than before.
    void show(const std::optional<std::string> &desktopID) {
        if (application && application->bundleIdentifier() == desktopID)
            return;
        application = std::make_shared<DesktopApplication>(desktopID);
        if (observer)
            observer(application);
    }

    /// No application is in front now.
    void showNone() { application.reset(); }

  private:
    std::shared_ptr<RunningApplication> application;
    Observer observer;
};

} // namespace fernhop::freedesktop
