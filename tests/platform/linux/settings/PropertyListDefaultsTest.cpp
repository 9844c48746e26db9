#include "platform/linux/settings/PropertyListDefaults.h"

#include "SettingsFolder.h"
#include "SystemCalls.h"

#include <gtest/gtest.h>
#include <plist/plist.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace fernhop::freedesktop {
namespace {

namespace fs = std::filesystem;

/// Waits until a change of the file is sure to give it another identity.
void settle() {
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
}

class PropertyListDefaultsTest : public testing::Test {
  protected:
    SettingsFolder settings;
};

TEST_F(PropertyListDefaultsTest, ReadsNothingWhereNothingIs) {
    const auto defaults = settings.open();
    EXPECT_EQ(defaults.dictionaryForKey("appRules"), std::nullopt);
    EXPECT_EQ(defaults.dataForKey("urlRules"), std::nullopt);
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), std::nullopt);
    EXPECT_FALSE(defaults.boolForKey("restoresDefaultBrowserOnQuit"));
    EXPECT_FALSE(fs::exists(settings.folder()));
}

TEST_F(PropertyListDefaultsTest, WritesXmlThatPeopleCanRead) {
    auto defaults = settings.open();
    defaults.setObject(PropertyValue{PropertyDictionary{{"org.mail", PropertyValue{"firefox"}}}}, "appRules");
    defaults.setObject(PropertyValue{PropertyData{"[]"}}, "urlRules");
    EXPECT_TRUE(defaults.setBool(true, "restoresDefaultBrowserOnQuit"));
    const std::string text = settings.contents();
    EXPECT_TRUE(text.starts_with("<?xml"));
    EXPECT_NE(text.find("<key>org.mail</key>"), std::string::npos);
    EXPECT_NE(text.find("W10="), std::string::npos) << "the data in base 64";
    EXPECT_NE(text.find("<true/>"), std::string::npos);
}

TEST_F(PropertyListDefaultsTest, KeepsFileAndFolderToTheUser) {
    settings.open().setBool(true, "key");
    EXPECT_EQ(modeOf(settings.folder()), 0700U);
    EXPECT_EQ(modeOf(settings.path()), 0600U);
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{});
}

TEST_F(PropertyListDefaultsTest, LeavesThePermissionsOfAFileThatWasThere) {
    settings.write(simpleList);
    chmod(settings.path().c_str(), 0640);
    settings.open().setBool(true, "key");
    EXPECT_EQ(modeOf(settings.path()), 0640U);
}

TEST_F(PropertyListDefaultsTest, ReadsABinaryList) {
    const PropertyListNode root(plist_new_dict());
    plist_dict_set_item(root.get(), "routingFallbackBrowserID", plist_new_string("größe"));
    plist_dict_set_item(root.get(), "urlRules", plist_new_data("[]", 2));
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    settings.write(std::string(bytes, length));
    std::free(bytes);
    EXPECT_EQ(settings.open().stringForKey("routingFallbackBrowserID"), "größe");
    EXPECT_EQ(settings.open().dataForKey("urlRules"), "[]");
}

TEST_F(PropertyListDefaultsTest, KeepsKeysThatItDoesNotKnow) {
    settings.write(xmlList("<dict><key>other</key><dict><key>list</key><array><integer>-3</integer>"
                           "<date>2024-02-29T12:30:00Z</date><real>0.1</real><data>AAH/</data></array></dict>"
                           "<key>big</key><integer>18446744073709551615</integer></dict>"));
    settings.open().setBool(true, "restoresDefaultBrowserOnQuit");
    const std::string text = settings.contents();
    for (const char *value : {"<integer>-3</integer>", "<date>2024-02-29T12:30:00Z</date>", "AAH/",
                              "<real>0.10000000000000001</real>", "<integer>18446744073709551615</integer>"})
        EXPECT_NE(text.find(value), std::string::npos) << value << " in\n" << text;
}

TEST_F(PropertyListDefaultsTest, KeepsValuesThatXmlCannotHold) {
    const PropertyListNode root(plist_new_dict());
    plist_dict_set_item(root.get(), "uid", plist_new_uid(77));
    plist_dict_set_item(root.get(), "date", plist_new_date(1000, 250000));
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    settings.write(std::string(bytes, length));
    std::free(bytes);

    settings.open().setObject(PropertyValue{"firefox"}, "routingFallbackBrowserID");

    const auto tree = decodePropertyList(settings.contents());
    ASSERT_TRUE(tree);
    void *const uid = plist_dict_get_item(tree.get(), "uid");
    ASSERT_EQ(plist_get_node_type(uid), PLIST_UID);
    uint64_t number = 0;
    plist_get_uid_val(uid, &number);
    EXPECT_EQ(number, 77U);
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(plist_dict_get_item(tree.get(), "date"), &seconds, &microseconds);
    EXPECT_EQ(seconds, 1000);
    EXPECT_EQ(microseconds, 250000);
    EXPECT_EQ(settings.open().stringForKey("routingFallbackBrowserID"), "firefox");
}

TEST_F(PropertyListDefaultsTest, SeesAtOnceWhatAnotherProgramWrote) {
    const auto reader = settings.open();
    for (const char *browser : {"a", "b", "c", "a", "d"}) {
        settings.open().setObject(PropertyValue{browser}, "routingFallbackBrowserID");
        EXPECT_EQ(reader.stringForKey("routingFallbackBrowserID"), browser);
    }
}

TEST_F(PropertyListDefaultsTest, SeesAChangeInPlaceOfTheSameLength) {
    settings.write(simpleList);
    const auto reader = settings.open();
    for (const char *name : {"chromes", "falkons", "firefox", "dillos!"}) {
        std::string changed = simpleList;
        changed.replace(changed.find("firefox"), 7, name);
        settings.write(changed);
        EXPECT_EQ(reader.stringForKey("routingFallbackBrowserID"), name);
    }
}

TEST_F(PropertyListDefaultsTest, DoesNotReadAnUnchangedFileAgain) {
    settings.write(simpleList);
    settle();
    const auto defaults = settings.open();
    SystemCalls calls;
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), "firefox");
    EXPECT_FALSE(calls.made.empty());
    calls.made.clear();
    EXPECT_EQ(defaults.stringForKey("routingFallbackBrowserID"), "firefox");
    EXPECT_EQ(defaults.dataForKey("urlRules"), std::nullopt);
    EXPECT_EQ(calls.made, std::vector<std::string>{});
}

TEST_F(PropertyListDefaultsTest, DoesNotReadAnUnchangedUnreadableFileAgain) {
    settings.write("garbage");
    settle();
    const auto defaults = settings.open();
    EXPECT_EQ(defaults.stringForKey("key"), std::nullopt);
    const SystemCalls calls;
    EXPECT_EQ(defaults.stringForKey("key"), std::nullopt);
    EXPECT_EQ(calls.made, std::vector<std::string>{});
}

TEST_F(PropertyListDefaultsTest, ForgetsARemovedFile) {
    settings.write(simpleList);
    settle();
    const auto defaults = settings.open();
    EXPECT_TRUE(defaults.stringForKey("routingFallbackBrowserID"));
    fs::remove(settings.path());
    EXPECT_FALSE(defaults.stringForKey("routingFallbackBrowserID"));
}

TEST_F(PropertyListDefaultsTest, AnUpdateIsOneReplacement) {
    auto defaults = settings.open();
    const SystemCalls calls;
    defaults.update([&] {
        defaults.setObject(PropertyValue{"a"}, "first");
        defaults.update([&] { defaults.setObject(PropertyValue{"b"}, "second"); });
        EXPECT_EQ(defaults.stringForKey("first"), "a") << "an update reads what it wrote";
        defaults.setObject(std::nullopt, "first");
        EXPECT_FALSE(fs::exists(settings.path()));
    });
    EXPECT_EQ(std::count_if(calls.made.begin(), calls.made.end(),
                            [](const std::string &call) { return call.starts_with("rename"); }),
              1);
    EXPECT_EQ(settings.open().stringForKey("first"), std::nullopt);
    EXPECT_EQ(settings.open().stringForKey("second"), "b");
}

TEST_F(PropertyListDefaultsTest, AnUpdateThatWritesNothingLeavesTheFile) {
    settings.write("garbage");
    auto defaults = settings.open();
    defaults.update([&] { EXPECT_FALSE(defaults.stringForKey("key")); });
    EXPECT_EQ(settings.contents(), "garbage");
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{});
}

TEST_F(PropertyListDefaultsTest, DropsWhatAPropertyListCannotHold) {
    auto defaults = settings.open();
    defaults.setObject(PropertyValue{"good"}, "key");
    for (const PropertyValue &value :
         {PropertyValue{std::string("nul\0inside", 10)}, PropertyValue{"\xff"},
          PropertyValue{PropertyDate{1e300}},
          PropertyValue{PropertyDictionary{{"\xc3", PropertyValue{true}}}},
          PropertyValue{PropertyData{std::string((std::size_t{64} << 20U) + 1, 'x')}}}) {
        EXPECT_FALSE(defaults.setObject(value, "key"));
        EXPECT_EQ(defaults.stringForKey("key"), "good");
    }
    EXPECT_TRUE(defaults.setObject(PropertyValue{"better"}, "key"));
    EXPECT_EQ(settings.open().stringForKey("key"), "better");
}

TEST_F(PropertyListDefaultsTest, DropsWhatWouldNotBeReadAgain) {
    auto defaults = settings.open();
    defaults.setObject(PropertyValue{"good"}, "key");
    PropertyValue deep{PropertyArray{}};
    for (int level = 0; level < 1000; ++level)
        deep = PropertyValue{PropertyArray{deep}};
    EXPECT_FALSE(defaults.setObject(deep, "deep"));
    EXPECT_FALSE(defaults.setObject(PropertyValue{PropertyArray(300'000, PropertyValue{true})}, "large"));
    EXPECT_EQ(settings.open().stringForKey("key"), "good");
}

TEST_F(PropertyListDefaultsTest, WritesThroughASymbolicLink) {
    const fs::path real = settings.folder() / "elsewhere" / "real.plist";
    fs::create_directories(real.parent_path());
    fs::create_symlink("elsewhere/real.plist", settings.path());
    settings.open().setBool(true, "first");
    EXPECT_TRUE(fs::is_symlink(settings.path())) << "also when it led nowhere before";
    EXPECT_TRUE(fs::is_regular_file(real));
    settings.open().setBool(true, "second");
    EXPECT_TRUE(fs::is_symlink(settings.path()));
    EXPECT_TRUE(settings.open().boolForKey("first"));
    EXPECT_TRUE(PropertyListDefaults(real).boolForKey("second"));
}

TEST_F(PropertyListDefaultsTest, ACyclicSymbolicLinkIsLeftAlone) {
    fs::create_directories(settings.folder());
    fs::create_symlink(settings.path(), settings.path());
    auto defaults = settings.open();
    EXPECT_FALSE(defaults.stringForKey("key"));
    EXPECT_FALSE(defaults.setBool(true, "key"));
    EXPECT_TRUE(fs::is_symlink(settings.path()));
}

} // namespace
} // namespace fernhop::freedesktop
