#include "cli/EachSide.h"

namespace fernhop::cli {
namespace {

class SwitchCommands : public EachSide {
  protected:
    using Calls = std::vector<std::pair<std::string, std::string>>;
};
INSTANTIATE_TEST_SUITE_P(, SwitchCommands, testing::Bool(), sideName);

TEST_P(SwitchCommands, RoutingOnStoresTheDefaultBrowser) {
    setDefaultBrowser(beta);
    EXPECT_EQ(run({"routing", "on"}), (CommandResult{0, "App Routing is on.\n", ""}));
    EXPECT_EQ(launchServices.calls, (Calls{{"http", own}, {"https", own}}));
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), beta);
    expectMenuRebuilt();
}

TEST_P(SwitchCommands, RoutingOnTwiceStaysOn) {
    setDefaultBrowser(own);
    EXPECT_EQ(run({"routing", "on"}).status, 0);
    EXPECT_EQ(launchServices.calls, Calls{});
}

TEST_P(SwitchCommands, RoutingOffRestoresTheDefault) {
    setDefaultBrowser(own);
    defaults.stored["routingFallbackBrowserID"] = {beta};
    EXPECT_EQ(run({"routing", "off"}), (CommandResult{0, "App Routing is off.\n", ""}));
    EXPECT_EQ(launchServices.calls, (Calls{{"http", beta}, {"https", beta}}));
    EXPECT_EQ(run({"routing", "off"}).status, 0);
    EXPECT_EQ(launchServices.calls.size(), 2U);
    expectMenuRebuilt();
}

TEST_P(SwitchCommands, RefusalsAreReported) {
    launchServices.refuses = true;
    const auto on = run({"routing", "on"});
    EXPECT_EQ(on.status, 1);
    EXPECT_EQ(on.output, "");
    EXPECT_NE(on.errors, "");
    setDefaultBrowser(own);
    EXPECT_EQ(run({"routing", "off"}).status, 1);
    const auto chosen = run({"default", beta});
    EXPECT_EQ(chosen.status, 1);
    EXPECT_NE(chosen.errors.find("Beta Browser"), std::string::npos);
}

TEST_P(SwitchCommands, RoutingStaysOffIfTheFallbackCannotBeStored) {
    setDefaultBrowser(beta);
    defaults.refusesWrites = true;
    const auto told = run({"routing", "on"});
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("stays off"), std::string::npos) << told.errors;
    EXPECT_EQ(launchServices.calls.size(), 0U);
    defaults.stored["routingFallbackBrowserID"] = {beta};
    EXPECT_EQ(run({"routing", "on"}).status, 0) << "nothing has to be stored";
}

TEST_P(SwitchCommands, DefaultTurnsRoutingOff) {
    setDefaultBrowser(own);
    EXPECT_EQ(run({"default", "Beta Browser"}),
              (CommandResult{0, "The default browser is Beta Browser (org.example.Beta).\n", ""}));
    EXPECT_EQ(launchServices.calls, (Calls{{"http", beta}, {"https", beta}}));
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), beta);
    expectMenuRebuilt();
}

TEST_P(SwitchCommands, DefaultAcceptsOnlyBrowsers) {
    for (const auto &word : {editor, own, std::string("org.example.Gone"), std::string()})
        EXPECT_EQ(run({"default", word}).status, 1) << word;
    EXPECT_EQ(launchServices.calls, Calls{});
    EXPECT_EQ(defaults.writes, 0);
}

TEST_P(SwitchCommands, RestoreOnQuitIsStored) {
    EXPECT_EQ(run({"restore-on-quit", "on"}),
              (CommandResult{0, "The default browser is restored when Fernhop quits.\n", ""}));
    EXPECT_EQ(defaults.stored["restoresDefaultBrowserOnQuit"], PropertyValue{true});
    EXPECT_EQ(run({"restore-on-quit", "on"}).status, 0);
    EXPECT_EQ(defaults.stored["restoresDefaultBrowserOnQuit"], PropertyValue{true});
    EXPECT_EQ(run({"restore-on-quit", "off"}),
              (CommandResult{0, "The default browser is not restored when Fernhop quits.\n", ""}));
    EXPECT_EQ(defaults.stored["restoresDefaultBrowserOnQuit"], PropertyValue{false});
    expectMenuRebuilt();
}

TEST(RoutingOff, NeedsABrowser) {
    World world;
    world.applications.remove("/Applications");
    world.setDefaultBrowser(world.own);
    const auto told = world.run({"routing", "off"});
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("no browser"), std::string::npos);
    EXPECT_EQ(world.launchServices.handlers["https"], world.own);
}

TEST(Refresh, FindsNewBrowsers) {
    World world;
    world.launch();
    world.applications.installApplication("/Applications/Gamma.app", "org.example.Gamma", "Gamma", {"http"});
    EXPECT_EQ(world.run({"browsers"}).output.find("Gamma"), std::string::npos);
    EXPECT_EQ(world.run({"refresh"}), CommandResult{});
    EXPECT_EQ(world.statusBar.menusSet, 1);
    EXPECT_NE(world.run({"browsers"}).output.find("Gamma"), std::string::npos);
}

TEST(Quit, EndsTheRunningFernhop) {
    World world;
    world.launch();
    EXPECT_EQ(world.run({"quit"}), CommandResult{});
    EXPECT_EQ(world.application.terminations, 1);
}

TEST(WithoutARunningFernhop, RefreshAndQuitSucceed) {
    World world;
    EXPECT_EQ(world.run({"refresh"}), (CommandResult{0, "Fernhop is not running.\n", ""}));
    EXPECT_EQ(world.run({"quit"}), (CommandResult{0, "Fernhop is not running.\n", ""}));
}

TEST(RunAgain, Succeeds) {
    World world;
    world.launch();
    EXPECT_EQ(world.run({}), (CommandResult{0, "Fernhop is already running.\n", ""}));
    world.report.runs = false;
    EXPECT_EQ(world.run({}).status, 1);
}

} // namespace
} // namespace fernhop::cli
