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

/// The running Fernhop as a command sees it; where none runs, a stand-in that looks at the system by itself.
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

    /// Routes a link as if an application had opened it. False when no Fernhop runs that could.
    [[nodiscard]] virtual bool deliver(const Url &url) = 0;

    /// Shows a change that was made.
    virtual void rebuildMenu() = 0;

    /// Looks for applications anew. False when no Fernhop runs.
    virtual bool refresh() = 0;

    /// Opens a dialog by the selector of its action, soon after the call returns; `identifier` is what its
    /// sender carries (empty: nothing). False when no Fernhop runs that could show it.
    virtual bool openDialog(ui::Selector selector, const std::string &identifier) = 0;

    /// Ends Fernhop, soon after the call returns. False when none runs.
    virtual bool quit() = 0;
};

} // namespace fernhop::cli
