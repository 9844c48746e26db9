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

    /// Makes this system refuse "org.example.C".
    virtual void refuseC() = 0;
};

/// Makes a new system, with a name for its tests.
struct LaunchServicesKind {
    std::string name;
    std::function<std::unique_ptr<LaunchServicesSystem>()> make;

    friend std::ostream &operator<<(std::ostream &output, const LaunchServicesKind &kind) {
        return output << kind.name;
    }
};

/// What the core relies on with every backend. Included once in each executable, which lists the backends.
class LaunchServicesContract : public testing::TestWithParam<LaunchServicesKind> {
  protected:
    std::unique_ptr<LaunchServicesSystem> system = GetParam().make();
    LaunchServices &services = system->services();

    [[nodiscard]] std::string handler(const std::string &scheme) const {
        return services.copyDefaultHandlerForUrlScheme(scheme).value_or("none");
    }
};

TEST_P(LaunchServicesContract, StartsWithoutHandlers) {
    EXPECT_EQ(handler("http"), "none");
    EXPECT_EQ(handler("https"), "none");
}

TEST_P(LaunchServicesContract, ReadsTheHandlerThatWasSet) {
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("http", "org.example.A"));
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.A"));
    EXPECT_EQ(handler("http"), "org.example.A");
    EXPECT_EQ(handler("https"), "org.example.A");
}

TEST_P(LaunchServicesContract, KeepsTheLastHandler) {
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

TEST_P(LaunchServicesContract, RefusedChangesHaveNoEffect) {
    ASSERT_TRUE(services.setDefaultHandlerForUrlScheme("https", "org.example.A"));
    system->refuseC();
    EXPECT_FALSE(services.setDefaultHandlerForUrlScheme("https", "org.example.C"));
    EXPECT_EQ(handler("https"), "org.example.A");
}

} // namespace fernhop::contract
