#include "platform/linux/sound/Canberra.h"

#include <dlfcn.h>

namespace fernhop::freedesktop {

namespace {

template <typename Function>
bool find(void *library, const char *name, Function &function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

void ignoreAlsaError(const char *, int, const char *, int, const char *, ...) {}

} // namespace

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

} // namespace fernhop::freedesktop
