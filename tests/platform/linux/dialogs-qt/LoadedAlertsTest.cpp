#include "platform/linux/dialogs-qt/LoadedAlerts.h"

#include "fakes/FakeApplication.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace fernhop::freedesktop {
namespace {

const ui::Alert alert{"message", "details", {"Add", "Cancel"}, nullptr};

std::string builtModule() {
    return std::string(FERNHOP_BUILD_DIR) + "/lib/fernhop/libfernhop-dialogs.so";
}

TEST(LoadedAlerts, MissingModuleBeepsAndCancels) {
    fakes::FakeSound sound;
    LoadedAlerts alerts("/nonexistent/module.so", sound);
    EXPECT_EQ(alerts.runModal(alert), ui::alertFirstButtonReturn + 1);
    EXPECT_EQ(alerts.runModal(alert), ui::alertFirstButtonReturn + 1);
    EXPECT_EQ(sound.beeps, 2);
    EXPECT_FALSE(alerts.bringToFront());
    alerts.dismiss();
}

TEST(LoadedAlerts, NoScreenBeepsAndCancels) {
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        unsetenv(variable);
    fakes::FakeSound sound;
    LoadedAlerts alerts(builtModule(), sound);
    EXPECT_EQ(alerts.runModal(alert), ui::alertFirstButtonReturn + 1);
    EXPECT_EQ(sound.beeps, 1);
    setenv("DISPLAY", ":4711", 1);
    setenv("WAYLAND_DISPLAY", "wayland-that-is-not-there", 1);
    EXPECT_EQ(alerts.runModal(alert), ui::alertFirstButtonReturn + 1);
    EXPECT_EQ(sound.beeps, 2);
}

TEST(LoadedAlerts, ModuleHasItsEntry) {
    void *module = dlopen(builtModule().c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    EXPECT_NE(dlsym(module, makeDialogPresenterName), nullptr);
}

} // namespace
} // namespace fernhop::freedesktop
