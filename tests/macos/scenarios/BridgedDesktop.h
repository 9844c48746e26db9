#pragma once

#include "fakes/FakeDesktop.h"

#include <memory>

namespace fernhop::macos {

/// A desktop in memory that the core reaches the long way: each call goes through the backend of the Mac into
/// the double of the system's frameworks, which acts on this desktop. So the scenarios of the core prove the
/// backend.
class BridgedDesktop : public fakes::FakeDesktop {
  public:
    BridgedDesktop();
    ~BridgedDesktop();
    BridgedDesktop(const BridgedDesktop &) = delete;
    BridgedDesktop &operator=(const BridgedDesktop &) = delete;

    /// The desktop as the core is given it; it refers to this object.
    Platform platform();

  private:
    struct Bridges;
    const std::unique_ptr<Bridges> bridges;
};

} // namespace fernhop::macos
