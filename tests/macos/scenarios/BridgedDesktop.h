#pragma once

#include "fakes/FakeDesktop.h"

#include <memory>

namespace fernhop::macos {

/// A fake desktop behind the macOS backend: each call goes through the backend to the double of the system's
/// frameworks, which acts on this desktop. So the scenarios of the core test the backend.
class BridgedDesktop : public fakes::FakeDesktop {
  public:
    BridgedDesktop();
    ~BridgedDesktop();
    BridgedDesktop(const BridgedDesktop &) = delete;
    BridgedDesktop &operator=(const BridgedDesktop &) = delete;

    /// The platform for the core; it refers to this object.
    Platform platform();

  private:
    struct Bridges;
    const std::unique_ptr<Bridges> bridges;
};

} // namespace fernhop::macos
