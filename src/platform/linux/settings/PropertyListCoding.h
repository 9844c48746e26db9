#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop::freedesktop {

struct PropertyListFree {
    void operator()(void *node) const;
};

/// A node of libplist (`plist_t`) with all below it. Trees are kept as libplist has them, not as
/// `PropertyValue`, because a settings file may hold types that the latter does not know and must not lose.
using PropertyListNode = std::unique_ptr<void, PropertyListFree>;

/// What a property list may measure to be read or written at all. Far above any real settings, and low enough
/// that no file can exhaust the memory or the stack.
namespace propertyListLimit {
inline constexpr std::size_t bytes = std::size_t{64} << 20U;
inline constexpr std::size_t depth = 64;
inline constexpr std::size_t elements = 250'000;
} // namespace propertyListLimit

/// The tree in the bytes of an XML or binary property list; null when they are none. The bytes may come from
/// anywhere.
[[nodiscard]] PropertyListNode decodePropertyList(std::string_view bytes);

/// A tree as XML, or as a binary property list where XML could not carry every value unchanged (a fraction of
/// a second, say). Nothing when it goes beyond the limits.
[[nodiscard]] std::optional<std::string> encodePropertyList(const PropertyListNode &tree);

} // namespace fernhop::freedesktop
