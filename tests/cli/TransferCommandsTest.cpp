#include "cli/EachSide.h"
#include "cli/SettingsDocument.h"

namespace fernhop::cli {
namespace {

using nlohmann::json;

const json complete = {{"version", 1},
                       {"urlRules", {{{"id", "1"}, {"pattern", "*.pdf"}, {"browserBundleID", "org.b"}}}},
                       {"appRules", {{"org.a", "org.b"}, {"org.c", "org.d"}}},
                       {"routingFallbackBrowserID", "org.e"},
                       {"restoresDefaultBrowserOnQuit", true}};

class Transfer : public EachSide {};
INSTANTIATE_TEST_SUITE_P(, Transfer, testing::Bool(), sideName);

TEST_P(Transfer, ExportContainsEverything) {
    preferences().setURLRules({{"1", "*.pdf", "org.b"}});
    preferences().setBrowser("org.b", "org.a");
    preferences().setBrowser("org.d", "org.c");
    defaults.stored["routingFallbackBrowserID"] = {std::string("org.e")};
    defaults.stored["restoresDefaultBrowserOnQuit"] = {true};
    EXPECT_EQ(runJson({"export"}), complete);
}

TEST_P(Transfer, ExportOfAFreshSystem) {
    EXPECT_EQ(runJson({"export"}), (json{{"version", 1},
                                         {"urlRules", json::array()},
                                         {"appRules", json::object()},
                                         {"routingFallbackBrowserID", nullptr},
                                         {"restoresDefaultBrowserOnQuit", false}}));
}

TEST_P(Transfer, ImportReplacesEverythingAsOneUpdate) {
    preferences().setURLRules({{"9", "old.example", alpha}});
    preferences().setBrowser(alpha, "org.old");
    defaults.stored["other"] = {std::string("kept")};
    const int updates = defaults.updates;
    const auto told = run({"import", "-"}, complete.dump());
    EXPECT_EQ(told, (CommandResult{0, "Stored 1 URL rule and 2 app rules.\n", ""}));
    EXPECT_GT(defaults.updates, updates);
    EXPECT_EQ(preferences().urlRules(), (std::vector<URLRule>{{"1", "*.pdf", "org.b"}}));
    EXPECT_EQ(preferences().appRules(), (AppRules{{"org.a", "org.b"}, {"org.c", "org.d"}}));
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), "org.e");
    EXPECT_EQ(defaults.stored["restoresDefaultBrowserOnQuit"], PropertyValue{true});
    EXPECT_EQ(defaults.stored["other"], PropertyValue{std::string("kept")});
    EXPECT_EQ(launchServices.calls.size(), 0U);
    expectMenuRebuilt();
}

TEST_P(Transfer, ImportWithoutAFallbackRemovesIt) {
    defaults.stored["routingFallbackBrowserID"] = {alpha};
    auto document = complete;
    document["routingFallbackBrowserID"] = nullptr;
    EXPECT_EQ(run({"import", "-"}, document.dump()).status, 0);
    EXPECT_FALSE(defaults.stored.contains("routingFallbackBrowserID"));
}

TEST_P(Transfer, ARefusedDocumentChangesNothing) {
    const auto told = run({"import", "-"}, "{}");
    EXPECT_EQ(told.status, 1);
    EXPECT_EQ(told.output, "");
    EXPECT_NE(told.errors.find("nothing was changed"), std::string::npos);
    EXPECT_EQ(defaults.writes, 0);
    EXPECT_EQ(statusBar.menusSet, 0);
}

TEST_P(Transfer, ImportParsesNothingThatIsTooLarge) {
    const auto told = run({"import", "-"}, complete.dump() + std::string(std::size_t{16} << 20U, ' '));
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("larger than 16 MiB"), std::string::npos) << told.errors;
    EXPECT_EQ(defaults.writes, 0);
}

TEST_P(Transfer, ImportGoesNoDeeperThanADocument) {
    const auto told = run({"import", "-"}, std::string(1'000'000, '[') + std::string(1'000'000, ']'));
    EXPECT_EQ(told.status, 1);
    EXPECT_NE(told.errors.find("nested too deeply"), std::string::npos) << told.errors;
}

TEST(SettingsDocuments, MayBeginWithAByteOrderMark) {
    EXPECT_TRUE(std::holds_alternative<SettingsDocument>(decodeSettings("\xEF\xBB\xBF" + complete.dump())));
}

TEST(SettingsDocuments, WithAnyContentCanBeReadBack) {
    const SettingsDocument odd{{{"", "", ""}, {"1", " a\n\"\\浏\x01", "b"}, {"1", "twice", "b"}},
                               {{"", ""}, {"a\"b\\", "c\x1f"}},
                               "",
                               true};
    const auto read = decodeSettings(encodeSettings(odd));
    ASSERT_TRUE(std::holds_alternative<SettingsDocument>(read)) << std::get<std::string>(read);
    EXPECT_EQ(std::get<SettingsDocument>(read), odd);
}

TEST(SettingsDocuments, AreWrittenAsJsonWithAnyContent) {
    const SettingsDocument broken{{{"\xff", "\xff", "\xff"}}, {{"\xff", "\xff"}}, "\xff", false};
    EXPECT_TRUE(std::holds_alternative<SettingsDocument>(decodeSettings(encodeSettings(broken))));
}

class Refused : public testing::TestWithParam<std::pair<const char *, std::string>> {};

TEST_P(Refused, Document) {
    const auto read = decodeSettings(GetParam().second);
    ASSERT_TRUE(std::holds_alternative<std::string>(read));
    EXPECT_NE(std::get<std::string>(read), "");
}

std::string with(const std::string &pointer, const json &value) {
    auto document = complete;
    document[json::json_pointer(pointer)] = value;
    return document.dump();
}

std::string without(const std::string &member) {
    auto document = complete;
    document.erase(member);
    return document.dump();
}

std::string replaced(std::string from, const std::string &to) {
    auto text = complete.dump();
    text.replace(text.find(from), from.size(), to);
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    , Refused,
    testing::Values(std::pair("empty", std::string()), std::pair("notJson", std::string("urlRules")),
                    std::pair("cut", complete.dump().substr(0, 40)),
                    std::pair("trailing", complete.dump() + "x"), std::pair("array", std::string("[]")),
                    std::pair("null", std::string("null")), std::pair("notUtf8", replaced("*.pdf", "\xff")),
                    std::pair("noVersion", without("version")),
                    std::pair("laterVersion", with("/version", 2)),
                    std::pair("textVersion", with("/version", "1")),
                    std::pair("realVersion", replaced("\"version\":1", "\"version\":1.0")),
                    std::pair("noRules", without("urlRules")), std::pair("noAppRules", without("appRules")),
                    std::pair("noFallback", without("routingFallbackBrowserID")),
                    std::pair("noRestore", without("restoresDefaultBrowserOnQuit")),
                    std::pair("unknownMember", with("/more", 1)),
                    std::pair("rulesNoArray", with("/urlRules", json::object())),
                    std::pair("ruleNoObject", with("/urlRules/0", "x")),
                    std::pair("ruleLacksBrowser", with("/urlRules/0", json{{"id", "1"}, {"pattern", "x"}})),
                    std::pair("ruleWithMore", with("/urlRules/0/more", "x")),
                    std::pair("ruleNumber", with("/urlRules/0/id", 1)),
                    std::pair("ruleNull", with("/urlRules/0/pattern", nullptr)),
                    std::pair("ruleZero", with("/urlRules/0/pattern", std::string("a\0b", 3))),
                    std::pair("appRulesNoObject", with("/appRules", json::array())),
                    std::pair("appRuleNumber", with("/appRules/org.a", 1)),
                    std::pair("appRuleZero", with("/appRules/org.a", std::string(1, '\0'))),
                    std::pair("appZero", replaced("org.a", "org\\u0000a")),
                    std::pair("fallbackNumber", with("/routingFallbackBrowserID", 1)),
                    std::pair("fallbackZero", with("/routingFallbackBrowserID", std::string(1, '\0'))),
                    std::pair("restoreText", with("/restoresDefaultBrowserOnQuit", "true")),
                    std::pair("restoreNull", with("/restoresDefaultBrowserOnQuit", nullptr)),
                    std::pair("appTwice", replaced("org.c", "org.a")),
                    std::pair("memberTwice", replaced("\"version\":1", "\"version\":1,\"version\":1")),
                    std::pair("deep", std::string(100000, '['))),
    [](const auto &tested) { return tested.param.first; });

} // namespace
} // namespace fernhop::cli
