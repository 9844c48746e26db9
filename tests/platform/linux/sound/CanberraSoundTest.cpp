#include "platform/linux/sound/CanberraSound.h"

#include "FakeCanberra.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace fernhop::freedesktop {
namespace {

using Events = std::vector<std::string>;

bool isLoaded(const std::string &library) {
    std::ifstream maps("/proc/self/maps");
    const std::string text(std::istreambuf_iterator<char>(maps), {});
    return text.find(library) != std::string::npos;
}

std::ptrdiff_t threadCount() {
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

/// Waits until `condition` holds; whether it came to hold within a time that is long enough for anything.
template <typename Condition>
bool comesTrue(Condition condition) {
    for (int time = 0; time < 20'000 && !condition(); ++time)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return condition();
}

class CanberraSoundTest : public testing::Test {
  protected:
    CanberraSoundTest() {
        void *const library = dlopen(FERNHOP_FAKE_CANBERRA, RTLD_LAZY | RTLD_LOCAL);
        const auto access = reinterpret_cast<FakeCanberra *(*)()>(dlsym(library, "fakeCanberra"));
        fake = access();
        fake->takeEvents();
        fake->missing.clear();
        fake->failing.clear();
    }

    bool isQuiet() const { return fake->contexts == 0 && threadCount() == threadsBefore; }

    FakeCanberra *fake = nullptr;
    const std::ptrdiff_t threadsBefore = threadCount();
};

TEST_F(CanberraSoundTest, PlaysTheBell) {
    CanberraSound sound(FERNHOP_FAKE_CANBERRA);
    EXPECT_TRUE(fake->takeEvents().empty());
    sound.beep();
    ASSERT_TRUE(comesTrue([&] { return isQuiet(); }));
    EXPECT_EQ(fake->takeEvents(), Events{"bell"});
    sound.beep();
    ASSERT_TRUE(comesTrue([&] { return isQuiet(); })) << "no thread waits for the next sound";
    EXPECT_EQ(fake->takeEvents(), Events{"bell"});
}

TEST_F(CanberraSoundTest, PlaysTheWarningWhereThereIsNoBell) {
    CanberraSound sound(FERNHOP_FAKE_CANBERRA);
    fake->missing = "bell";
    sound.beep();
    ASSERT_TRUE(comesTrue([&] { return isQuiet(); }));
    EXPECT_EQ(fake->takeEvents(), (Events{"bell", "dialog-warning"}));
    fake->missing.clear();
    fake->failing = "bell";
    sound.beep();
    ASSERT_TRUE(comesTrue([&] { return isQuiet(); }));
    EXPECT_EQ(fake->takeEvents(), (Events{"bell", "dialog-warning"}));
}

TEST_F(CanberraSoundTest, StaysQuietWhereNothingCanBePlayed) {
    fake->missing = "bell";
    fake->failing = "dialog-warning";
    CanberraSound sound(FERNHOP_FAKE_CANBERRA);
    sound.beep();
    EXPECT_TRUE(comesTrue([&] { return isQuiet(); }));
}

TEST_F(CanberraSoundTest, StaysQuietWithoutTheLibrary) {
    for (const char *library : {"libcanberra-that-is-not-there.so", "libc.so.6"}) {
        CanberraSound sound(library);
        sound.beep();
        EXPECT_TRUE(comesTrue([&] { return isQuiet(); }));
    }
}

TEST_F(CanberraSoundTest, DoesNotWaitForASoundSystemThatDoesNotAnswer) {
    fake->isBlocked = true;
    {
        CanberraSound sound(FERNHOP_FAKE_CANBERRA);
        for (int time = 0; time < 100; ++time)
            sound.beep();
        EXPECT_EQ(threadCount(), threadsBefore + 1) << "and does not gather threads";
    }
    EXPECT_TRUE(fake->isBlocked) << "nor at the end";
    fake->isBlocked = false;
    EXPECT_TRUE(comesTrue([&] { return isQuiet(); }));
}

TEST_F(CanberraSoundTest, SoundsInARowAreOneWhileItPlays) {
    fake->isEndless = true;
    {
        CanberraSound sound(FERNHOP_FAKE_CANBERRA);
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&] {
                for (int time = 0; time < 100; ++time)
                    sound.beep();
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        ASSERT_TRUE(comesTrue([&] { return fake->contexts == 1; }));
    }
    EXPECT_EQ(fake->contexts, 0) << "the end stops the sound";
    EXPECT_TRUE(comesTrue([&] { return isQuiet(); }));
    EXPECT_EQ(fake->takeEvents(), Events{"bell"});
    fake->isEndless = false;
}

TEST(CanberraTest, IsLoadedWithTheFirstSoundAndQuietWithoutAServer) {
    setenv("PULSE_SERVER", "unix:/nonexistent", 1);
    const std::ptrdiff_t threadsBefore = threadCount();
    testing::internal::CaptureStderr();
    {
        CanberraSound sound;
        EXPECT_FALSE(isLoaded("libcanberra.so.0"));
        sound.beep();
        EXPECT_TRUE(comesTrue([&] { return threadCount() == threadsBefore; }));
        EXPECT_TRUE(isLoaded("libcanberra.so.0"));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace fernhop::freedesktop
