#include "cli/EachSide.h"

namespace fernhop::cli {
namespace {

using nlohmann::json;

class LinkCommands : public EachSide {};
INSTANTIATE_TEST_SUITE_P(, LinkCommands, testing::Bool(), sideName);

TEST_P(LinkCommands, ExplainNamesTheURLRule) {
    setDefaultBrowser(own);
    preferences().setURLRules({{"1", "nothing.example", alpha}, {"2", "docs.example", beta}});
    EXPECT_EQ(
        runJson({"explain", "--json", "https://docs.example/a%20b"}),
        (json{{"url", "https://docs.example/a%20b"},
              {"routing", true},
              {"handler", own},
              {"source", nullptr},
              {"urlRule", {{"id", "2"}, {"pattern", "docs.example"}, {"browserBundleID", beta}}},
              {"appRule", nullptr},
              {"fallback", nullptr},
              {"target",
               {{"name", "Beta Browser"}, {"bundleID", beta}, {"appURL", "file:///Applications/Beta.app"}}},
              {"because", "urlRule"},
              {"steps", json::array()}}));
}

TEST_P(LinkCommands, ExplainNamesTheAppRuleOfTheSource) {
    preferences().setBrowser(beta, editor);
    const auto told = runJson({"explain", "--source", editor, "--json", "https://docs.example/"});
    EXPECT_EQ(told["source"], editor);
    EXPECT_EQ(told["appRule"], beta);
    EXPECT_EQ(told["because"], "appRule");
    EXPECT_EQ(told["target"]["bundleID"], beta);
}

TEST_P(LinkCommands, ExplainUsesTheCurrentSource) {
    preferences().setBrowser(beta, editor);
    report.sourceBundleID = editor;
    EXPECT_EQ(runJson({"explain", "--json", "https://docs.example/"})["because"], "appRule");
    EXPECT_EQ(runJson({"explain", "--json", "--source", alpha, "https://docs.example/"})["because"],
              "firstBrowser");
}

TEST_P(LinkCommands, ExplainTakesTheNameOfASourceAndRefusesAnUnknownOne) {
    preferences().setBrowser(beta, editor);
    const auto told = runJson({"explain", "--json", "--source", "Editor", "https://docs.example/"});
    EXPECT_EQ(told["source"], editor);
    EXPECT_EQ(told["because"], "appRule");
    for (const std::string unknown : {"org.other", "", "editor", own.c_str()}) {
        const auto refused = run({"explain", "--source=" + unknown, "https://docs.example/"});
        EXPECT_EQ(refused, run({"app-rules", "set", unknown, alpha})) << unknown;
        EXPECT_EQ(refused.status, 1) << unknown;
    }
}

TEST_P(LinkCommands, ExplainNamesTheDefaultBrowserWhileRoutingIsOff) {
    preferences().setURLRules({{"1", "docs.example", beta}});
    setDefaultBrowser(alpha);
    auto told = runJson({"explain", "--json", "https://docs.example/"});
    EXPECT_EQ(told["routing"], false);
    EXPECT_EQ(told["handler"], alpha);
    EXPECT_EQ(told["target"]["bundleID"], beta);
    EXPECT_EQ(told["because"], "urlRule");
    const auto text = run({"explain", "https://docs.example/"});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.output.starts_with("App Routing is off: the system opens the link in Alpha Browser "
                                        "(org.example.Alpha).\nIf App Routing were on:\n"))
        << text.output;
}

TEST_P(LinkCommands, ExplainSaysNothingOfTheSystemWhileLinksReachFernhop) {
    setDefaultBrowser(own);
    EXPECT_TRUE(run({"explain", "https://docs.example/"}).output.starts_with("Link:"));
}

TEST_P(LinkCommands, ExplainSaysThatTheDefaultBrowserWouldBecomeTheFallback) {
    const std::string sentence =
        "Turning App Routing on makes Beta Browser (org.example.Beta) the fallback.\n";
    setDefaultBrowser(beta);
    EXPECT_TRUE(run({"explain", "https://docs.example/"}).output.ends_with(sentence));
    defaults.stored["routingFallbackBrowserID"] = {beta};
    EXPECT_EQ(run({"explain", "https://docs.example/"}).output.find(sentence), std::string::npos);
    defaults.stored["routingFallbackBrowserID"] = {alpha};
    EXPECT_TRUE(run({"explain", "https://docs.example/"}).output.ends_with(sentence));
    setDefaultBrowser(own);
    EXPECT_EQ(run({"explain", "https://docs.example/"}).output.find("Turning"), std::string::npos);
}

TEST_P(LinkCommands, ExplainTakesTheHandlerOfTheLinksOwnScheme) {
    launchServices.handlers = {{"http", alpha}, {"https", own}};
    auto told = runJson({"explain", "--json", "HTTP://docs.example/"});
    EXPECT_EQ(told["routing"], true);
    EXPECT_EQ(told["handler"], alpha);
    EXPECT_TRUE(run({"explain", "HTTP://docs.example/"})
                    .output.starts_with("Fernhop is not the handler of http: the system opens the link in "
                                        "Alpha Browser (org.example.Alpha).\nIf it were:\n"));
    EXPECT_TRUE(run({"explain", "https://docs.example/"}).output.starts_with("Link:"));
    EXPECT_EQ(runJson({"explain", "--json", "mailto:ada@docs.example"})["handler"], nullptr);
    EXPECT_TRUE(run({"explain", "mailto:ada@docs.example"})
                    .output.starts_with("The system sends only http and https links to Fernhop.\n"));
}

TEST_P(LinkCommands, ExplainSaysWhenNoHandlerIsSet) {
    EXPECT_EQ(runJson({"explain", "--json", "https://docs.example/"})["handler"], nullptr);
    EXPECT_TRUE(run({"explain", "https://docs.example/"})
                    .output.starts_with("App Routing is off: the system has no handler for the link.\n"
                                        "If App Routing were on:\n"));
}

TEST_P(LinkCommands, ExplainNamesTheFallback) {
    defaults.stored["routingFallbackBrowserID"] = {beta};
    const auto told = runJson({"explain", "--json", "https://docs.example/"});
    EXPECT_EQ(told["fallback"], beta);
    EXPECT_EQ(told["because"], "fallback");
    EXPECT_EQ(told["steps"], json::array());
}

TEST_P(LinkCommands, ExplainGivesTheReasonForEachCandidateNotChosen) {
    preferences().setURLRules({{"1", "docs.example", "org.example.Gone"}});
    preferences().setBrowser(beta, editor);
    defaults.stored["routingFallbackBrowserID"] = {own};
    const auto told = runJson({"explain", "--json", "--source", editor, "https://docs.example/"});
    EXPECT_EQ(told["because"], "firstBrowser");
    EXPECT_EQ(told["target"]["bundleID"], alpha);
    EXPECT_EQ(told["fallback"], own);
    EXPECT_EQ(told["urlRule"]["id"], "1");
    ASSERT_EQ(told["steps"].size(), 3U);
    EXPECT_NE(told["steps"][0].get<std::string>().find("org.example.Gone"), std::string::npos);
    EXPECT_NE(told["steps"][1].get<std::string>().find(beta), std::string::npos);
    EXPECT_NE(told["steps"][2].get<std::string>().find("Fernhop"), std::string::npos);
}

TEST_P(LinkCommands, ExplainSaysWhyAnInstalledBrowserIsNotUsed) {
    preferences().setURLRules({{"1", "docs.example", "org.example.Shell"}});
    report.refusals["org.example.Shell"] = "it would run the link.";
    const std::string sentence =
        "The URL rule's browser org.example.Shell is not used: it would run the link.";
    EXPECT_EQ(runJson({"explain", "--json", "https://docs.example/"})["steps"], json::array({sentence}));
    EXPECT_NE(run({"explain", "https://docs.example/"}).output.find(sentence), std::string::npos);
}

TEST_P(LinkCommands, ExplainPrintsTextForPeople) {
    preferences().setURLRules({{"1", "docs.example", "org.example.Gone"}});
    const auto told = run({"explain", "https://docs.example/"});
    EXPECT_EQ(told.status, 0);
    for (const char *part : {"https://docs.example/", "org.example.Gone (not installed)", "Alpha Browser",
                             "it is the first installed browser", "unknown"})
        EXPECT_NE(told.output.find(part), std::string::npos) << part << "\n" << told.output;
}

TEST_P(LinkCommands, ExplainCallsNothingUninstalledThatIsRefused) {
    report.refusals = {{"org.example.Opener", "it is refused."}};
    setDefaultBrowser("org.example.Opener");
    preferences().setURLRules({{"1", "docs.example", "org.example.Opener"}});
    const auto told = run({"explain", "https://docs.example/"});
    EXPECT_EQ(told.output.find("not installed"), std::string::npos) << told.output;
    EXPECT_NE(told.output.find("docs.example -> org.example.Opener (not used)\n"), std::string::npos)
        << told.output;
}

TEST_P(LinkCommands, ExplainOpensNothing) {
    EXPECT_EQ(run({"explain", "https://docs.example/"}).status, 0);
    EXPECT_TRUE(workspace.opened.empty());
    EXPECT_TRUE(log.lines.empty());
}

TEST_P(LinkCommands, ExplainRefusesTextThatIsNotAURL) {
    for (const char *text : {"", "notaurl", "docs.example", "/etc/hosts", "https://[x"}) {
        const auto told = run({"explain", text});
        EXPECT_EQ(told.status, 2) << text;
        EXPECT_EQ(told.output, "");
        EXPECT_NE(told.errors, "");
    }
}

TEST_P(LinkCommands, MatchAnswersForEachURL) {
    const auto told = run({"match", "*.pdf", "https://a.example/b.PDF", "https://a.example/", "x:y.pdf"});
    EXPECT_EQ(told.output, "yes\nno\nyes\n");
    EXPECT_EQ(told.status, 1);
    EXPECT_EQ(run({"match", "*.pdf", "https://a.example/b.pdf"}).status, 0);
}

TEST_P(LinkCommands, MatchReadsLines) {
    EXPECT_EQ(
        run({"match", "docs"}, "https://docs.example/\nhttps://a.example/\n\nhttps://docs.example/").output,
        "yes\nno\nno\nyes\n");
    EXPECT_EQ(run({"match", "docs"}, "").output, "");
    EXPECT_EQ(run({"match", "docs"}, "").status, 0);
}

TEST_P(LinkCommands, MatchNeverMatchesABlankPattern) {
    EXPECT_EQ(run({"match", " ", "https://docs.example/"}), (CommandResult{1, "no\n", ""}));
}

class Opening : public testing::Test, protected World {};

TEST_F(Opening, OpenIsNotForTheResident) {
    launch();
    const auto told = run({"open", "https://a.example/"});
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("use OpenLinks"), std::string::npos) << told.errors;
    EXPECT_TRUE(workspace.opened.empty());
}

} // namespace
} // namespace fernhop::cli
