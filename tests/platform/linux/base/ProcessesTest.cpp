#include "platform/linux/base/Processes.h"

#include "platform/linux/source/FakeProcesses.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fernhop::freedesktop {
namespace {

class ProcessesTest : public testing::Test {
  protected:
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
};

TEST_F(ProcessesTest, ReadsProcessFacts) {
    kernel.add(40, {.parent = 30,
                    .program = "/usr/lib/mail/mail",
                    .arguments = {"mail", "--new", ""},
                    .environment = {{"LANG", "C"}, {"XLANG", "no"}, {"EMPTY", ""}},
                    .controlGroup = "/user.slice/app-mail-1.scope",
                    .flatpakInformation = "[Application]\nname=org.example.Mail\n"});
    EXPECT_EQ(processes.parentOf(40), 30);
    EXPECT_EQ(processes.programOf(40), "mail");
    EXPECT_EQ(processes.argumentsOf(40), (std::vector<std::string>{"mail", "--new", ""}));
    EXPECT_EQ(processes.variableOf(40, "LANG"), "C");
    EXPECT_EQ(processes.variableOf(40, "EMPTY"), "");
    EXPECT_EQ(processes.variableOf(40, "LAN"), std::nullopt);
    EXPECT_EQ(processes.controlGroupOf(40), "/user.slice/app-mail-1.scope");
    EXPECT_EQ(processes.flatpakOf(40), "org.example.Mail");
}

TEST_F(ProcessesTest, ReturnsNothingForMissingProcesses) {
    EXPECT_EQ(processes.parentOf(41), std::nullopt);
    EXPECT_EQ(processes.programOf(41), std::nullopt);
    EXPECT_TRUE(processes.argumentsOf(41).empty());
    EXPECT_EQ(processes.variableOf(41, "LANG"), std::nullopt);
    EXPECT_EQ(processes.controlGroupOf(41), std::nullopt);
    EXPECT_EQ(processes.flatpakOf(41), std::nullopt);
}

TEST_F(ProcessesTest, ReturnsNothingForMalformedFiles) {
    for (const std::string nonsense :
         {"", ")", "1 (x) S", "1 (x) S ", "1 (x) S -4", "1 (x) S 99999999999999", "\xff\xff"}) {
        kernel.write(42, "stat", nonsense);
        EXPECT_EQ(processes.parentOf(42), std::nullopt) << nonsense;
    }
    for (const std::string nonsense :
         {"", "name=x", "[Application]\nname=\n", "[Runtime]\nname=x\n", "\xff\n[\n"}) {
        kernel.write(42, "root/.flatpak-info", nonsense);
        EXPECT_EQ(processes.flatpakOf(42), std::nullopt) << nonsense;
    }
    kernel.write(42, "cgroup", "1:cpu:/x\n");
    EXPECT_EQ(processes.controlGroupOf(42), std::nullopt);
}

TEST_F(ProcessesTest, AReplacedProgramKeepsItsName) {
    kernel.add(43, {.program = "/usr/bin/mail (deleted)"});
    EXPECT_EQ(processes.programOf(43), "mail");
}

TEST_F(ProcessesTest, DoesNotBlockOnAPipe) {
    kernel.add(44, {.flatpakInformation = "[Application]\nname=x\n"});
    const std::string information = kernel.path(44, "root/.flatpak-info");
    std::filesystem::remove(information);
    ASSERT_EQ(mkfifo(information.c_str(), 0600), 0);
    EXPECT_EQ(processes.flatpakOf(44), std::nullopt);
}

TEST_F(ProcessesTest, ReadsTheRealProc) {
    const Processes real;
    EXPECT_EQ(real.parentOf(getpid()), getppid());
    EXPECT_EQ(real.programOf(getpid()), "fernhop_linux_base_test");
    EXPECT_NE(real.variableOf(getpid(), "PATH"), std::nullopt);
    EXPECT_EQ(real.flatpakOf(getpid()), std::nullopt);
}

} // namespace
} // namespace fernhop::freedesktop
