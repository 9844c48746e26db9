#pragma once

#include "platform/PropertyValue.h"

#include <string_view>

namespace fernhop {

/// Whether `stored` is of the form that Fernhop reads under `key`. Under one of its own keys anything else
/// reads as absent, and is worth keeping before it is overwritten; under other keys nothing is unreadable.
[[nodiscard]] bool isReadableSetting(std::string_view key, const PropertyValue &stored);

} // namespace fernhop
