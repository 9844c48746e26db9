#include "SettingsFolder.h"
#include "SystemCalls.h"
#include "platform/linux/settings/PropertyListDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

namespace fernhop::freedesktop {
namespace {

namespace fs = std::filesystem;

/// What becomes of a file that cannot be read as settings.
class UnreadablePropertyList : public testing::Test {
  protected:
    SettingsFolder settings;
};

TEST_F(UnreadablePropertyList, KeepsAFileThatIsNoPropertyList) {
    settings.write("garbage");
    auto defaults = settings.open();
    EXPECT_FALSE(defaults.boolForKey("key"));
    defaults.setBool(true, "key");
    EXPECT_TRUE(settings.open().boolForKey("key"));
    EXPECT_EQ(SettingsFolder::read(settings.kept()), "garbage");
    settings.write("more garbage");
    settings.open().setBool(false, "key");
    EXPECT_EQ(SettingsFolder::read(settings.kept(1)), "garbage");
    EXPECT_EQ(SettingsFolder::read(settings.kept(2)), "more garbage");
    EXPECT_EQ(settings.neighbours().size(), 2U);
}

TEST_F(UnreadablePropertyList, KeepsAListThatIsNoDictionary) {
    const std::string list = xmlList("<array><string>firefox</string></array>");
    settings.write(list);
    settings.open().setBool(true, "key");
    EXPECT_EQ(SettingsFolder::read(settings.kept()), list);
}

TEST_F(UnreadablePropertyList, AnEmptyFileIsEmptySettings) {
    settings.write("");
    settings.open().setBool(true, "key");
    EXPECT_TRUE(settings.open().boolForKey("key"));
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{});
}

TEST_F(UnreadablePropertyList, KeepsTheFileWhoseValueTheApplicationCannotRead) {
    const std::string undecodable = xmlList("<dict><key>urlRules</key><data>e30=</data></dict>");
    settings.write(undecodable);
    PropertyListDefaults defaults(settings.path(), [](std::string_view key, const PropertyValue &stored) {
        const auto *data = stored.as<PropertyData>();
        return key != "urlRules" || (data && data->bytes == "[]");
    });
    defaults.setBool(true, "restoresDefaultBrowserOnQuit");
    EXPECT_FALSE(fs::exists(settings.kept())) << "nothing unreadable was overwritten";
    const std::string before = settings.contents();
    defaults.setObject(PropertyValue{PropertyData{"[]"}}, "urlRules");
    EXPECT_EQ(SettingsFolder::read(settings.kept()), before);
    EXPECT_EQ(defaults.dataForKey("urlRules"), "[]");
    defaults.setObject(PropertyValue{PropertyData{"[]"}}, "urlRules");
    EXPECT_EQ(settings.neighbours().size(), 1U) << "readable data is not kept";
}

TEST_F(UnreadablePropertyList, NeverWaitsForAPipe) {
    fs::create_directories(settings.folder());
    ASSERT_EQ(mkfifo(settings.path().c_str(), 0600), 0);
    auto defaults = settings.open();
    EXPECT_FALSE(defaults.boolForKey("key"));
    defaults.setBool(true, "key");
    EXPECT_TRUE(settings.open().boolForKey("key"));
    EXPECT_TRUE(fs::is_fifo(settings.kept()));
}

TEST_F(UnreadablePropertyList, MovesAFolderAside) {
    fs::create_directories(settings.path());
    std::ofstream(settings.path() / "mine") << "text";
    auto defaults = settings.open();
    EXPECT_FALSE(defaults.boolForKey("key"));
    defaults.setBool(true, "key");
    EXPECT_TRUE(settings.open().boolForKey("key"));
    EXPECT_EQ(SettingsFolder::read(settings.kept() / "mine"), "text");
}

TEST_F(UnreadablePropertyList, AHugeFileIsKeptAsIs) {
    settings.write(simpleList);
    fs::resize_file(settings.path(), std::uintmax_t{1} << 40U);
    auto defaults = settings.open();
    EXPECT_FALSE(defaults.stringForKey("routingFallbackBrowserID"));
    defaults.setBool(true, "key");
    EXPECT_TRUE(settings.open().boolForKey("key"));
    EXPECT_EQ(fs::file_size(settings.kept()), std::uintmax_t{1} << 40U);
}

TEST_F(UnreadablePropertyList, ReplacesWhatAKilledWriterLeft) {
    settings.write(simpleList);
    std::ofstream(settings.path().string() + ".new") << "half a fi";
    settings.open().setBool(true, "key");
    EXPECT_EQ(settings.open().stringForKey("routingFallbackBrowserID"), "firefox");
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{});
}

TEST_F(UnreadablePropertyList, AReadOnlyFolderDropsTheWrite) {
    settings.write(simpleList);
    chmod(settings.path().c_str(), 0644);
    settings.letOthersIn();
    chmod(settings.folder().c_str(), 0555);
    const pid_t child = inChild([&] {
        if (geteuid() == 0 && setuid(65534) != 0)
            return 1;
        auto defaults = settings.open();
        if (defaults.stringForKey("routingFallbackBrowserID") != "firefox")
            return 2;
        const bool isStored = defaults.setObject(PropertyValue{"dillo"}, "routingFallbackBrowserID");
        return !isStored && defaults.stringForKey("routingFallbackBrowserID") == "firefox" ? 0 : 3;
    });
    EXPECT_EQ(waitFor(child), 0);
    chmod(settings.folder().c_str(), 0755);
    EXPECT_EQ(settings.contents(), simpleList);
}

TEST_F(UnreadablePropertyList, AFileThatMayNotBeReadIsKept) {
    settings.write(simpleList);
    chmod(settings.path().c_str(), 0);
    settings.letOthersIn();
    chmod(settings.folder().c_str(), 0777);
    const pid_t child = inChild([&] {
        if (geteuid() == 0 && setuid(65534) != 0)
            return 1;
        auto defaults = settings.open();
        if (defaults.stringForKey("routingFallbackBrowserID"))
            return 2;
        defaults.setBool(true, "key");
        return defaults.boolForKey("key") ? 0 : 3;
    });
    EXPECT_EQ(waitFor(child), 0);
    chmod(settings.kept().c_str(), 0600);
    EXPECT_EQ(SettingsFolder::read(settings.kept()), simpleList);
}

TEST_F(UnreadablePropertyList, RecoversFromAFileThatItMayOnlyWrite) {
    settings.write(simpleList);
    chmod(settings.path().c_str(), 0200);
    settings.letOthersIn();
    chmod(settings.folder().c_str(), 0777);
    const pid_t child = inChild([&] {
        if (geteuid() == 0 && (chown(settings.path().c_str(), 65534, getegid()) != 0 || setuid(65534) != 0))
            return 1;
        auto defaults = settings.open();
        for (int write = 0; write < 3; ++write)
            defaults.setBool(true, "key" + std::to_string(write));
        return defaults.boolForKey("key0") && defaults.boolForKey("key2") ? 0 : 2;
    });
    EXPECT_EQ(waitFor(child), 0);
    EXPECT_EQ(modeOf(settings.path()) & 0600U, 0600U);
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{settings.kept().filename().string()});
}

TEST_F(UnreadablePropertyList, LetsTheOwnerReadWhateverTheUmask) {
    const pid_t child = inChild([&] {
        umask(0777);
        return settings.open().setBool(true, "key") && settings.open().setBool(true, "other") ? 0 : 1;
    });
    EXPECT_EQ(waitFor(child), 0);
    EXPECT_EQ(modeOf(settings.path()), 0600U);
    EXPECT_EQ(modeOf(settings.folder()), 0700U);
}

TEST_F(UnreadablePropertyList, AWriteThatFailsAgainAndAgainKeepsOneCopy) {
    settings.write("garbage");
    // A folder at the name of the new file, which stands for a full disk.
    fs::create_directories(settings.path().string() + ".new");
    auto defaults = settings.open();
    for (int write = 0; write < 3; ++write)
        EXPECT_FALSE(defaults.setBool(true, "key"));
    EXPECT_EQ(settings.contents(), "garbage");
    EXPECT_EQ(settings.neighbours().size(), 2U) << "the folder and one copy";
}

} // namespace
} // namespace fernhop::freedesktop
