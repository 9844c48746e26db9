#include "platform/macos/SystemWorkspace.h"

#include "platform/macos/SystemRunningApplication.h"
#include "platform/macos/ui/NativeImage.h"

namespace fernhop::macos {

namespace {

NSWorkspace *workspace() {
    return [NSWorkspace sharedWorkspace];
}

std::shared_ptr<RunningApplication> runningApplication(NSRunningApplication *application) {
    return application ? std::make_shared<SystemRunningApplication>(application) : nullptr;
}

std::optional<OpenError> openError(NSError *error) {
    return error ? std::optional(OpenError{fromNSString([error localizedDescription])}) : std::nullopt;
}

} // namespace

std::optional<Url> SystemWorkspace::urlForApplicationWithBundleIdentifier(const std::string &bundleID) const {
    @autoreleasepool {
        return fromNSURL([workspace() URLForApplicationWithBundleIdentifier:toNSString(bundleID)]);
    }
}

std::shared_ptr<RunningApplication> SystemWorkspace::frontmostApplication() const {
    @autoreleasepool {
        return runningApplication([workspace() frontmostApplication]);
    }
}

void SystemWorkspace::openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                               const OpenConfiguration &configuration, OpenCompletion completion) {
    @autoreleasepool {
        NSMutableArray *links = [NSMutableArray arrayWithCapacity:urls.size()];
        for (const Url &url : urls)
            [links addObject:toNSURL(url)];
        NSWorkspaceOpenConfiguration *options = [NSWorkspaceOpenConfiguration configuration];
        [options setActivates:configuration.activates];
        [workspace() openURLs:links
            withApplicationAtURL:toNSURL(applicationUrl)
                   configuration:options
               completionHandler:^(NSRunningApplication *application, NSError *error) {
                 // Called on a queue that the system chooses.
                 @autoreleasepool {
                     completion(runningApplication(application), openError(error));
                 }
               }];
    }
}

bool SystemWorkspace::openUrl(const Url &url) {
    @autoreleasepool {
        return [workspace() openURL:toNSURL(url)];
    }
}

ui::ImageReference SystemWorkspace::iconForFile(const std::string &path, double side) const {
    return iconOfFile(path, side);
}

} // namespace fernhop::macos
