#pragma once

#include "desktop/links/LinkSession.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// A session with two applications that people find links in, Mail and Chat, and a browser for each of them.
/// Links from elsewhere go to a third one, `browser`.
class DesktopSession : public LinkSession {
  public:
    DesktopSession();

    /// Puts the session on a display and starts the bus and Fernhop there, with a rule for each application.
    void begin(const support::Environment &display);

    /// The document of `fernhop status --json`.
    [[nodiscard]] nlohmann::json status();

    /// Waits until links count as coming from this application.
    [[nodiscard]] bool sourceBecomes(const std::string &id);

    static inline const std::string mail = "org.example.Mail";
    static inline const std::string chat = "org.example.Chat";

    support::RecordingBrowser mailBrowser{home, "web-for-mail"};
    support::RecordingBrowser chatBrowser{home, "web-for-chat"};
};

/// Waits until a browser was given this many links; all that it was given.
[[nodiscard]] std::vector<std::string> linksOf(const support::RecordingBrowser &browser, std::size_t count);

} // namespace fernhop::desktoptest
