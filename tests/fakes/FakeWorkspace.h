#pragma once

#include "fakes/FakeApplications.h"
#include "fakes/FakeNotificationCenter.h"
#include "platform/Workspace.h"

#include <utility>

namespace fernhop::fakes {

/// A running application of the fake session.
class FakeRunningApplication : public RunningApplication {
  public:
    explicit FakeRunningApplication(std::optional<std::string> bundleIdentifier)
        : identifier(std::move(bundleIdentifier)) {}

    std::optional<std::string> bundleIdentifier() const override { return identifier; }

    std::optional<std::string> identifier;
};

/// The session: the frontmost application and the opened URLs. An open call completes at once unless
/// `holdsCompletions` is set.
class FakeWorkspace : public Workspace {
  public:
    struct Opened {
        std::vector<Url> urls;
        Url applicationUrl;
        OpenConfiguration configuration;
    };

    FakeWorkspace(const FakeApplications &installed, FakeNotificationCenter &center)
        : applications(installed), notifications(center) {}

    std::shared_ptr<RunningApplication> front;
    std::vector<Opened> opened;
    std::optional<OpenError> failure; ///< the error of each open call
    bool holdsCompletions = false;
    std::vector<std::function<void()>> held; ///< completions to be called by the test

    /// Brings an application to the front, as the user does.
    void activate(std::shared_ptr<RunningApplication> application) {
        front = application;
        Notification::UserInfo info;
        info.emplace(workspaceApplicationKey, std::move(application));
        notifications.post({std::string(didActivateApplicationNotification), std::move(info)});
    }

    std::optional<Url> urlForApplicationWithBundleIdentifier(const std::string &bundleID) const override {
        lookups.push_back(bundleID);
        return applications.urlOf(bundleID);
    }

    std::shared_ptr<RunningApplication> frontmostApplication() const override { return front; }

    void openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                  const OpenConfiguration &configuration, OpenCompletion completion) override {
        opened.push_back({urls, applicationUrl, configuration});
        auto complete = [completion = std::move(completion), error = failure] { completion(nullptr, error); };
        if (holdsCompletions)
            held.push_back(std::move(complete));
        else
            complete();
    }

    bool openUrl(const Url &url) override {
        openedByDefault.push_back(url);
        return opensByDefault;
    }

    ui::ImageReference iconForFile(const std::string &path, double side) const override {
        iconRequests.emplace_back(path, side);
        return std::make_shared<const ui::Image>(ui::ApplicationIcon{path}, side, false);
    }

    std::vector<Url> openedByDefault;
    bool opensByDefault = true; ///< whether `openUrl` succeeds
    mutable std::vector<std::pair<std::string, double>> iconRequests;
    mutable std::vector<std::string> lookups; ///< identifiers that were looked up

  private:
    const FakeApplications &applications;
    FakeNotificationCenter &notifications;
};

} // namespace fernhop::fakes
