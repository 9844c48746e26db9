#pragma once

#include "platform/Object.h"
#include "platform/Url.h"
#include "platform/ui/Image.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// A running application. The object remains valid after the application has quit.
class RunningApplication : public Object {
  public:
    /// Its bundle identifier; nothing when it is unknown.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;
};

/// How an application is opened; the defaults are those of the platform.
struct OpenConfiguration {
    bool activates = true; ///< the application comes to the front
};

/// Why an application could not open something.
struct OpenError {
    std::string localizedDescription; ///< for the log, in the user's language
};

/// Called once for each open call, on any thread, with the application that opened the URLs, or the error.
/// Both are empty when the call succeeded and the application is unknown.
using OpenCompletion = std::function<void(std::shared_ptr<RunningApplication>, std::optional<OpenError>)>;

/// Finds applications, reports the frontmost one, and opens URLs. Main thread only, except for completions.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// The bundle that the system would launch for an identifier; nothing when none is installed. Not cached.
    [[nodiscard]] virtual std::optional<Url>
    urlForApplicationWithBundleIdentifier(const std::string &bundleID) const = 0;

    /// The frontmost application; null when there is none or the session does not reveal it.
    [[nodiscard]] virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;

    /// Opens `urls` in the application whose bundle is at `applicationUrl`, which is launched if it is not
    /// running. Returns at once; `completion` receives the outcome.
    virtual void openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                          const OpenConfiguration &configuration, OpenCompletion completion) = 0;

    /// Opens `url` with the system's handler. False when that could not be started.
    virtual bool openUrl(const Url &url) = 0;

    /// The icon that the desktop shows for the file at `path`, `side` points wide and high; never null.
    [[nodiscard]] virtual ui::ImageReference iconForFile(const std::string &path, double side) const = 0;
};

} // namespace fernhop
