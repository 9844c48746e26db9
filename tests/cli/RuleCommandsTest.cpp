#include "cli/EachSide.h"

namespace fernhop::cli {
namespace {

class RuleCommands : public EachSide {
  protected:
    RuleCommands() { setDefaultBrowser(own); }

    void expectNothingChanged(const CommandResult &told, int status) {
        EXPECT_EQ(told.status, status);
        EXPECT_EQ(told.output, "");
        EXPECT_TRUE(told.errors.starts_with("fernhop: ")) << told.errors;
        EXPECT_EQ(defaults.writes, writesBefore);
    }

    void rememberWrites() { writesBefore = defaults.writes; }

    int writesBefore = 0;
};
INSTANTIATE_TEST_SUITE_P(, RuleCommands, testing::Bool(), sideName);

TEST_P(RuleCommands, AddAppendsARule) {
    preferences().setURLRules({{"1", "a.example", alpha}});
    const auto told = run({"url-rules", "add", "  Docs.Example ", beta});
    EXPECT_EQ(told.status, 0) << told.errors;
    const auto rules = preferences().urlRules();
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[1].pattern, "Docs.Example");
    EXPECT_EQ(rules[1].browserBundleID, beta);
    EXPECT_EQ(rules[1].id.size(), 36U);
    EXPECT_EQ(told.output, "Rule " + rules[1].id + ": Docs.Example -> Beta Browser (org.example.Beta)\n");
    expectMenuRebuilt();
}

TEST_P(RuleCommands, AddChangesTheBrowserOfAKnownPattern) {
    preferences().setURLRules({{"1", "docs.example", alpha}});
    EXPECT_EQ(run({"url-rules", "add", "DOCS.example", beta}).status, 0);
    EXPECT_EQ(preferences().urlRules(), (std::vector<URLRule>{{"1", "docs.example", beta}}));
}

TEST_P(RuleCommands, AddRefusesABlankPattern) {
    expectNothingChanged(run({"url-rules", "add", " \n", beta}), 2);
    expectNothingChanged(run({"url-rules", "add", "", beta}), 2);
}

TEST_P(RuleCommands, AddRefusesAPatternThatCannotBeStored) {
    expectNothingChanged(run({"url-rules", "add", "a\xff", beta}), 2);
}

TEST_P(RuleCommands, BrowsersAreFoundByName) {
    EXPECT_EQ(run({"url-rules", "add", "docs.example", "Beta Browser"}).status, 0);
    EXPECT_EQ(preferences().urlRules().front().browserBundleID, beta);
}

TEST_P(RuleCommands, UnknownBrowsersAreRefused) {
    expectNothingChanged(run({"url-rules", "add", "docs.example", "org.example.Gone"}), 1);
    expectNothingChanged(run({"url-rules", "add", "docs.example", "beta browser"}), 1);
    expectNothingChanged(run({"url-rules", "add", "docs.example", ""}), 1);
    expectNothingChanged(run({"app-rules", "set", editor, "Gone"}), 1);
}

TEST_P(RuleCommands, FernhopIsNotABrowser) {
    expectNothingChanged(run({"url-rules", "add", "docs.example", own}), 1);
    expectNothingChanged(run({"app-rules", "set", editor, own}), 1);
}

TEST_P(RuleCommands, ARuleMayNameAnyInstalledApplication) {
    EXPECT_EQ(run({"url-rules", "add", "docs.example", editor}).status, 0);
    EXPECT_EQ(preferences().urlRules().front().browserBundleID, editor);
    rememberWrites();
    expectNothingChanged(run({"url-rules", "add", "docs.example", "Editor"}),
                         1); // only browsers are found by name
}

TEST_P(RuleCommands, EditKeepsTheRulesPosition) {
    preferences().setURLRules({{"1", "a.example", alpha}, {"2", "b.example", alpha}});
    EXPECT_EQ(run({"url-rules", "edit", "1", " c.example ", beta}).status, 0);
    EXPECT_EQ(preferences().urlRules(),
              (std::vector<URLRule>{{"1", "c.example", beta}, {"2", "b.example", alpha}}));
    expectMenuRebuilt();
}

TEST_P(RuleCommands, EditRefusesInvalidChanges) {
    preferences().setURLRules({{"1", "a.example", alpha}});
    rememberWrites();
    expectNothingChanged(run({"url-rules", "edit", "2", "c.example", beta}), 1);
    expectNothingChanged(run({"url-rules", "edit", "1", "\t", beta}), 2);
    expectNothingChanged(run({"url-rules", "edit", "1", "c.example", "Gone"}), 1);
}

TEST_P(RuleCommands, RemoveRemovesARule) {
    preferences().setURLRules(
        {{"1", "a.example", alpha}, {"2", "b.example", alpha}, {"3", "c.example", beta}});
    EXPECT_EQ(run({"url-rules", "remove", "2"}), CommandResult{});
    EXPECT_EQ(preferences().urlRules(),
              (std::vector<URLRule>{{"1", "a.example", alpha}, {"3", "c.example", beta}}));
    expectMenuRebuilt();
}

TEST_P(RuleCommands, RemoveRefusesAnUnknownRule) {
    preferences().setURLRules({{"a", "a.example", alpha}});
    rememberWrites();
    expectNothingChanged(run({"url-rules", "remove", "A"}), 1);
}

TEST_P(RuleCommands, SetChoosesABrowserForAnApplication) {
    const auto told = run({"app-rules", "set", editor, beta});
    EXPECT_EQ(told.status, 0);
    EXPECT_EQ(told.output, "Links from Editor (org.example.Editor) -> Beta Browser (org.example.Beta)\n");
    EXPECT_EQ(run({"app-rules", "set", "Editor", "Alpha Browser"}).status, 0);
    EXPECT_EQ(preferences().appRules(), (AppRules{{editor, alpha}}));
    expectMenuRebuilt();
}

TEST_P(RuleCommands, SetRefusesInvalidSources) {
    expectNothingChanged(run({"app-rules", "set", "org.example.Gone", beta}), 1);
    expectNothingChanged(run({"app-rules", "set", own, beta}), 1);
    expectNothingChanged(run({"app-rules", "set", "", beta}), 1);
}

TEST_P(RuleCommands, RemoveRemovesAnAppRule) {
    preferences().setBrowser(beta, editor);
    preferences().setBrowser(alpha, "org.example.Gone");
    EXPECT_EQ(run({"app-rules", "remove", "org.example.Gone"}), CommandResult{});
    EXPECT_EQ(run({"app-rules", "remove", "Editor"}), CommandResult{});
    EXPECT_EQ(preferences().appRules(), AppRules{});
    expectMenuRebuilt();
    rememberWrites();
    expectNothingChanged(run({"app-rules", "remove", editor}), 1);
}

TEST_P(RuleCommands, ChoosingABrowserTurnsRoutingOn) {
    setDefaultBrowser(alpha);
    const auto expectTurnedOn = [](const CommandResult &told) {
        EXPECT_EQ(told.status, 0);
        EXPECT_TRUE(told.output.ends_with("\nApp Routing is now on.\n")) << told.output;
    };
    expectTurnedOn(run({"url-rules", "add", "docs.example", beta}));
    EXPECT_EQ(launchServices.handlers["https"], own);
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), alpha);

    setDefaultBrowser(alpha);
    expectTurnedOn(run({"url-rules", "edit", preferences().urlRules().front().id, "b.example", beta}));
    EXPECT_EQ(launchServices.handlers["https"], own);

    setDefaultBrowser(alpha);
    expectTurnedOn(run({"app-rules", "set", editor, beta}));
    EXPECT_EQ(launchServices.handlers["https"], own);
}

TEST_P(RuleCommands, RefusedBrowsersAreRefusedWithTheReason) {
    report.refusals = {{"org.example.Opener", "it is refused."}};
    rememberWrites();
    for (const auto &told : {run({"url-rules", "add", "docs.example", "org.example.Opener"}),
                             run({"app-rules", "set", editor, "org.example.Opener"})}) {
        EXPECT_EQ(told.errors, "fernhop: \"org.example.Opener\" is not used: it is refused.\n");
        expectNothingChanged(told, 1);
    }
}

TEST_P(RuleCommands, RoutingStaysOnAndRemovalDoesNotChangeIt) {
    setDefaultBrowser(own);
    const auto added = run({"url-rules", "add", "docs.example", beta});
    EXPECT_EQ(added.status, 0);
    EXPECT_EQ(added.output.find("now on"), std::string::npos);
    EXPECT_EQ(launchServices.handlers["https"], own);
    setDefaultBrowser(alpha);
    EXPECT_EQ(run({"url-rules", "remove", preferences().urlRules().front().id}).status, 0);
    EXPECT_EQ(launchServices.handlers["https"], alpha);
}

TEST_P(RuleCommands, ReportsThatRoutingCannotBeTurnedOn) {
    setDefaultBrowser(alpha);
    launchServices.refuses = true;
    const auto told = run({"url-rules", "add", "docs.example", beta});
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("refused to turn"), std::string::npos);
    EXPECT_EQ(preferences().urlRules().size(), 1U);
}

/// Several applications with the same name.
class Namesakes : public testing::Test, protected World {
  protected:
    Namesakes() {
        setDefaultBrowser(own);
        applications.installApplication("/Applications/Beta 2.app", "org.example.Beta2", "Beta Browser",
                                        {"https"});
        applications.installApplication("/Applications/Editor 2.app", "Editor2", "Editor");
    }
};

TEST_F(Namesakes, AreListedInsteadOfGuessed) {
    const auto told = run({"url-rules", "add", "docs.example", "Beta Browser"});
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("org.example.Beta org.example.Beta2"), std::string::npos) << told.errors;
    EXPECT_NE(run({"app-rules", "set", "Editor", alpha}).errors.find("Editor2"), std::string::npos);
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(Namesakes, AnIdentifierWinsOverAName) {
    applications.installApplication("/Applications/Tricky.app", "org.example.Tricky", alpha, {"https"});
    EXPECT_EQ(run({"url-rules", "add", "docs.example", alpha}).status, 0);
    EXPECT_EQ(preferences().urlRules().front().browserBundleID, alpha);
}

TEST(UnwritableSettings, AreReportedByEveryChange) {
    World world;
    world.setDefaultBrowser(world.own);
    world.preferences().setURLRules({{"1", "a.example", world.alpha}});
    world.preferences().setBrowser(world.alpha, world.editor);
    fakes::FakeUserDefaults defaults;
    defaults.stored = world.defaults.stored;
    defaults.refusesWrites = true;
    ApplicationLayout layout = macApplicationLayout(world.applications);
    LocalSession session({world.workspace, world.launchServices, defaults, world.applications,
                          world.applications, world.sound, layout, world.report});
    for (const std::vector<std::string> &words :
         std::vector<std::vector<std::string>>{{"url-rules", "add", "b.example", world.beta},
                                               {"url-rules", "edit", "1", "b.example", world.beta},
                                               {"url-rules", "remove", "1"},
                                               {"app-rules", "set", world.editor, world.beta},
                                               {"app-rules", "remove", world.editor},
                                               {"restore-on-quit", "on"}}) {
        const auto told = perform(words, "", session.context());
        EXPECT_EQ(told.status, 1) << words[0] << ' ' << words[1];
        EXPECT_NE(told.errors.find("stored"), std::string::npos);
        EXPECT_EQ(told.output, "");
    }
    const auto document = perform({"export"}, "", session.context()).output;
    EXPECT_EQ(perform({"import", "-"}, document, session.context()).status, 0);
    const auto other = R"({"version":1,"urlRules":[],"appRules":{},"routingFallbackBrowserID":null,
                           "restoresDefaultBrowserOnQuit":false})";
    EXPECT_EQ(perform({"import", "-"}, other, session.context()).status, 1);
}

} // namespace
} // namespace fernhop::cli
