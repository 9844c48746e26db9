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

/// An application as the session knows it. The object stays valid after the application quits.
class RunningApplication : public Object {
  public:
    /// Its bundle identifier; nothing when the session cannot tell which application it is.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;
};

/// How applications are opened; every field's default is the platform's own.
struct OpenConfiguration {
    bool activates = true; ///< the application comes to the front
};

/// Why an application could not open something.
struct OpenError {
    std::string localizedDescription; ///< for the log, in the user's language
};

/// Called once for each open call, on any thread: the application that took the URLs, or the error. Both may
/// be empty: the open succeeded, and no running application is known.
using OpenCompletion = std::function<void(std::shared_ptr<RunningApplication>, std::optional<OpenError>)>;

/// Applications: where they are, which is in front, and opening URLs in them. Main thread only, the
/// completion aside.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// The bundle that the system would launch for an identifier; nothing when none is installed. Asked
    /// afresh at each call.
    [[nodiscard]] virtual std::optional<Url>
    urlForApplicationWithBundleIdentifier(const std::string &bundleID) const = 0;

    /// The application in front; null when there is none or the session does not tell.
    [[nodiscard]] virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;

    /// Opens `urls` in the application whose bundle is at `applicationUrl`, launching it when it does not
    /// run. Returns before the application has taken them; the outcome comes through `completion`.
    virtual void openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                          const OpenConfiguration &configuration, OpenCompletion completion) = 0;

    /// Opens `url` with whatever the system has for it. False when that could not be begun.
    virtual bool openUrl(const Url &url) = 0;

    /// The icon that the desktop shows for the file at `path`, `side` points wide and high; never null.
    [[nodiscard]] virtual ui::ImageReference iconForFile(const std::string &path, double side) const = 0;
};

} // namespace fernhop
