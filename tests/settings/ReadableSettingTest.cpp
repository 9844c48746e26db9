#include "settings/ReadableSetting.h"

#include "settings/Preferences.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

const PropertyValue text{"firefox"};
const PropertyValue number{std::int64_t{1}};
const PropertyValue array{PropertyArray{}};
const PropertyValue date{PropertyDate{0}};
const PropertyValue rules{PropertyData{R"([{"id":"1","pattern":"a","browserBundleID":"b"}])"}};

TEST(ReadableSettingTest, AppRulesAreADictionaryOfStrings) {
    const auto isReadable = [](const PropertyValue &stored) {
        return isReadableSetting(settingsKey::appRules, stored);
    };
    EXPECT_TRUE(isReadable({PropertyDictionary{}}));
    EXPECT_TRUE(isReadable({PropertyDictionary{{"org.mail", text}}}));
    EXPECT_FALSE(isReadable({PropertyDictionary{{"org.mail", text}, {"org.chat", number}}}));
    for (const PropertyValue &other : {text, number, array, date, rules})
        EXPECT_FALSE(isReadable(other));
}

TEST(ReadableSettingTest, URLRulesAreDecodableData) {
    const auto isReadable = [](const PropertyValue &stored) {
        return isReadableSetting(settingsKey::urlRules, stored);
    };
    EXPECT_TRUE(isReadable(rules));
    EXPECT_TRUE(isReadable({PropertyData{"[]"}}));
    for (const char *json : {"", "{}", "[", R"([{"id":"1"}])", "garbage"})
        EXPECT_FALSE(isReadable({PropertyData{json}})) << json;
    for (const PropertyValue &other : {text, number, array, date, PropertyValue{PropertyDictionary{}}})
        EXPECT_FALSE(isReadable(other));
}

TEST(ReadableSettingTest, ScalarsAreTextsNumbersOrBooleans) {
    for (const auto key :
         {settingsKey::routingFallbackBrowserID, settingsKey::restoresDefaultBrowserOnQuit}) {
        for (const PropertyValue &scalar : {text, number, PropertyValue{0.5}, PropertyValue{true}})
            EXPECT_TRUE(isReadableSetting(key, scalar)) << key;
        for (const PropertyValue &other : {array, date, rules, PropertyValue{PropertyDictionary{}}})
            EXPECT_FALSE(isReadableSetting(key, other)) << key;
    }
}

TEST(ReadableSettingTest, OtherKeysMayHaveAnyValue) {
    for (const PropertyValue &value : {text, number, array, date, rules})
        EXPECT_TRUE(isReadableSetting("other", value));
}

} // namespace
} // namespace fernhop
