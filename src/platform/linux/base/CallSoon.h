#pragma once

#include <glib.h>

#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// Has the main loop run `call` once, after what it is doing now.
inline void callSoon(std::function<void()> call) {
    using Call = std::function<void()>;
    const auto run = [](gpointer data) -> gboolean {
        (*static_cast<Call *>(data))();
        return G_SOURCE_REMOVE;
    };
    const auto forget = [](gpointer data) { delete static_cast<Call *>(data); };
    g_idle_add_full(G_PRIORITY_DEFAULT, run, new Call(std::move(call)), forget);
}

} // namespace fernhop::freedesktop
