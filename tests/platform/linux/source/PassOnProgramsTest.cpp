#include "platform/linux/base/PassOnPrograms.h"

#include "FakeProcesses.h"
#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/applications/DesktopBundles.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/source/ApplicationMatcher.h"

#include <gtest/gtest.h>

#include <cctype>

namespace fernhop::freedesktop {
namespace {

using Kind = PassOnProgram::Kind;

/// Each program with each use that is made of the table.
class PassOnPrograms : public testing::TestWithParam<PassOnProgram> {
  protected:
    /// An Exec line by which the program passes a link on.
    [[nodiscard]] static std::string line() {
        const auto [name, kind, verb] = GetParam();
        const bool opens =
            kind == Kind::opener || kind == Kind::openerWhenRun || kind == Kind::openerWithVerb;
        return "/usr/bin/" + std::string(name) + " " + std::string(opens ? verb : "xdg-open") + " %u";
    }
};

TEST_P(PassOnPrograms, TheLoopGuardRefusesAnEntryThatRunsIt) {
    DesktopEntry entry;
    entry.id = "router";
    entry.exec = line();
    EXPECT_TRUE(isGenericOpener(entry)) << entry.exec;
}

TEST_P(PassOnPrograms, AnEntryThatRunsItIsNoTarget) {
    fakes::FakeDesktopEntries entries;
    entries.installBrowser("router", line());
    EXPECT_EQ(applicationUrl(entries, "router"), std::nullopt) << line();
}

TEST_P(PassOnPrograms, ItIsNotTheSourceOfALink) {
    fakes::FakeDesktopEntries entries;
    entries.install("router", line());
    const support::FakeProcesses kernel;
    const std::string name(GetParam().name);
    kernel.add(50, {.program = "/usr/bin/" + name, .arguments = {name, "https://example.com"}});
    const Processes processes{kernel.root()};
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", 7}};
    EXPECT_EQ(matcher.applicationOf(pid_t{50}), std::nullopt);
}

TEST_P(PassOnPrograms, WhatRunsAnotherProgramMayRunABrowser) {
    DesktopEntry entry;
    entry.id = "browser";
    entry.exec = "/usr/bin/" + std::string(GetParam().name) + " firefox %u";
    const bool alwaysOpens = GetParam().kind == Kind::opener || GetParam().kind == Kind::openerWhenRun;
    EXPECT_EQ(isGenericOpener(entry), alwaysOpens);
}

INSTANTIATE_TEST_SUITE_P(Each, PassOnPrograms, testing::ValuesIn(passOnPrograms()), [](const auto &test) {
    std::string name = std::to_string(test.index) + "_";
    for (const char character : std::string(test.param.name) + std::string(test.param.verb))
        name += std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_';
    return name;
});

} // namespace
} // namespace fernhop::freedesktop
