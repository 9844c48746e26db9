#include "platform/linux/launch/FreedesktopWorkspace.h"

#include "platform/linux/applications/DesktopBundles.h"

#include <gio/gio.h>

#include <cerrno>
#include <memory>
#include <utility>

namespace fernhop::freedesktop {
namespace {

/// Calls `completion`, and tells the current delivery of an error while its sender waits for the answer.
OpenCompletion toldToSender(const CurrentDelivery &current, OpenCompletion completion) {
    return [watched = std::weak_ptr(current.delivery), index = current.index,
            completion = std::move(completion)](const auto &application, auto error) {
        if (const auto delivery = watched.lock(); delivery && error)
            delivery->addUnopened({index, error->localizedDescription});
        completion(application, std::move(error));
    };
}

} // namespace

FreedesktopWorkspace::FreedesktopWorkspace(const DesktopEntries &desktopEntries, FocusProvider &focusProvider,
                                           Launcher &applicationLauncher, CurrentDelivery &currentDelivery)
    : entries(desktopEntries), focus(focusProvider), launcher(applicationLauncher), current(currentDelivery) {
}

std::optional<Url>
FreedesktopWorkspace::urlForApplicationWithBundleIdentifier(const std::string &bundleID) const {
    return applicationUrl(entries, bundleID);
}

std::shared_ptr<RunningApplication> FreedesktopWorkspace::frontmostApplication() const {
    return focus.frontmost();
}

void FreedesktopWorkspace::openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                                    const OpenConfiguration &configuration, OpenCompletion completion) {
    current.isTaken = true;
    completion = toldToSender(current, std::move(completion));
    auto entry = applicationUrl.isFileUrl() ? entries.entryAtPath(applicationUrl.path()) : std::nullopt;
    if (!entry)
        return completion(nullptr, OpenError{applicationUrl.absoluteString() + ": " + g_strerror(ENOENT)});
    LaunchRequest request{std::move(*entry), {}, {}, configuration.activates, current.delivery};
    for (const auto &url : urls)
        request.urls.push_back(url.absoluteString());
    if (current.delivery)
        request.tokens = current.delivery->takeTokens();
    launcher.launch(std::move(request), std::move(completion));
}

bool FreedesktopWorkspace::openUrl(const Url &url) {
    // Not waited for: the handler may be Fernhop itself, which answers from this very loop.
    g_app_info_launch_default_for_uri_async(url.absoluteString().c_str(), nullptr, nullptr, nullptr, nullptr);
    return true;
}

ui::ImageReference FreedesktopWorkspace::iconForFile(const std::string &path, double side) const {
    return std::make_shared<const ui::Image>(ui::ApplicationIcon{path}, side, false);
}

} // namespace fernhop::freedesktop
