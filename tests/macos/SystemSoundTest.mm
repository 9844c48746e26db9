#include "platform/macos/SystemSound.h"

#include "macos/double/Recorder.h"

#include <gtest/gtest.h>

namespace fernhop::macos {
namespace {

TEST(SystemSound, BeepsOnce) {
    const int before = macos_double::recorder().beeps;
    SystemSound().beep();
    EXPECT_EQ(macos_double::recorder().beeps, before + 1);
}

} // namespace
} // namespace fernhop::macos
