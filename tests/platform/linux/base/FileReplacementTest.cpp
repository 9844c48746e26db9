#include "platform/linux/base/Files.h"
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
    FileReplacementTest() { folder.write("old"); }

    Result<> replace(std::string_view bytes) { return replaceFile(folder.path(), bytes, Writers::one); }

    SettingsFolder folder;
};

/// A power cut leaves what was on the disk: the new name must not be there before the new bytes are.
TEST_F(FileReplacementTest, BytesReachTheDiskBeforeTheName) {
    const SystemCalls calls;
    EXPECT_TRUE(replace("new"));
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

TEST_F(FileReplacementTest, NewFoldersReachTheDiskToo) {
    std::filesystem::remove_all(folder.folder().parent_path());
    const SystemCalls calls;
    EXPECT_TRUE(makeFolder(folder.folder()));
    EXPECT_TRUE(makeFolder(folder.folder())) << "it is there already";
    for (const char *call : {"fsync home", "fsync .config"})
        EXPECT_NE(std::find(calls.made.begin(), calls.made.end(), call), calls.made.end()) << call;
}

TEST_F(FileReplacementTest, AnyFailureLeavesTheOldFile) {
    for (const Writers writers : {Writers::one, Writers::many}) {
        for (const std::string failing : {"write", "fsync org", "rename"}) {
            for (const int error : {ENOSPC, EIO, EROFS}) {
                SystemCalls calls;
                calls.failure = [&](const std::string &call) {
                    return call.starts_with(failing) ? error : 0;
                };
                const auto replaced = replaceFile(folder.path(), "new", writers);
                ASSERT_FALSE(replaced) << failing;
                EXPECT_EQ(replaced.failure().errorNumber, error) << failing;
                EXPECT_FALSE(replaced.failure().reason.empty()) << failing;
                calls.failure = nullptr;
                EXPECT_EQ(folder.contents(), "old") << failing;
                EXPECT_EQ(folder.neighbours(), std::set<std::string>{}) << failing;
            }
        }
    }
}

TEST_F(FileReplacementTest, ContinuesAfterAnInterruptedWrite) {
    SystemCalls calls;
    int interruptions = 3;
    calls.failure = [&](const std::string &call) {
        return call.starts_with("write") && interruptions-- > 0 ? EINTR : 0;
    };
    EXPECT_TRUE(replace("new"));
    EXPECT_EQ(folder.contents(), "new");
}

TEST_F(FileReplacementTest, AFullDiskLeavesTheOldFile) {
    const pid_t child = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{10'000, 10'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        return replace(std::string(100'000, 'x')) ? 1 : 0;
    });
    EXPECT_EQ(waitFor(child), 0);
    EXPECT_EQ(folder.contents(), "old");
    EXPECT_EQ(folder.neighbours(), std::set<std::string>{});
}

TEST_F(FileReplacementTest, AProcessThatDiesAtAnyCallLeavesOldOrNew) {
    for (int last = 0;; ++last) {
        folder.write("old");
        const pid_t child = inChild([&] {
            SystemCalls calls;
            int made = 0;
            calls.failure = [&](const std::string &) {
                if (made++ == last)
                    raise(SIGKILL);
                return 0;
            };
            return replace("new") ? 0 : 1;
        });
        const bool wasKilled = waitFor(child) == -SIGKILL;
        EXPECT_TRUE(folder.contents() == "old" || folder.contents() == "new")
            << "killed before call " << last;
        EXPECT_TRUE(replace("newer"));
        EXPECT_EQ(folder.contents(), "newer") << "the dead process holds nothing";
        EXPECT_EQ(folder.neighbours(), std::set<std::string>{});
        if (!wasKilled) {
            EXPECT_GE(last, 4) << "it dies before each step at least once";
            break;
        }
    }
}

} // namespace
} // namespace fernhop::freedesktop
