#pragma once

#include "platform/LinkEvents.h"

#include <memory>
#include <vector>

namespace fernhop::macos {

/// The Apple Event manager. It keeps what arrives before a handler is set: the system delivers on the main
/// loop, which runs later.
class AppleEventLinks : public LinkEvents {
  public:
    AppleEventLinks();
    /// The manager forgets the handlers.
    ~AppleEventLinks() override;
    AppleEventLinks(const AppleEventLinks &) = delete;
    AppleEventLinks &operator=(const AppleEventLinks &) = delete;

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

  private:
    struct Registration;

    std::vector<std::unique_ptr<Registration>> registrations;
};

} // namespace fernhop::macos
