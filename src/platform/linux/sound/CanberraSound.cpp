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

/// What has been found in a library, of whatever type is wanted; null when it is not there.
struct Symbol {
    void *address;

    template <typename Type>
    operator Type *() const {
        return reinterpret_cast<Type *>(address);
    }
};

/// The operations of libcanberra that are used, looked up in the library once it is wanted: with the sound
/// systems behind it, it is too large to be loaded by every process that might beep one day. All null when
/// the library is not there. It is never unloaded.
struct Canberra {
    explicit Canberra(const std::string &library)
        : opened(dlopen(library.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE)) {}

    [[nodiscard]] Symbol find(const char *name) const { return {opened ? dlsym(opened, name) : nullptr}; }

    void *opened;
    decltype(&ca_context_create) createContext = find("ca_context_create");
    decltype(&ca_context_destroy) destroyContext = find("ca_context_destroy");
    decltype(&ca_context_open) openContext = find("ca_context_open");
    decltype(&ca_context_play_full) play = find("ca_context_play_full");
    decltype(&ca_proplist_create) createProperties = find("ca_proplist_create");
    decltype(&ca_proplist_destroy) destroyProperties = find("ca_proplist_destroy");
    decltype(&ca_proplist_sets) setProperty = find("ca_proplist_sets");
};

void ignoreAlsaError(const char *, int, const char *, int, const char *, ...) {}

/// Keeps ALSA, if libcanberra has loaded it, from telling standard error what it cannot open.
void silenceAlsa() {
    void *const alsa = dlopen("libasound.so.2", RTLD_LAZY | RTLD_NOLOAD);
    if (!alsa)
        return;
    int (*const setHandler)(decltype(&ignoreAlsaError)) = Symbol{dlsym(alsa, "snd_lib_error_set_handler")};
    if (setHandler)
        setHandler(&ignoreAlsaError);
    dlclose(alsa);
}

using namespace std::chrono_literals;

/// Sounds of themes are short; one that does not end has got stuck.
constexpr auto longestSound = 10s;

/// What the destructor allows a sound system to let go.
constexpr auto longestStop = 1s;

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
        const Canberra canberra(library);
        for (const char *event : {"bell", "dialog-warning"}) {
            if (!canberra.createContext || play(canberra, event))
                break;
        }
        const std::lock_guard lock(mutex);
        isPlaying = false;
        changed.notify_all();
    }

    /// Plays the sound of an event to its end; whether there is nothing more to do.
    bool play(const Canberra &canberra, const char *event) {
        result.reset();
        ca_context *created = nullptr;
        if (canberra.createContext(&created) != CA_SUCCESS)
            return false;
        // Its end stops the sound; `onFinished` is not called afterwards.
        const std::unique_ptr<ca_context, decltype(canberra.destroyContext)> context(created,
                                                                                     canberra.destroyContext);
        ca_proplist *list = nullptr;
        if (canberra.openContext(created) != CA_SUCCESS || canberra.createProperties(&list) != CA_SUCCESS)
            return false;
        silenceAlsa();
        canberra.setProperty(list, CA_PROP_EVENT_ID, event);
        canberra.setProperty(list, CA_PROP_APPLICATION_ID, "org.fernhop.Fernhop");
        canberra.setProperty(list, CA_PROP_APPLICATION_NAME, "Fernhop");
        const int started = canberra.play(created, 0, list, &onFinished, this);
        canberra.destroyProperties(list);
        if (started != CA_SUCCESS)
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
