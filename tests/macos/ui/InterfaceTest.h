#pragma once

#include "macos/double/Inspection.h"
#include "macos/double/Recorder.h"
#include "macos/ui/RecordingTarget.h"

#include <gtest/gtest.h>

namespace fernhop::macos {

/// A test that fails when objects of the double remain at its end.
class InterfaceTest : public testing::Test {
  protected:
    InterfaceTest() : pool([NSAutoreleasePool new]) {
        macos_double::recorder() = {};
        macos_double::setSystemAppearance(NSAppearanceNameAqua);
        macos_double::setUser(nullptr);
    }
    ~InterfaceTest() override {
        // The pool is the last owner of the objects.
        [pool drain];
        macos_double::setUser(nullptr);
        for (const auto &[name, count] : macos_double::liveObjects())
            ADD_FAILURE() << count << " " << name << " left over";
    }

  private:
    NSAutoreleasePool *pool;
};

} // namespace fernhop::macos
