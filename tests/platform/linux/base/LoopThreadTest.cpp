#include "platform/linux/base/LoopThread.h"

#include "platform/linux/base/CallSoon.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace fernhop::freedesktop {
namespace {

/// Work that hangs until it is let go.
class Hanging {
  public:
    [[nodiscard]] std::function<void()> work() const {
        return [future = promise->get_future().share(), held = promise] { future.wait(); };
    }
    void letGo() const { promise->set_value(); }

  private:
    std::shared_ptr<std::promise<void>> promise = std::make_shared<std::promise<void>>();
};

TEST(LoopThread, DoesWorkInOrderOnAThreadOfItsOwn) {
    LoopThread thread;
    std::thread::id id;
    std::string order;
    thread.post([&] { order += '1'; });
    thread.post([&] { order += '2'; });
    EXPECT_TRUE(thread.perform([&] {
        order += '3';
        id = std::this_thread::get_id();
    }));
    EXPECT_EQ(order, "123");
    EXPECT_NE(id, std::this_thread::get_id());
    EXPECT_FALSE(thread.hangs());
}

TEST(LoopThread, ItsLoopIsTheThreadsDefault) {
    LoopThread thread;
    const auto called = std::make_shared<std::promise<void>>();
    thread.post(
        [called] { callSoon([called] { called->set_value(); }, g_main_context_get_thread_default()); });
    EXPECT_EQ(called->get_future().wait_for(support::patience), std::future_status::ready);
}

TEST(LoopThread, IsWaitedForOnceWhenItHangs) {
    LoopThread thread;
    const Hanging hanging;
    EXPECT_FALSE(thread.perform(hanging.work()));
    EXPECT_TRUE(thread.hangs());
    bool isDone = false;
    EXPECT_FALSE(thread.perform([&] { isDone = true; }));
    thread.post([&] { isDone = true; });
    hanging.letGo();
    EXPECT_TRUE(support::waitUntil([&] { return !thread.hangs(); }));
    EXPECT_TRUE(thread.perform([] {}));
    EXPECT_TRUE(isDone) << "what was posted is done later";
}

TEST(LoopThread, IsLeftAloneWhenItHangsAtTheEnd) {
    const Hanging hanging;
    const auto held = std::make_shared<int>();
    {
        LoopThread thread;
        EXPECT_FALSE(thread.perform(hanging.work()));
        thread.post([held] {});
    }
    EXPECT_EQ(held.use_count(), 2);
    hanging.letGo();
    EXPECT_TRUE(support::waitUntil([&] { return held.use_count() == 1; })) << "then it ends";
}

} // namespace
} // namespace fernhop::freedesktop
