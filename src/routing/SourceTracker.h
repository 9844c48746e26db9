#pragma once

#include "platform/Notifications.h"
#include "platform/Workspace.h"

#include <memory>
#include <optional>
#include <string>

namespace fernhop {

/// Tracks the source application: the one, other than Fernhop, that last came to the front. It remains the
/// source even after it has quit. Main thread only.
class SourceTracker {
  public:
    /// Sets the source at launch to the frontmost application, even one without an identifier; null changes
    /// nothing.
    void seed(std::shared_ptr<RunningApplication> frontmost, const std::string &ownBundleID);

    /// Makes the application of an activation notification the source and returns true. An application
    /// without an identifier, or Fernhop itself, changes nothing: false.
    [[nodiscard]] bool applicationDidActivate(const Notification &notification,
                                              const std::string &ownBundleID);

    /// Null until an application is known.
    [[nodiscard]] const std::shared_ptr<RunningApplication> &lastSourceApplication() const { return source; }

    /// The source's current identifier; nothing when unknown.
    [[nodiscard]] std::optional<std::string> sourceBundleID() const;

  private:
    std::shared_ptr<RunningApplication> source;
};

} // namespace fernhop
