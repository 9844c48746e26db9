#pragma once

#include "platform/LinkEvents.h"

#include <memory>
#include <vector>

namespace fernhop::macos {

/// The Apple Event manager. Links that arrive before a handler is set are not lost: the system delivers them
/// in the main loop, which runs later.
class AppleEventLinks : public LinkEvents {
  public:
    AppleEventLinks();
    /// Removes the handlers from the manager.
    ~AppleEventLinks() override;
    AppleEventLinks(const AppleEventLinks &) = delete;
    AppleEventLinks &operator=(const AppleEventLinks &) = delete;

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

  private:
    struct Registration;

    std::vector<std::unique_ptr<Registration>> registrations;
};

} // namespace fernhop::macos
