#pragma once

#include "platform/linux/dialogs-qt/Toolkit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace fernhop::freedesktop {

/// A test with the toolkit, on a screen that nobody sees.
class ToolkitApplication : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        toolkit = std::make_unique<Toolkit>("offscreen");
    }

    /// At exit it would be too late: the toolkit's own statics go first.
    static void TearDownTestSuite() { toolkit.reset(); }

    static inline std::unique_ptr<Toolkit> toolkit;
};

} // namespace fernhop::freedesktop
