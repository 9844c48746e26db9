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

/// A Mac's services as a test sets them up and finds them afterwards.
struct Services {
    std::map<std::string, std::string> applications; ///< paths of bundles by their identifiers
    /// The identifier of the application in front, which may have none; nothing when none is in front.
    std::optional<std::optional<std::string>> frontmost;
    std::vector<OpenCall> opened;
    std::vector<std::string> openedByDefault; ///< URLs that were opened without naming an application
    std::optional<std::string> openError;     ///< what opening fails with, in the user's language

    std::map<std::string, std::string> handlers;                  ///< bundle identifiers by URL schemes
    std::vector<std::pair<std::string, std::string>> handlersSet; ///< scheme and identifier of each call
    int handlerStatus = 0; ///< what setting a handler answers; all but 0 refuse

    std::string mainBundlePath; ///< of the running application's bundle; empty when it runs outside of one
    std::string homePath = "/Users/someone";

    std::vector<std::string> logFormats; ///< as they were given
    std::vector<std::string> logLines;   ///< as they came out

    std::vector<std::string> lifecycle; ///< what the application object was told, in order
    /// Runs when the main loop begins, before launching has finished.
    std::function<void()> beforeLaunch;
    /// Runs as the main loop, between the end of launching and the application's end.
    std::function<void()> mainLoop;
};

} // namespace fernhop::macos_double
