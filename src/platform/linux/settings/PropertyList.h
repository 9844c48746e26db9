#pragma once

#include "platform/PropertyValue.h"

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

/// The value of a node (`plist_t`, not null); nothing when it, or anything in it, is of a type that
/// `PropertyValue` does not know.
[[nodiscard]] std::optional<PropertyValue> propertyValue(void *node);

/// A new tree with this value; null when a property list cannot hold it: text that is no UTF-8 or has a null
/// character, a date beyond 68 years from 2001, or more than the limits allow.
[[nodiscard]] PropertyListNode propertyListNode(const PropertyValue &value);

} // namespace fernhop::freedesktop
