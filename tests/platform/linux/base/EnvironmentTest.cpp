#include "platform/linux/base/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace fernhop::freedesktop {
namespace {

using Assignments = std::vector<std::string>;

TEST(Environment, KeepsValuesByteForByte) {
    const Environment environment({"A=1", "B=a=b\n\xff", "EMPTY="});
    EXPECT_EQ(environment.value("A"), "1");
    EXPECT_EQ(environment.value("B"), "a=b\n\xff");
    EXPECT_EQ(environment.value("EMPTY"), "");
    EXPECT_EQ(environment.value("a"), std::nullopt);
}

TEST(Environment, TakesTheFirstOfANameAndLeavesOutWhatHasNone) {
    const Environment environment({"A=1", "A=2", "=x", "no equals", ""});
    EXPECT_EQ(environment.assignments(), Assignments{"A=1"});
}

TEST(Environment, SetsAndUnsets) {
    Environment environment({"A=1", "B=2", "DBUS_X=3", "DBUS_Y=4", "MY_DBUS_=5"});
    environment.set("A", "new");
    environment.set("C", "6");
    environment.unset("B");
    environment.unset("never there");
    environment.unsetPrefixed("DBUS_");
    EXPECT_EQ(environment.assignments(), (Assignments{"A=new", "C=6", "MY_DBUS_=5"}));
}

TEST(Environment, CopiesThatOfTheProcess) {
    setenv("FERNHOP_ENVIRONMENT_TEST", "before", 1);
    const auto environment = Environment::current();
    setenv("FERNHOP_ENVIRONMENT_TEST", "after", 1);
    EXPECT_EQ(environment.value("FERNHOP_ENVIRONMENT_TEST"), "before");
    unsetenv("FERNHOP_ENVIRONMENT_TEST");
}

} // namespace
} // namespace fernhop::freedesktop
