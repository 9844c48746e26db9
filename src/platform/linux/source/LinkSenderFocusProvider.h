#pragma once

#include "platform/linux/source/FocusProvider.h"

namespace fernhop::freedesktop {

/// For sessions that tell nobody which window is in front, and for none at all. The sender of each link is
/// all that is known of its source there; `SourceNotifications` finds it.
class LinkSenderFocusProvider : public FocusProvider {
  public:
    [[nodiscard]] std::string name() const override { return "link sender"; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() const override { return nullptr; }
    void observe(std::function<void(std::shared_ptr<RunningApplication>)>) override {}
    bool raise(const RaiseRequest &) override { return false; }
};

} // namespace fernhop::freedesktop
