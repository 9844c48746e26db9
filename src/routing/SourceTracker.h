#pragma once

#include "platform/Notifications.h"
#include "platform/Workspace.h"

#include <memory>
#include <optional>
#include <string>

namespace fernhop {

/// Remembers the application, other than Fernhop, that last came to the front: the one that links are taken
/// to come from. Never forgets it, also not when it quits. Main thread only.
class SourceTracker {
  public:
    /// Takes the application in front at launch, also one without an identifier; null changes nothing.
    void seed(std::shared_ptr<RunningApplication> frontmost, const std::string &ownBundleID);

    /// Takes the application of an activation notification; true when it is the source now. One without an
    /// identifier, or Fernhop itself, changes nothing.
    [[nodiscard]] bool applicationDidActivate(const Notification &notification,
                                              const std::string &ownBundleID);

    /// Null until an application is known.
    [[nodiscard]] const std::shared_ptr<RunningApplication> &lastSourceApplication() const { return source; }

    /// The source's identifier, asked of it now; nothing when unknown.
    [[nodiscard]] std::optional<std::string> sourceBundleID() const;

  private:
    std::shared_ptr<RunningApplication> source;
};

} // namespace fernhop
