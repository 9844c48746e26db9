#pragma once

#include "platform/SessionReport.h"
#include "platform/linux/defaulthandler/LinkArrivalProblems.h"
#include "platform/linux/focus/FocusProvider.h"

#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// What this process can tell about its session. Main thread only.
class LinuxSessionReport : public SessionReport {
  public:
    /// `sourceOfLinks` is asked each time. The others outlive the report.
    LinuxSessionReport(const FocusProvider &focusProvider, const LinkArrivalProblems &arrivalProblems,
                       bool isResident, std::function<std::optional<std::string>()> sourceOfLinks)
        : focus(focusProvider), arrival(arrivalProblems), resident(isResident),
          askSource(std::move(sourceOfLinks)) {}

    [[nodiscard]] std::optional<std::string> source() const override { return askSource(); }
    [[nodiscard]] std::string sourceProvider() const override { return focus.name(); }
    [[nodiscard]] bool running() const override { return resident; }
    [[nodiscard]] std::vector<std::string> problems() const override { return arrival.find(); }

  private:
    const FocusProvider &focus;
    const LinkArrivalProblems &arrival;
    bool resident;
    std::function<std::optional<std::string>()> askSource;
};

} // namespace fernhop::freedesktop
