#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::macos_double {

/// One call of the workspace to open URLs in an application.
struct OpenCall {
    std::vector<std::string> urls;
    std::string applicationUrl;
    bool activates;

    bool operator==(const OpenCall &) const = default;
};

/// The state of a Mac's services, which tests set and read.
struct Services {
    std::map<std::string, std::string> applications; ///< paths of bundles by their identifiers
    /// The identifier of the frontmost application, which may have none; nothing when there is none.
    std::optional<std::optional<std::string>> frontmost;
    std::vector<OpenCall> opened;
    std::vector<std::string> openedByDefault; ///< URLs that were opened without an application
    std::optional<std::string> openError;     ///< what opening fails with, in the user's language

    std::map<std::string, std::string> handlers;                  ///< bundle identifiers by URL schemes
    std::vector<std::pair<std::string, std::string>> handlersSet; ///< scheme and identifier of each call
    int handlerStatus = 0; ///< the result of setting a handler; all but 0 are errors

    std::string mainBundlePath; ///< the path of Fernhop's own bundle; empty when it is not running from one
    std::string homePath = "/Users/someone";

    std::vector<std::string> logFormats; ///< as received
    std::vector<std::string> logLines;   ///< as they came out

    std::vector<std::string> lifecycle; ///< the calls of the application object, in order
    /// Runs when the main loop begins, before launching has finished.
    std::function<void()> beforeLaunch;
    /// Runs as the main loop, between the end of launching and the application's end.
    std::function<void()> mainLoop;
};

} // namespace fernhop::macos_double
