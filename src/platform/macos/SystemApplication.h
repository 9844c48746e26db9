#pragma once

#include "platform/Application.h"

namespace fernhop::macos {

/// The shared application object.
class SystemApplication : public Application {
  public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void terminate() override;
};

} // namespace fernhop::macos
