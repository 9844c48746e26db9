#pragma once

#include "platform/PropertyValue.h"

#include <string_view>

namespace fernhop {

/// Whether Fernhop can read the value `stored` under `key`. An unreadable value under one of its own keys
/// reads as absent and should be saved before it is overwritten; values under other keys are always readable.
[[nodiscard]] bool isReadableSetting(std::string_view key, const PropertyValue &stored);

} // namespace fernhop
