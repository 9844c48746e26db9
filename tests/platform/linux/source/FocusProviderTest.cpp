#include "platform/linux/source/FocusProvider.h"

#include "FakeProcesses.h"
#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/source/ApplicationMatcher.h"
#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

class FocusProvidersTest : public testing::Test {
  protected:
    std::string nameFor(const SessionDisplays &displays) {
        return makeFocusProvider(displays, matcher)->name();
    }

    fakes::FakeDesktopEntries entries;
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
    std::shared_ptr<ApplicationMatcher> matcher =
        std::make_shared<ApplicationMatcher>(entries, processes, OwnApplication{"org.fernhop.Fernhop", 0});
};

TEST_F(FocusProvidersTest, WithoutADisplayTheSenderIsUsed) {
    EXPECT_EQ(nameFor({}), "link sender");
    EXPECT_EQ(nameFor({"tty", "", ""}), "link sender");
    EXPECT_EQ(nameFor({"x11", "", ":99999"}), "link sender");
    EXPECT_EQ(nameFor({"wayland", "/nowhere", ""}), "link sender");
}

TEST_F(FocusProvidersTest, UsesAnXDisplayOnlyInXSessions) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const support::TemporaryHome home;
    const support::PrivateDisplay display(home);
    EXPECT_EQ(nameFor({"x11", "", display.name()}), "x11");
    EXPECT_EQ(nameFor({"x11", "/nowhere", display.name()}), "x11");
    EXPECT_EQ(nameFor({"", "", display.name()}), "x11");
    EXPECT_EQ(nameFor({"tty", "", display.name()}), "x11");
    EXPECT_EQ(nameFor({"wayland", "", display.name()}), "link sender");
    EXPECT_EQ(nameFor({"wayland", "/nowhere", display.name()}), "link sender");
    EXPECT_EQ(nameFor({"", "/nowhere", display.name()}), "link sender");
}

} // namespace
} // namespace fernhop::freedesktop
