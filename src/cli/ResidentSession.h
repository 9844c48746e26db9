#pragma once

#include "app/AppDelegate.h"
#include "app/DialogRequest.h"
#include "app/Platform.h"
#include "cli/Context.h"
#include "cli/Controller.h"

#include <functional>

namespace fernhop::cli {

/// The running Fernhop as commands see it. Main thread only.
class ResidentSession : public Controller {
  public:
    /// Requests a dialog, without waiting until it opens.
    using RequestDialog = std::function<void(const DialogRequest &)>;

    /// The arguments must outlive the session; `platform` is the one that the controller uses.
    ResidentSession(AppDelegate &delegate, const Platform &platform, const SessionReport &report,
                    RequestDialog requestDialog);

    /// The context for `perform`.
    [[nodiscard]] Context context();

    const std::vector<InstalledApplication> &installedApplications() override;
    const std::vector<Browser> &installedBrowsers() override;
    RoutingDecision decide(const Url &url, const std::optional<std::string> &source) override;
    void rebuildMenu() override;
    bool refresh() override;
    bool openDialog(ui::Selector selector, const std::string &identifier) override;
    bool quit() override;

  private:
    AppDelegate &delegate;
    const Platform &platform;
    const SessionReport &report;
    const RequestDialog requestDialog;
};

} // namespace fernhop::cli
