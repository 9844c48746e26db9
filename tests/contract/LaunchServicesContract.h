#pragma once

#include "platform/LaunchServices.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace fernhop::contract {

/// A system with the browsers "org.example.A" and "org.example.B", and no handler set.
class LaunchServicesSystem {
  public:
    virtual ~LaunchServicesSystem() = default;
    virtual LaunchServices &services() = 0;

    /// Whatever makes this system refuse "org.example.C".
    virtual void refuseC() = 0;
};

/// How to make a system anew, and what a test on it is called.
struct LaunchServicesKind {
    std::string name;
    std::function<std::unique_ptr<LaunchServicesSystem>()> make;

    friend std::ostream &operator<<(std::ostream &output, const LaunchServicesKind &kind) {
        return output << kind.name;
    }
};

/// What the core relies on, whichever system is behind it. Included once in each executable, which names the
/// systems.
class LaunchServicesContract : public testing::TestWithParam<LaunchServicesKind> {
  protected:
    std::unique_ptr<LaunchServicesSystem> system = GetParam().make();
    LaunchServices &services = system->services();

    [[nodiscard]] std::string handler(const std::string &scheme) const {
        return services.copyDefaultHandlerForUrlScheme(scheme).value_or("none");
    }
};

TEST_P(LaunchServicesContract, BeginsWithoutHandlers) {
    EXPECT_EQ(handler("http"), "none");
    EXPECT_EQ(handler("https"), "none");
}

TEST_P(LaunchServicesContract, ReadsWhatWasSet) {
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("http", "org.example.A"));
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.A"));
    EXPECT_EQ(handler("http"), "org.example.A");
    EXPECT_EQ(handler("https"), "org.example.A");
}

TEST_P(LaunchServicesContract, KeepsTheLastOne) {
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.A"));
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.B"));
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.B"));
    EXPECT_EQ(handler("https"), "org.example.B");
}

TEST_P(LaunchServicesContract, KeepsSchemesApart) {
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("http", "org.example.A"));
    EXPECT_EQ(handler("http"), "org.example.A");
    EXPECT_EQ(handler("https"), "none");
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.B"));
    EXPECT_EQ(handler("http"), "org.example.A");
    EXPECT_EQ(handler("https"), "org.example.B");
}

TEST_P(LaunchServicesContract, ChangesNothingWhereItRefuses) {
    ASSERT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.A"));
    system->refuseC();
    EXPECT_FALSE(services.setDefaultHandlerForUrlScheme("https", "org.example.C"));
    EXPECT_EQ(handler("https"), "org.example.A");
}

} // namespace fernhop::contract
