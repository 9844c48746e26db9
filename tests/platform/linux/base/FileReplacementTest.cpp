#include "platform/linux/base/FileReplacement.h"

#include "platform/linux/settings/SettingsFolder.h"
#include "platform/linux/settings/SystemCalls.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace fernhop::freedesktop {
namespace {

class FileReplacementTest : public testing::Test {
  protected:
    FileReplacementTest() { settings.write(old); }

    SettingsFolder settings;
    const std::string old = xmlList("<dict><key>key</key><string>old</string></dict>");
};

/// A power cut leaves what was on the disk: the new name must not be there before the new bytes are.
TEST_F(FileReplacementTest, BytesReachTheDiskBeforeTheName) {
    const SystemCalls calls;
    settings.open().setObject(PropertyValue{"new"}, "key");
    auto next = calls.made.begin();
    for (const char *call :
         {"write org.fernhop.Fernhop.plist.new", "fsync org.fernhop.Fernhop.plist.new",
          "rename org.fernhop.Fernhop.plist.new org.fernhop.Fernhop.plist", "fsync fernhop"}) {
        next = std::find(next, calls.made.end(), call);
        ASSERT_NE(next, calls.made.end()) << call << " is missing, or too early";
    }
    EXPECT_EQ(std::count_if(calls.made.begin(), calls.made.end(),
                            [](const std::string &call) { return call.starts_with("write"); }),
              1)
        << "nothing is written behind the fsync";
}

TEST_F(FileReplacementTest, ANewFolderReachesTheDiskToo) {
    std::filesystem::remove_all(settings.folder().parent_path());
    const SystemCalls calls;
    settings.open().setObject(PropertyValue{"new"}, "key");
    for (const char *call : {"fsync home", "fsync .config", "fsync fernhop"})
        EXPECT_NE(std::find(calls.made.begin(), calls.made.end(), call), calls.made.end()) << call;
}

TEST_F(FileReplacementTest, AnyFailureLeavesTheOldFile) {
    for (const std::string failing : {"write", "fsync org", "rename"}) {
        for (const int error : {ENOSPC, EIO, EROFS}) {
            auto defaults = settings.open();
            SystemCalls calls;
            calls.failure = [&](const std::string &call) { return call.starts_with(failing) ? error : 0; };
            defaults.setObject(PropertyValue{"new"}, "key");
            EXPECT_EQ(defaults.lastWriteError().value(), error) << failing;
            calls.failure = nullptr;
            EXPECT_EQ(settings.contents(), old) << failing;
            EXPECT_EQ(defaults.stringForKey("key"), "old") << failing;
            EXPECT_EQ(settings.neighbours(), std::set<std::string>{}) << failing;
        }
    }
}

TEST_F(FileReplacementTest, ContinuesAfterAnInterruptedWrite) {
    auto defaults = settings.open();
    SystemCalls calls;
    int interruptions = 3;
    calls.failure = [&](const std::string &call) {
        return call.starts_with("write") && interruptions-- > 0 ? EINTR : 0;
    };
    defaults.setObject(PropertyValue{"new"}, "key");
    EXPECT_EQ(settings.open().stringForKey("key"), "new");
}

TEST_F(FileReplacementTest, AFullDiskLeavesTheOldFile) {
    const pid_t child = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{10'000, 10'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        auto defaults = settings.open();
        defaults.setObject(PropertyValue{PropertyData{std::string(100'000, 'x')}}, "urlRules");
        return defaults.lastWriteError() && defaults.stringForKey("key") == "old" ? 0 : 1;
    });
    EXPECT_EQ(waitFor(child), 0);
    EXPECT_EQ(settings.contents(), old);
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{});
}

TEST_F(FileReplacementTest, AProcessThatDiesAtAnyCallLeavesOldOrNew) {
    for (int last = 0;; ++last) {
        settings.write(old);
        const pid_t child = inChild([&] {
            auto defaults = settings.open();
            SystemCalls calls;
            int made = 0;
            calls.failure = [&](const std::string &) {
                if (made++ == last)
                    raise(SIGKILL);
                return 0;
            };
            defaults.setObject(PropertyValue{"new"}, "key");
            return 0;
        });
        const bool wasKilled = waitFor(child) == -SIGKILL;
        const auto value = settings.open().stringForKey("key");
        EXPECT_TRUE(value == "old" || value == "new") << "killed before call " << last;
        settings.open().setObject(PropertyValue{"newer"}, "key");
        EXPECT_EQ(settings.open().stringForKey("key"), "newer") << "the dead process holds nothing";
        EXPECT_EQ(settings.neighbours(), std::set<std::string>{});
        if (!wasKilled) {
            EXPECT_GE(last, 5) << "it dies before each step at least once";
            break;
        }
    }
}

} // namespace
} // namespace fernhop::freedesktop
