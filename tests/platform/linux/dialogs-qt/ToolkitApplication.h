#pragma once

#include "platform/linux/dialogs-qt/QtAlerts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace fernhop::freedesktop {

/// A test with the toolkit's application, on a screen that nobody sees.
class ToolkitApplication : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        const DialogHost host{[](ui::Selector, const Object &) {},
                              [](const std::string &) { return std::string(); },
                              [](const std::string &, ui::Color) { return std::nullopt; },
                              [] { return std::nullopt; }, [] { return std::string(); }};
        alerts = std::make_unique<QtAlerts>(host, "offscreen");
    }

    /// At exit it would be too late: the toolkit's own statics go first.
    static void TearDownTestSuite() { alerts.reset(); }

    static inline std::unique_ptr<QtAlerts> alerts;
};

} // namespace fernhop::freedesktop
