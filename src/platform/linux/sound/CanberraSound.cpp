#include "platform/linux/sound/CanberraSound.h"

#include "platform/linux/base/Processes.h"

#include <canberra.h>
#include <dlfcn.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace fernhop::freedesktop {

namespace {

/// The operations of libcanberra that are used, looked up in the library once it is wanted: with the sound
/// systems behind it, it is too large to be loaded by every process that might beep one day.
struct Canberra {
    decltype(&ca_context_create) createContext;
    decltype(&ca_context_destroy) destroyContext;
    decltype(&ca_context_open) openContext;
    decltype(&ca_context_play_full) play;
    decltype(&ca_proplist_create) createProperties;
    decltype(&ca_proplist_destroy) destroyProperties;
    decltype(&ca_proplist_sets) setProperty;

    /// Nothing when the library, or one of its operations, is not there. It is never unloaded.
    [[nodiscard]] static std::optional<Canberra> load(const std::string &library);
};

template <typename Function>
bool find(void *library, const char *name, Function &function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

void ignoreAlsaError(const char *, int, const char *, int, const char *, ...) {}

std::optional<Canberra> Canberra::load(const std::string &library) {
    void *const opened = dlopen(library.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    Canberra found{};
    const bool isComplete = opened && find(opened, "ca_context_create", found.createContext) &&
                            find(opened, "ca_context_destroy", found.destroyContext) &&
                            find(opened, "ca_context_open", found.openContext) &&
                            find(opened, "ca_context_play_full", found.play) &&
                            find(opened, "ca_proplist_create", found.createProperties) &&
                            find(opened, "ca_proplist_destroy", found.destroyProperties) &&
                            find(opened, "ca_proplist_sets", found.setProperty);
    return isComplete ? std::optional(found) : std::nullopt;
}

/// Keeps ALSA, if libcanberra has loaded it, from telling standard error what it cannot open.
void silenceAlsa() {
    void *const alsa = dlopen("libasound.so.2", RTLD_LAZY | RTLD_NOLOAD);
    using Handler = decltype(&ignoreAlsaError);
    int (*setHandler)(Handler) = nullptr;
    if (!alsa)
        return;
    if (find(alsa, "snd_lib_error_set_handler", setHandler))
        setHandler(&ignoreAlsaError);
    dlclose(alsa);
}

using namespace std::chrono_literals;

/// Sounds of themes are short; one that does not end has got stuck.
constexpr auto longestSound = 10s;

/// What the destructor allows a sound system to let go.
constexpr auto longestStop = 1s;

/// A connection to the sound system.
class Player {
  public:
    explicit Player(const Canberra &library) : canberra(library) {
        if (canberra.createContext(&context) != CA_SUCCESS)
            context = nullptr;
        else if (canberra.openContext(context) != CA_SUCCESS)
            close();
        silenceAlsa();
    }
    ~Player() { close(); }
    Player(const Player &) = delete;
    Player &operator=(const Player &) = delete;

    [[nodiscard]] explicit operator bool() const { return context != nullptr; }

    /// Starts the sound of an event; whether that is under way, so that `onFinished` will be called with
    /// `data`.
    bool start(const char *event, ca_finish_callback_t onFinished, void *data) {
        ca_proplist *properties = nullptr;
        if (canberra.createProperties(&properties) != CA_SUCCESS)
            return false;
        canberra.setProperty(properties, CA_PROP_EVENT_ID, event);
        canberra.setProperty(properties, CA_PROP_APPLICATION_ID, "org.fernhop.Fernhop");
        canberra.setProperty(properties, CA_PROP_APPLICATION_NAME, "Fernhop");
        const int result = canberra.play(context, 0, properties, onFinished, data);
        canberra.destroyProperties(properties);
        return result == CA_SUCCESS;
    }

    /// Ends what is playing; `onFinished` is not called afterwards.
    void close() {
        if (context)
            canberra.destroyContext(std::exchange(context, nullptr));
    }

  private:
    const Canberra &canberra;
    ca_context *context = nullptr;
};

} // namespace

/// What the thread of a sound shares with the object, which it may outlive.
struct CanberraSound::Playing {
    std::string library;
    std::mutex mutex;
    std::condition_variable changed;
    bool isPlaying = false;
    bool isStopping = false;
    std::optional<int> result; ///< of the sound that was started last, once it has ended

    /// The work of the thread.
    void run() {
        if (const auto canberra = Canberra::load(library)) {
            for (const char *event : {"bell", "dialog-warning"}) {
                if (play(*canberra, event))
                    break;
            }
        }
        const std::lock_guard lock(mutex);
        isPlaying = false;
        changed.notify_all();
    }

    /// Plays the sound of an event to its end; whether there is nothing more to do.
    bool play(const Canberra &canberra, const char *event) {
        result.reset();
        Player player(canberra);
        if (!player || !player.start(event, &onFinished, this))
            return false;
        std::unique_lock lock(mutex);
        changed.wait_for(lock, longestSound, [this] { return result || isStopping; });
        return result == CA_SUCCESS || isStopping;
    }

    static void onFinished(ca_context *, std::uint32_t, int error, void *playing) {
        auto &self = *static_cast<Playing *>(playing);
        const std::lock_guard lock(self.mutex);
        self.result = error;
        self.changed.notify_all();
    }
};

CanberraSound::CanberraSound(std::string library) : playing(std::make_shared<Playing>()) {
    playing->library = std::move(library);
}

CanberraSound::~CanberraSound() {
    std::unique_lock lock(playing->mutex);
    playing->isStopping = true;
    playing->changed.notify_all();
    playing->changed.wait_for(lock, longestStop, [this] { return !playing->isPlaying; });
}

void CanberraSound::beep() {
    const std::lock_guard lock(playing->mutex);
    if (playing->isPlaying)
        return;
    // Signals are for a thread that knows what to do with them.
    const SignalBlock block;
    try {
        std::thread([shared = playing] { shared->run(); }).detach();
        playing->isPlaying = true;
    } catch (const std::system_error &) {
        // No thread, no sound.
    }
}

} // namespace fernhop::freedesktop
