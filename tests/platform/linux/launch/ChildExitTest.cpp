#include "platform/linux/launch/ChildExit.h"

#include <gtest/gtest.h>
#include <signal.h>

namespace fernhop::freedesktop {
namespace {

using namespace std::chrono_literals;

// The encoding of wait statuses on Linux: the exit status in the second byte, the signal in the first.
int exited(int status) {
    return status << 8;
}

TEST(LaunchFailure, AnEndWithoutErrorHandedOver) {
    EXPECT_EQ(launchFailure(exited(0), 0ns), std::nullopt);
    EXPECT_EQ(launchFailure(exited(0), 1h), std::nullopt);
}

TEST(LaunchFailure, ProgramsThatCouldNotRunFailed) {
    EXPECT_EQ(launchFailure(exited(126), 1ms), "Permission denied");
    EXPECT_EQ(launchFailure(exited(127), 1ms), "No such file or directory");
    EXPECT_EQ(launchFailure(exited(255), 1ms), "The program ended with exit status 255");
}

TEST(LaunchFailure, ASignalSoonAfterTheStartFailed) {
    EXPECT_EQ(launchFailure(SIGSEGV, 1s), "Segmentation fault");
    EXPECT_EQ(launchFailure(SIGABRT | 0x80, 1s), "Aborted") << "with a core dump";
}

TEST(LaunchFailure, OtherStatusesAreTheBrowsersOwnBusiness) {
    EXPECT_EQ(launchFailure(exited(1), 1ms), std::nullopt);
}

TEST(LaunchFailure, WhatEndsLaterHasRun) {
    EXPECT_EQ(launchFailure(exited(255), earlyExitWindow), "The program ended with exit status 255");
    EXPECT_EQ(launchFailure(exited(255), earlyExitWindow + 1ns), std::nullopt);
    EXPECT_EQ(launchFailure(SIGKILL, 1h), std::nullopt);
}

} // namespace
} // namespace fernhop::freedesktop
