#pragma once

#include "platform/Workspace.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// A running application, whose identifier is read at each call.
class SystemRunningApplication : public RunningApplication {
  public:
    explicit SystemRunningApplication(NSRunningApplication *running) : application(running) {}

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        @autoreleasepool {
            return textOf([application.get() bundleIdentifier]);
        }
    }

  private:
    Reference<NSRunningApplication> application;
};

} // namespace fernhop::macos
