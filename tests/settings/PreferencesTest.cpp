#include "settings/Preferences.h"

#include "fakes/FakeUserDefaults.h"
#include "rules/URLRuleCoding.h"

#include <gtest/gtest.h>

#include <regex>

namespace fernhop {

namespace {

class PreferencesTest : public testing::Test {
  protected:
    fakes::FakeUserDefaults defaults;
    Preferences preferences{defaults};

    void plantRules(const std::vector<URLRule> &rules) { plantRules(encodeURLRules(rules).value()); }
    void plantRules(const std::string &json) { plant(settingsKey::urlRules, {PropertyData{json}}); }

    void plant(std::string_view key, PropertyValue value) {
        defaults.stored.insert_or_assign(std::string(key), std::move(value));
    }

    [[nodiscard]] PropertyValue storedAppRules() const { return defaults.stored.at("appRules"); }
};

const URLRule docs{"1", "docs.example", "firefox"};
const URLRule mail{"2", "*mail*", "chromium"};

PropertyValue dictionary(PropertyDictionary entries) {
    return {std::move(entries)};
}
PropertyValue string(std::string text) {
    return {std::move(text)};
}

} // namespace

TEST_F(PreferencesTest, FreshOnesAreEmpty) {
    EXPECT_TRUE(preferences.urlRules().empty());
    EXPECT_TRUE(preferences.appRules().empty());
    EXPECT_FALSE(preferences.userDefaults().stringForKey(settingsKey::routingFallbackBrowserID));
    EXPECT_FALSE(preferences.userDefaults().boolForKey(settingsKey::restoresDefaultBrowserOnQuit));
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(PreferencesTest, KeysAreThePersistentFormat) {
    EXPECT_EQ(settingsKey::appRules, "appRules");
    EXPECT_EQ(settingsKey::urlRules, "urlRules");
    EXPECT_EQ(settingsKey::routingFallbackBrowserID, "routingFallbackBrowserID");
    EXPECT_EQ(settingsKey::restoresDefaultBrowserOnQuit, "restoresDefaultBrowserOnQuit");
}

TEST_F(PreferencesTest, URLRulesAreStoredAsJsonData) {
    preferences.setURLRules({docs});
    EXPECT_EQ(defaults.stored.at("urlRules"),
              (PropertyValue{
                  PropertyData{R"([{"id":"1","pattern":"docs.example","browserBundleID":"firefox"}])"}}));
}

TEST_F(PreferencesTest, URLRulesAreReadInStoredOrderAsStored) {
    const std::vector<URLRule> rules{mail, docs, {"3", "  ", ""}, mail};
    plantRules(rules);
    EXPECT_EQ(preferences.urlRules(), rules);
}

TEST_F(PreferencesTest, URLRulesAreReadAgainEachTime) {
    plantRules({docs});
    EXPECT_EQ(preferences.urlRules().size(), 1U);
    plantRules({docs, mail});
    EXPECT_EQ(preferences.urlRules().size(), 2U);
}

TEST_F(PreferencesTest, UnreadableURLRulesAreEmptyAndNotOverwritten) {
    for (const char *json : {"", "no json", "{}", "[{}]", R"([{"id":"1","pattern":"p"}])", "[null]"}) {
        plantRules(json);
        EXPECT_TRUE(preferences.urlRules().empty()) << json;
        EXPECT_EQ(defaults.dataForKey("urlRules"), json);
    }
    plant("urlRules", string("[]"));
    EXPECT_TRUE(preferences.urlRules().empty());
    plant("urlRules", {PropertyArray{}});
    EXPECT_TRUE(preferences.urlRules().empty());
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(PreferencesTest, TheFirstAcceptedURLRuleIsFoundWithoutTestingTheOthers) {
    plantRules({docs, mail, {"3", "*mail*", "firefox"}});
    std::vector<std::string> tested;
    const auto accepts = [&](std::string_view pattern) {
        tested.emplace_back(pattern);
        return pattern == "*mail*";
    };
    EXPECT_EQ(preferences.firstURLRule(accepts), mail);
    EXPECT_EQ(tested, (std::vector<std::string>{"docs.example", "*mail*"}));
    EXPECT_EQ(preferences.firstURLRule([](std::string_view) { return false; }), std::nullopt);
}

TEST_F(PreferencesTest, NoURLRuleIsFoundWhenALaterOneIsUnreadable) {
    const std::string rule = R"({"id":"1","pattern":"p","browserBundleID":"firefox"})";
    const auto all = [](std::string_view) { return true; };
    for (const std::string &json :
         {"[" + rule + ",{}]", "[" + rule + ",null]", "[" + rule, "[" + rule + "] x"}) {
        plantRules(json);
        EXPECT_EQ(preferences.firstURLRule(all), std::nullopt) << json;
    }
    defaults.stored.clear();
    EXPECT_EQ(preferences.firstURLRule(all), std::nullopt);
}

TEST_F(PreferencesTest, AddingReplacesUnreadableURLRules) {
    plantRules("no json");
    preferences.addURLRule("docs.example", "firefox");
    ASSERT_EQ(preferences.urlRules().size(), 1U);
    EXPECT_EQ(preferences.urlRules()[0].pattern, "docs.example");
}

TEST_F(PreferencesTest, EachChangeSaysWhetherItIsStored) {
    EXPECT_TRUE(preferences.setURLRules({docs}));
    const auto added = preferences.addURLRule(" new ", "falkon");
    ASSERT_TRUE(added);
    EXPECT_EQ(preferences.urlRules().back(), *added);
    EXPECT_TRUE(preferences.updateURLRule(docs.id, "newer", "falkon"));
    EXPECT_FALSE(preferences.updateURLRule(docs.id, " ", "falkon"));
    EXPECT_FALSE(preferences.updateURLRule("no such rule", "newer", "falkon"));
    EXPECT_FALSE(preferences.updateURLRule(docs.id, "\xFF", "falkon"));
    EXPECT_TRUE(preferences.removeURLRule(docs.id));
    EXPECT_TRUE(preferences.setBrowser("falkon", "editor"));
    EXPECT_TRUE(preferences.removeRule("editor"));
    defaults.refusesWrites = true;
    EXPECT_FALSE(preferences.setURLRules({docs}));
    EXPECT_EQ(preferences.addURLRule("new", "okular"), std::nullopt);
    EXPECT_FALSE(preferences.updateURLRule(added->id, "newest", "falkon"));
    EXPECT_FALSE(preferences.removeURLRule(added->id));
    EXPECT_FALSE(preferences.setBrowser("falkon", "editor"));
    EXPECT_FALSE(preferences.removeRule("editor"));
}

TEST_F(PreferencesTest, RulesThatCannotBeEncodedAreNotWritten) {
    preferences.setURLRules({docs});
    preferences.setURLRules({mail, {"3", "\xFF", "b"}});
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{docs});
    preferences.addURLRule("\xFF", "b");
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{docs});
    preferences.updateURLRule("1", "\xFF", "b");
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{docs});
    EXPECT_EQ(defaults.writes, 1);
}

TEST_F(PreferencesTest, AddingAppendsARuleWithANewId) {
    plantRules({docs});
    preferences.addURLRule(" \n*.pdf\u2028", "okular");
    const auto rules = preferences.urlRules();
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[0], docs);
    EXPECT_EQ(rules[1].pattern, "*.pdf");
    EXPECT_EQ(rules[1].browserBundleID, "okular");
    EXPECT_TRUE(std::regex_match(rules[1].id, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")));

    preferences.addURLRule("other", "okular");
    EXPECT_NE(preferences.urlRules()[2].id, rules[1].id);
}

TEST_F(PreferencesTest, AddingAKnownPatternChangesOnlyItsBrowser) {
    plantRules({mail, docs});
    preferences.addURLRule(" Docs.Example ", "falkon");
    EXPECT_EQ(preferences.urlRules(), (std::vector<URLRule>{mail, {"1", "docs.example", "falkon"}}));
}

TEST_F(PreferencesTest, AddingChangesTheFirstOfSeveralEqualPatterns) {
    plantRules({docs, {"3", "DOCS.EXAMPLE", "chromium"}});
    preferences.addURLRule("docs.EXAMPLE", "falkon");
    EXPECT_EQ(preferences.urlRules(),
              (std::vector<URLRule>{{"1", "docs.example", "falkon"}, {"3", "DOCS.EXAMPLE", "chromium"}}));
}

TEST_F(PreferencesTest, AddingComparesPatternsIndependentOfTheLocale) {
    plantRules({{"1", " docs.example", "firefox"}, {"2", "BÜCHER", "firefox"}});
    preferences.addURLRule("docs.example", "falkon");
    EXPECT_EQ(preferences.urlRules().size(), 3U);
    preferences.addURLRule("bu\u0308cher", "falkon");
    EXPECT_EQ(preferences.urlRules()[1], (URLRule{"2", "BÜCHER", "falkon"}));
}

TEST_F(PreferencesTest, AddingAnEmptyPatternChangesNothing) {
    plantRules({docs});
    for (const char *pattern : {"", "   ", " \n\t\r\n ", "\u2028\u3000"})
        preferences.addURLRule(pattern, "falkon");
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{docs});
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(PreferencesTest, UpdatingKeepsTheRulesPosition) {
    plantRules({docs, mail});
    preferences.updateURLRule("1", " Other ", "falkon");
    EXPECT_EQ(preferences.urlRules(), (std::vector<URLRule>{{"1", "Other", "falkon"}, mail}));
}

TEST_F(PreferencesTest, UpdatingChangesTheFirstRuleWithTheId) {
    plantRules({{"1", "a", "x"}, {"1", "b", "y"}});
    preferences.updateURLRule("1", "c", "z");
    EXPECT_EQ(preferences.urlRules(), (std::vector<URLRule>{{"1", "c", "z"}, {"1", "b", "y"}}));
}

TEST_F(PreferencesTest, UpdatingMayCreateEqualPatterns) {
    plantRules({docs, mail});
    preferences.updateURLRule("2", "docs.example", "falkon");
    EXPECT_EQ(preferences.urlRules(), (std::vector<URLRule>{docs, {"2", "docs.example", "falkon"}}));
}

TEST_F(PreferencesTest, UpdatingAnUnknownRuleChangesNothing) {
    plantRules({{"ab", "p", "b"}});
    preferences.updateURLRule("2", "other", "falkon");
    preferences.updateURLRule("AB", "other", "falkon");
    EXPECT_EQ(preferences.urlRules(), (std::vector<URLRule>{{"ab", "p", "b"}}));
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(PreferencesTest, UpdatingWithAnEmptyPatternChangesNothingNotEvenTheBrowser) {
    plantRules({docs});
    preferences.updateURLRule("1", " \n ", "falkon");
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{docs});
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(PreferencesTest, RemovingDropsEveryRuleWithTheIdAndWritesBack) {
    plantRules({docs, mail, docs});
    preferences.removeURLRule("1");
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{mail});
    preferences.removeURLRule("unknown");
    EXPECT_EQ(preferences.urlRules(), std::vector<URLRule>{mail});
    EXPECT_EQ(defaults.writes, 2);
}

TEST_F(PreferencesTest, AppRulesAreADictionaryOfStrings) {
    preferences.setBrowser("firefox", "org.x.Mail");
    preferences.setBrowser("chromium", " ");
    EXPECT_EQ(storedAppRules(), dictionary({{"org.x.Mail", string("firefox")}, {" ", string("chromium")}}));
    EXPECT_EQ(preferences.appRules(), (AppRules{{"org.x.Mail", "firefox"}, {" ", "chromium"}}));
}

TEST_F(PreferencesTest, SettingAnAppRuleTwiceKeepsTheLastBrowser) {
    preferences.setBrowser("firefox", "org.x.Mail");
    preferences.setBrowser("chromium", "org.x.Mail");
    EXPECT_EQ(preferences.appRules(), (AppRules{{"org.x.Mail", "chromium"}}));
}

TEST_F(PreferencesTest, AppRulesWithAnyValueThatIsNotAStringAreEmpty) {
    for (const PropertyValue &odd : {PropertyValue{std::int64_t{1}}, PropertyValue{true}, PropertyValue{1.5},
                                     PropertyValue{PropertyData{"firefox"}}, dictionary({})}) {
        plant("appRules", dictionary({{"a", string("firefox")}, {"b", odd}}));
        EXPECT_TRUE(preferences.appRules().empty());
    }
    plant("appRules", string("firefox"));
    EXPECT_TRUE(preferences.appRules().empty());
}

TEST_F(PreferencesTest, SettingAnAppRuleReplacesUnreadableOnes) {
    plant("appRules", dictionary({{"a", string("firefox")}, {"b", PropertyValue{true}}}));
    preferences.setBrowser("falkon", "c");
    EXPECT_EQ(storedAppRules(), dictionary({{"c", string("falkon")}}));
}

TEST_F(PreferencesTest, RemovingAnAppRuleReplacesUnreadableOnes) {
    plant("appRules", dictionary({{"a", string("firefox")}, {"b", PropertyValue{true}}}));
    preferences.removeRule("c");
    EXPECT_EQ(storedAppRules(), dictionary({}));
}

TEST_F(PreferencesTest, RemovingAnAppRuleKeepsTheOthers) {
    plant("appRules", dictionary({{"a", string("firefox")}, {"b", string("falkon")}}));
    preferences.removeRule("a");
    EXPECT_EQ(storedAppRules(), dictionary({{"b", string("falkon")}}));
}

TEST_F(PreferencesTest, RemovingAnAppRuleWritesInAnyCase) {
    preferences.removeRule("a");
    EXPECT_EQ(storedAppRules(), dictionary({}));
    plant("appRules", dictionary({{"b", string("falkon")}}));
    preferences.removeRule("a");
    EXPECT_EQ(storedAppRules(), dictionary({{"b", string("falkon")}}));
    EXPECT_EQ(defaults.writes, 2);
}

TEST_F(PreferencesTest, ReadingAndWritingIsOneUpdate) {
    plantRules({docs});
    preferences.addURLRule("new", "falkon");
    preferences.updateURLRule("1", "other", "falkon");
    preferences.removeURLRule("1");
    preferences.setBrowser("falkon", "a");
    preferences.removeRule("a");
    EXPECT_EQ(defaults.updates, 5);
    EXPECT_EQ(defaults.writes, 5);
}

} // namespace fernhop
