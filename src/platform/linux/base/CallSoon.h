#pragma once

#include <glib.h>

#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// Has the loop of a context run `call` once, after what it is doing now; null: the main loop. From any
/// thread.
inline void callSoon(std::function<void()> call, GMainContext *context = nullptr) {
    using Call = std::function<void()>;
    const auto run = [](gpointer data) -> gboolean {
        (*static_cast<Call *>(data))();
        return G_SOURCE_REMOVE;
    };
    const auto forget = [](gpointer data) { delete static_cast<Call *>(data); };
    GSource *const source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(source, run, new Call(std::move(call)), forget);
    g_source_attach(source, context);
    g_source_unref(source);
}

} // namespace fernhop::freedesktop
