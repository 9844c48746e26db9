#include "cli/EachSide.h"

namespace fernhop::cli {
namespace {

using nlohmann::json;

class ListCommands : public EachSide {};
INSTANTIATE_TEST_SUITE_P(, ListCommands, testing::Bool(), sideName);

TEST_P(ListCommands, StatusOfAFreshSystem) {
    EXPECT_EQ(runJson({"status", "--json"}), (json{{"routing", false},
                                                   {"httpHandler", nullptr},
                                                   {"httpsHandler", nullptr},
                                                   {"fallback", nullptr},
                                                   {"restoreOnQuit", false},
                                                   {"source", nullptr},
                                                   {"sourceProvider", "fake"},
                                                   {"running", GetParam()},
                                                   {"icon", nullptr},
                                                   {"problems", json::array()}}));
}

TEST_P(ListCommands, StatusOfAConfiguredSystem) {
    launchServices.handlers = {{"http", alpha}, {"https", own}};
    defaults.stored["routingFallbackBrowserID"] = {beta};
    defaults.stored["restoresDefaultBrowserOnQuit"] = {true};
    report.sourceBundleID = editor;
    report.provider = "x11";
    report.icon = IconPlace::panel;
    report.reportedProblems = {"No tray.", "No portal."};
    EXPECT_EQ(runJson({"status", "--json"}), (json{{"routing", true},
                                                   {"httpHandler", alpha},
                                                   {"httpsHandler", own},
                                                   {"fallback", beta},
                                                   {"restoreOnQuit", true},
                                                   {"source", editor},
                                                   {"sourceProvider", "x11"},
                                                   {"running", GetParam()},
                                                   {"icon", "panel"},
                                                   {"problems", {"No tray.", "No portal."}}}));
    report.icon = IconPlace::xembedTray;
    EXPECT_EQ(runJson({"status", "--json"})["icon"], "xembedTray");
}

TEST_P(ListCommands, StatusShowsWhereTheIconIs) {
    const auto tells = [this](const std::string &line) {
        const auto output = run({"status"}).output;
        EXPECT_NE(output.find("\n" + line + "\n"), std::string::npos) << output;
    };
    tells(
        GetParam()
            ? "Icon:               not shown: there is no panel or tray for it (GNOME needs its AppIndicator "
              "extension)"
            : "Icon:               not shown");
    report.icon = IconPlace::panel;
    tells("Icon:               shown by a panel that supports StatusNotifierItem");
    report.icon = IconPlace::xembedTray;
    tells("Icon:               shown by an XEmbed tray");
}

TEST_P(ListCommands, StatusPrintsTextForPeople) {
    launchServices.handlers = {{"http", alpha}, {"https", "org.example.Gone"}};
    report.reportedProblems = {"No\ntray."};
    const auto told = run({"status"});
    EXPECT_EQ(told.status, 0);
    for (const char *part : {"App Routing:        off", "Alpha Browser (org.example.Alpha)",
                             "org.example.Gone (not installed)", "Problem: No\\x0atray.", "none stored"})
        EXPECT_NE(told.output.find(part), std::string::npos) << part << "\n" << told.output;
}

TEST_P(ListCommands, WhatDependsOnUnreadableSettingsWarns) {
    report.unreadableSettings = "The rules are\ndamaged.";
    const std::string shown = "The rules are\\x0adamaged.";
    using Words = std::vector<std::string>;
    for (const Words &words :
         {Words{"url-rules", "list"}, Words{"app-rules", "list", "--json"}, Words{"explain", "https://a/"},
          Words{"url-rules", "add", "a", alpha}, Words{"app-rules", "set", editor, alpha},
          Words{"routing", "on"}, Words{"default", alpha}, Words{"restore-on-quit", "on"}}) {
        const auto told = run(words);
        EXPECT_EQ(told.status, 0) << words[0] << words[1];
        EXPECT_EQ(told.errors, "fernhop: Warning: " + shown + "\n") << words[0] << words[1];
    }
    for (const Words &words : {Words{"status"}, Words{"apps"}, Words{"browsers"}, Words{"refresh"}})
        EXPECT_EQ(run(words).errors, "") << words[0];
    EXPECT_NE(run({"status"}).output.find("Problem: " + shown + "\n"), std::string::npos);
    const auto exported = run({"export"});
    EXPECT_EQ(exported.status, 1);
    EXPECT_EQ(exported.output, "");
    EXPECT_NE(exported.errors.find(shown), std::string::npos) << exported.errors;
}

TEST_P(ListCommands, AppsInOrder) {
    EXPECT_EQ(runJson({"apps", "--json"}), (json::array({{{"name", "Alpha Browser"},
                                                          {"bundleID", alpha},
                                                          {"appURL", "file:///Applications/Alpha.app"},
                                                          {"urlSchemes", {"http", "https"}}},
                                                         {{"name", "Beta Browser"},
                                                          {"bundleID", beta},
                                                          {"appURL", "file:///Applications/Beta.app"},
                                                          {"urlSchemes", {"https"}}},
                                                         {{"name", "Editor"},
                                                          {"bundleID", editor},
                                                          {"appURL", "file:///Applications/Editor.app"},
                                                          {"urlSchemes", json::array()}}})));
    EXPECT_EQ(run({"apps"}).output, "NAME           IDENTIFIER          URL SCHEMES\n"
                                    "Alpha Browser  org.example.Alpha   http https\n"
                                    "Beta Browser   org.example.Beta    https\n"
                                    "Editor         org.example.Editor\n");
}

TEST_P(ListCommands, BrowsersInOrder) {
    EXPECT_EQ(
        runJson({"browsers", "--json"}),
        (json::array(
            {{{"name", "Alpha Browser"}, {"bundleID", alpha}, {"appURL", "file:///Applications/Alpha.app"}},
             {{"name", "Beta Browser"}, {"bundleID", beta}, {"appURL", "file:///Applications/Beta.app"}}})));
    EXPECT_EQ(run({"browsers"}).output, "NAME           IDENTIFIER\n"
                                        "Alpha Browser  org.example.Alpha\n"
                                        "Beta Browser   org.example.Beta\n");
}

TEST_P(ListCommands, RulesInOrder) {
    preferences().setURLRules({{"2", "b.example", beta}, {"1", "a\x1b.example", "org.example.Gone"}});
    preferences().setBrowser(beta, editor);
    EXPECT_EQ(runJson({"url-rules", "list", "--json"}),
              (json::array(
                  {{{"id", "2"}, {"pattern", "b.example"}, {"browserBundleID", beta}},
                   {{"id", "1"}, {"pattern", "a\x1b.example"}, {"browserBundleID", "org.example.Gone"}}})));
    EXPECT_EQ(run({"url-rules", "list"}).output, "ID  PATTERN        BROWSER\n"
                                                 "2   b.example      Beta Browser (org.example.Beta)\n"
                                                 "1   a\\x1b.example  org.example.Gone (not installed)\n");
    EXPECT_EQ(runJson({"app-rules", "list", "--json"}),
              (json::array({{{"sourceBundleID", editor}, {"browserBundleID", beta}}})));
    EXPECT_EQ(run({"app-rules", "list"}).output,
              "APPLICATION                  BROWSER\n"
              "Editor (org.example.Editor)  Beta Browser (org.example.Beta)\n");
}

TEST_P(ListCommands, EmptyListsPrintAMessage) {
    EXPECT_EQ(run({"url-rules", "list"}), (CommandResult{0, "No URL rules yet.\n", ""}));
    EXPECT_EQ(run({"app-rules", "list"}), (CommandResult{0, "No app rules yet.\n", ""}));
    EXPECT_EQ(runJson({"url-rules", "list", "--json"}), json::array());
    EXPECT_EQ(runJson({"app-rules", "list", "--json"}), json::array());
}

class EmptySystem : public testing::Test, protected World {
  protected:
    EmptySystem() { applications.remove("/Applications"); }
};

TEST_F(EmptySystem, HasEmptyLists) {
    EXPECT_EQ(run({"apps"}), (CommandResult{0, "No applications found.\n", ""}));
    EXPECT_EQ(run({"browsers"}), (CommandResult{0, "No browsers found.\n", ""}));
    EXPECT_EQ(run({"apps", "--json"}).output, "[]\n");
}

TEST_F(EmptySystem, ReportsThatThereIsNoBrowser) {
    report.reportedProblems = {"No portal."};
    const auto status = json::parse(run({"status", "--json"}).output);
    EXPECT_EQ(status["problems"],
              (json::array({"No portal.", "No web browser was found, so no link can be opened."})));
}

TEST_F(EmptySystem, HasNoTargetForALink) {
    const auto told = json::parse(run({"explain", "--json", "https://docs.example/"}).output);
    EXPECT_EQ(told["target"], nullptr);
    EXPECT_EQ(told["because"], "none");
}

TEST(JsonOutput, IsJsonForAnyName) {
    World world;
    world.applications.installApplication("/Applications/Odd.app", "odd", "\xff\x1b", {"http"});
    const auto browsers = json::parse(world.run({"browsers", "--json"}).output);
    ASSERT_EQ(browsers.size(), 3U);
}

} // namespace
} // namespace fernhop::cli
