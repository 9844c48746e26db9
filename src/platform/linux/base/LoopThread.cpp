#include "platform/linux/base/LoopThread.h"

#include "platform/linux/base/CallSoon.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/Processes.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <utility>

namespace fernhop::freedesktop {
namespace {

/// A display server answers in less than a millisecond, and on a busy machine in some dozens. Someone who
/// clicked a link does not notice half a second, once.
constexpr std::chrono::milliseconds longestWait{500};

} // namespace

/// What the thread may need for longer than its owner lives.
struct LoopThread::Shared {
    using Context = std::unique_ptr<GMainContext, GDelete<g_main_context_unref>>;

    void run() const {
        g_main_context_push_thread_default(context.get());
        g_main_loop_run(loop.get());
        g_main_context_pop_thread_default(context.get());
    }

    const Context context{g_main_context_new()};
    const GMainLoopPointer loop{g_main_loop_new(context.get(), FALSE)};
    std::mutex mutex;
    std::condition_variable changed;
    unsigned done = 0; ///< of the works that are waited for
};

LoopThread::LoopThread() : shared(std::make_shared<Shared>()) {
    // Signals are for a thread that knows what to do with them.
    const SignalBlock block;
    try {
        thread = std::thread([shared = shared] { shared->run(); });
    } catch (const std::system_error &) {
        // What would have been asked there has no answer then.
    }
}

LoopThread::~LoopThread() {
    if (!thread.joinable())
        return;
    const auto end = [shared = shared] { g_main_loop_quit(shared->loop.get()); };
    if (perform(end)) {
        thread.join();
    } else {
        post(end);
        thread.detach();
    }
}

void LoopThread::post(std::function<void()> work) {
    if (thread.joinable())
        callSoon(std::move(work), shared->context.get());
}

bool LoopThread::perform(std::function<void()> work) {
    if (!thread.joinable() || hangs())
        return false;
    const unsigned number = ++performed;
    post([shared = shared, work = std::move(work), number] {
        work();
        const std::lock_guard lock(shared->mutex);
        shared->done = number;
        shared->changed.notify_all();
    });
    std::unique_lock lock(shared->mutex);
    return shared->changed.wait_for(lock, longestWait, [&] { return shared->done == number; });
}

bool LoopThread::hangs() const {
    const std::lock_guard lock(shared->mutex);
    return shared->done != performed;
}

} // namespace fernhop::freedesktop
