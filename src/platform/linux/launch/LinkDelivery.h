#pragma once

#include "platform/linux/launch/LaunchEnvironment.h"
#include "platform/linux/source/LinkSender.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// What one delivery brought.
struct DeliveredLinks {
    std::vector<std::string> links; ///< any bytes, in the sender's order
    LinkSender sender;
};

/// Links on their way through this process. Whoever still has one in hands shares the ownership; when the
/// last lets go, every link was dealt with.
class LinkDelivery {
  public:
    /// `dealtWith` is called when every link has been handed to a browser or dropped.
    LinkDelivery(LaunchTokens received, std::function<void()> dealtWith)
        : tokens(std::move(received)), whenDealtWith(std::move(dealtWith)) {}
    ~LinkDelivery() {
        if (whenDealtWith)
            whenDealtWith();
    }
    LinkDelivery(const LinkDelivery &) = delete;
    LinkDelivery &operator=(const LinkDelivery &) = delete;

    /// The sender's tokens, for the first launch that asks: they are good for one.
    [[nodiscard]] LaunchTokens takeTokens() { return std::exchange(tokens, {}); }

  private:
    LaunchTokens tokens;
    std::function<void()> whenDealtWith;
};

/// The delivery whose links are being routed at the moment: between the one who receives links and the
/// workspace that launches browsers. Null in between, as when a link is opened from within. Main thread only.
struct CurrentDelivery {
    std::shared_ptr<LinkDelivery> delivery;
};

} // namespace fernhop::freedesktop
