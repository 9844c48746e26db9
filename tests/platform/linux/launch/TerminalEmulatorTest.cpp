#include "platform/linux/launch/TerminalEmulator.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using Prefix = std::vector<std::string>;

TEST(TerminalPrefix, TakesTheUsersChoiceFirst) {
    const support::TemporaryHome home;
    const auto bin = home.root() + "/bin";
    EXPECT_EQ(terminalPrefix(bin), std::nullopt);
    home.writeProgram(bin + "/xterm", "");
    EXPECT_EQ(terminalPrefix(bin), (Prefix{bin + "/xterm", "-e"}));
    home.writeProgram(bin + "/gnome-terminal", "");
    EXPECT_EQ(terminalPrefix(bin), (Prefix{bin + "/gnome-terminal", "--"}));
    home.writeProgram(bin + "/x-terminal-emulator", "");
    EXPECT_EQ(terminalPrefix(bin), (Prefix{bin + "/x-terminal-emulator", "-e"}));
    home.writeProgram(bin + "/xdg-terminal-exec", "");
    EXPECT_EQ(terminalPrefix(bin), Prefix{bin + "/xdg-terminal-exec"});
}

} // namespace
} // namespace fernhop::freedesktop
