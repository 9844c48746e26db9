#include "macos/ui/InterfaceTest.h"

#import <AppKit/NSButton.h>

namespace fernhop::macos {
namespace {

class LedgerTest : public InterfaceTest {};

TEST_F(LedgerTest, CountsLivingObjects) {
    EXPECT_TRUE(macos_double::liveObjects().empty());
    NSView *view = [[NSView alloc] initWithFrame:NSZeroRect];
    NSView *subview = [[NSButton alloc] initWithFrame:NSZeroRect];
    [view addSubview:subview];
    [subview release];
    EXPECT_EQ(macos_double::liveObjects(), (std::map<std::string, long>{{"NSButton", 1}, {"NSView", 1}}));
    [view release];
    EXPECT_TRUE(macos_double::liveObjects().empty());
}

using LedgerDeathTest = LedgerTest;

TEST_F(LedgerDeathTest, ReleasingTooOftenIsDetected) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            NSView *view = [[NSView alloc] initWithFrame:NSZeroRect];
            [view release];
            [view release];
        },
        "");
}

} // namespace
} // namespace fernhop::macos
