#pragma once

#include "main/LinuxDesktop.h"
#include "platform/SessionReport.h"
#include "platform/linux/defaulthandler/RoutingDiagnostics.h"
#include "platform/linux/tray/TrayStatusBar.h"

#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// What this process can tell about its session. Main thread only.
class LinuxSessionReport : public SessionReport {
  public:
    /// `residentTray` is where the running Fernhop shows its icon; null in any other process. `sourceOfLinks`
    /// is asked each time. The others outlive the report.
    LinuxSessionReport(const LinuxDesktop &linuxDesktop, const TrayStatusBar *residentTray,
                       std::function<std::optional<std::string>()> sourceOfLinks)
        : desktop(linuxDesktop), tray(residentTray), askSource(std::move(sourceOfLinks)) {}

    [[nodiscard]] std::optional<std::string> source() const override { return askSource(); }
    [[nodiscard]] std::string sourceProvider() const override { return desktop.focus->name(); }
    [[nodiscard]] bool running() const override { return tray != nullptr; }
    [[nodiscard]] IconPlace iconPlace() const override {
        return tray ? tray->iconPlace() : IconPlace::nowhere;
    }
    [[nodiscard]] std::optional<std::string> settingsProblem() const override {
        return desktop.defaults.problem();
    }
    [[nodiscard]] std::optional<std::string> refusal(const std::string &bundleID) const override {
        return browserRefusal(desktop.entries, bundleID);
    }
    [[nodiscard]] std::vector<std::string> problems() const override { return desktop.routingProblems(); }

  private:
    const LinuxDesktop &desktop;
    const TrayStatusBar *tray;
    std::function<std::optional<std::string>()> askSource;
};

} // namespace fernhop::freedesktop
