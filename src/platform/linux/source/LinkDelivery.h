#pragma once

#include "platform/linux/base/UnopenedLink.h"

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// What lets a launched application come to the front. Each is good for one launch.
struct LaunchTokens {
    std::optional<std::string> activationToken = {}; ///< for Wayland, and X11 toolkits that know it
    std::optional<std::string> startupID = {};       ///< of the startup notification protocol

    bool operator==(const LaunchTokens &) const = default;
};

/// What is known about the sender of a link. Everything is a claim of another process: text of any bytes,
/// processes that may be gone.
struct LinkSender {
    /// XDG_ACTIVATION_TOKEN and DESKTOP_STARTUP_ID of the sender, to be forwarded once.
    LaunchTokens tokens = {};
    /// The process that GIO launched last on the way here, from GIO_LAUNCHED_DESKTOP_FILE_PID.
    std::optional<pid_t> launchedPid = {};
    /// Parent of the stub that delivered the link; the caller itself, where an application called by itself.
    std::optional<pid_t> parentPid = {};
    /// The unified control group of that process.
    std::optional<std::string> controlGroup = {};
    /// Desktop-file ID of an application that the process descends from.
    std::optional<std::string> desktopFile = {};
};

/// What one delivery brought.
struct DeliveredLinks {
    std::vector<std::string> links; ///< any bytes, in the sender's order
    LinkSender sender;
};

/// Links on their way through this process. Shared by everyone handling the links; when the last one releases
/// it, every link has been handled. Main thread only.
class LinkDelivery {
  public:
    /// Takes the links that no browser runs with or took, in the order in which they failed.
    using Handled = std::function<void(std::vector<UnopenedLink> unopened)>;

    /// `onHandled` is called when every link has been handed to a browser or dropped; it may be empty.
    LinkDelivery(LaunchTokens senderTokens, Handled onHandled)
        : tokens(std::move(senderTokens)), handled(std::move(onHandled)) {}
    ~LinkDelivery() {
        if (handled)
            handled(std::move(unopened));
    }
    LinkDelivery(const LinkDelivery &) = delete;
    LinkDelivery &operator=(const LinkDelivery &) = delete;

    /// The sender's tokens, for the first launch that asks: they are good for one.
    [[nodiscard]] LaunchTokens takeTokens() { return std::exchange(tokens, {}); }

    /// Notes a link that will not be opened, at most once for each.
    void addUnopened(UnopenedLink link) { unopened.push_back(std::move(link)); }

  private:
    LaunchTokens tokens;
    Handled handled;
    std::vector<UnopenedLink> unopened;
};

/// The link that is being routed at the moment, set by the receiver of links and read by the workspace that
/// launches browsers. Main thread only.
struct CurrentDelivery {
    std::shared_ptr<LinkDelivery> delivery; ///< null in between, as when a link is opened from within
    std::size_t index = 0;                  ///< of the link in its delivery
    bool isTaken = false;                   ///< a browser was asked to open it
};

} // namespace fernhop::freedesktop
