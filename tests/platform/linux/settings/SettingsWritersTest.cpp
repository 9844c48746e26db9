#include "SettingsFolder.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <random>
#include <thread>

namespace fernhop::freedesktop {
namespace {

/// A number that processes share.
class SharedNumber {
  public:
    SharedNumber() {
        void *memory = mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        number = new (memory) std::atomic<int>(0);
    }
    ~SharedNumber() { munmap(number, sizeof *number); }
    std::atomic<int> &operator*() { return *number; }

  private:
    std::atomic<int> *number;
};

/// Data that shows whether it is whole, and which of the writes it came from.
std::string dataOf(int number) {
    const std::string piece = std::to_string(number) + ";";
    std::string data;
    while (data.size() < 100'000)
        data += piece;
    return data;
}

TEST(SettingsWritersTest, AKilledWriterLeavesTheOldOrTheNewFile) {
    const SettingsFolder settings;
    // The moment of each kill falls anywhere into the first writes, however fast this machine writes.
    const auto start = std::chrono::steady_clock::now();
    settings.open().setObject(PropertyValue{PropertyData{dataOf(0)}}, "urlRules");
    const std::chrono::duration<double> oneWrite = std::chrono::steady_clock::now() - start;
    std::mt19937 random(20240229);
    std::uniform_real_distribution<double> moment(0, 2.5);
    SharedNumber written;
    for (int round = 0; round < 250; ++round) {
        const pid_t child = inChild([&] {
            auto defaults = settings.open();
            for (int number = *written + 1;; ++number) {
                defaults.setObject(PropertyValue{PropertyData{dataOf(number)}}, "urlRules");
                *written = number;
            }
            return 0;
        });
        std::this_thread::sleep_for(oneWrite * moment(random));
        kill(child, SIGKILL);
        ASSERT_EQ(waitFor(child), -SIGKILL);
        const int last = *written;
        const auto data = settings.open().dataForKey("urlRules");
        ASSERT_TRUE(data) << "round " << round;
        ASSERT_TRUE(*data == dataOf(last) || *data == dataOf(last + 1)) << "round " << round;
        *written = std::stoi(*data);
    }
    EXPECT_GT(*written, 0);
    settings.open().setBool(true, "key");
    EXPECT_EQ(settings.neighbours(), std::set<std::string>{}) << "nothing of the killed ones remains";
}

int countUp(const SettingsFolder &settings, const std::string &ownKey, int times) {
    auto defaults = settings.open();
    for (int count = 0; count < times; ++count) {
        const bool isStored = defaults.update([&] {
            const int common = std::stoi(defaults.stringForKey("common").value_or("0"));
            defaults.setObject(PropertyValue{std::int64_t{common + 1}}, "common");
            defaults.setObject(PropertyValue{std::int64_t{count + 1}}, ownKey);
        });
        if (!isStored)
            return 1;
    }
    return 0;
}

TEST(SettingsWritersTest, TwoWritersLoseNothing) {
    const SettingsFolder settings;
    const pid_t first = inChild([&] { return countUp(settings, "first", 500); });
    const pid_t second = inChild([&] { return countUp(settings, "second", 500); });
    EXPECT_EQ(waitFor(first), 0);
    EXPECT_EQ(waitFor(second), 0);
    EXPECT_EQ(settings.open().stringForKey("common"), "1000");
    EXPECT_EQ(settings.open().stringForKey("first"), "500");
    EXPECT_EQ(settings.open().stringForKey("second"), "500");
}

TEST(SettingsWritersTest, AWriterThatIsStuckDoesNotHoldTheOthersForGood) {
    const SettingsFolder settings;
    settings.open().setBool(true, "key");
    const auto stuck = FileLock::acquire(settings.path().string() + ".lock", std::chrono::milliseconds(0));
    ASSERT_TRUE(stuck);
    PropertyListDefaults defaults(settings.path(), {}, std::chrono::milliseconds(50));
    bool ran = false;
    EXPECT_FALSE(defaults.update([&] {
        ran = true;
        EXPECT_TRUE(defaults.boolForKey("key"));
        EXPECT_FALSE(defaults.setBool(false, "key"));
    }));
    EXPECT_TRUE(ran);
    EXPECT_TRUE(defaults.boolForKey("key"));
}

TEST(SettingsWritersTest, ARemovedLockFileStillKeepsWritersApart) {
    const SettingsFolder settings;
    settings.open().setBool(true, "key");
    const std::filesystem::path lockFile = settings.path().string() + ".lock";
    auto held = FileLock::acquire(lockFile, std::chrono::milliseconds(0));
    ASSERT_TRUE(held);
    std::optional<FileLock> waited;
    std::thread waiter([&] { waited = FileLock::acquire(lockFile, std::chrono::seconds(20)); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::filesystem::remove(lockFile);
    held.reset();
    waiter.join();
    EXPECT_TRUE(waited);
    EXPECT_FALSE(FileLock::acquire(lockFile, std::chrono::milliseconds(0)))
        << "the waiter holds the file that is there now, not the removed one";
}

} // namespace
} // namespace fernhop::freedesktop
