#pragma once

#include <gio/gio.h>

#include <memory>

namespace fernhop::freedesktop {

/// Gives a GLib value back with the function that belongs to its type.
template <auto Free>
struct GDelete {
    template <typename Type>
    void operator()(Type *value) const {
        Free(value);
    }
};

/// A reference to a GObject that is given up at the end of the scope.
template <typename Type>
using GObjectPointer = std::unique_ptr<Type, GDelete<g_object_unref>>;

using GVariantPointer = std::unique_ptr<GVariant, GDelete<g_variant_unref>>;
using GErrorPointer = std::unique_ptr<GError, GDelete<g_error_free>>;
using GCharPointer = std::unique_ptr<char, GDelete<g_free>>;
using GStringsPointer = std::unique_ptr<char *, GDelete<g_strfreev>>;
using GKeyFilePointer = std::unique_ptr<GKeyFile, GDelete<g_key_file_unref>>;
using GMainLoopPointer = std::unique_ptr<GMainLoop, GDelete<g_main_loop_unref>>;

} // namespace fernhop::freedesktop
