#pragma once

#include "platform/PropertyValue.h"
#include "platform/linux/settings/PropertyListCoding.h"

#include <optional>

namespace fernhop::freedesktop {

/// The value of a node (`plist_t`, not null); nothing when it, or anything in it, is of a type that
/// `PropertyValue` does not know.
[[nodiscard]] std::optional<PropertyValue> propertyValue(void *node);

/// A new tree with this value; null when a property list cannot hold it: text that is no UTF-8 or has a null
/// character, a date beyond 68 years from 2001, or more than the limits allow.
[[nodiscard]] PropertyListNode propertyListNode(const PropertyValue &value);

} // namespace fernhop::freedesktop
