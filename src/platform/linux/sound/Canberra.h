#pragma once

#include <canberra.h>

#include <optional>
#include <string>

namespace fernhop::freedesktop {

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

/// Keeps ALSA, if libcanberra has loaded it, from telling standard error what it cannot open.
void silenceAlsa();

} // namespace fernhop::freedesktop
