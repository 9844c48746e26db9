#pragma once

#include "platform/Url.h"
#include "platform/ui/Selector.h"
#include "routing/RoutingDecision.h"
#include "rules/Browser.h"
#include "rules/InstalledApplication.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop::cli {

/// The running Fernhop as commands see it; when none is running, a replacement that reads the system itself.
/// Main thread only.
class Controller {
  public:
    virtual ~Controller() = default;

    /// The applications and browsers as Fernhop last found them; valid until `refresh`.
    [[nodiscard]] virtual const std::vector<InstalledApplication> &installedApplications() = 0;
    [[nodiscard]] virtual const std::vector<Browser> &installedBrowsers() = 0;

    /// Decides on a link from `source` (none: unknown) without opening it.
    [[nodiscard]] virtual RoutingDecision decide(const Url &url,
                                                 const std::optional<std::string> &source) = 0;

    /// Makes the menu show a change.
    virtual void rebuildMenu() = 0;

    /// Scans the applications anew. False when no Fernhop is running.
    virtual bool refresh() = 0;

    /// Opens a dialog by the selector of its action, soon after the call returns; `identifier` is that of the
    /// sender (empty: none). False when no Fernhop is running.
    virtual bool openDialog(ui::Selector selector, const std::string &identifier) = 0;

    /// Quits Fernhop, soon after the call returns. False when none is running.
    virtual bool quit() = 0;
};

} // namespace fernhop::cli
