#include "platform/linux/links/FreedesktopWorkspace.h"

#include "platform/linux/applications/DesktopBundles.h"

#include <glib.h>

#include <cerrno>
#include <utility>

namespace fernhop::freedesktop {

FreedesktopWorkspace::FreedesktopWorkspace(const DesktopEntries &desktopEntries,
                                           const FocusProvider &focusProvider, Launcher &applicationLauncher,
                                           CurrentDelivery &currentDelivery)
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

} // namespace fernhop::freedesktop
