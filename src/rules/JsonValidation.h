#pragma once

#include <simdjson.h>

namespace fernhop {

/// Whether a JSON value that nobody reads is well formed, down to its last part. It is consumed by the call.
/// simdjson passes over such values unread, so that without this, text that is no JSON would be taken for
/// rules. A number may have any size. Values nested deeper than 512 levels are refused, as the platform's own
/// JSON readers do.
[[nodiscard]] bool isWellFormed(simdjson::ondemand::value value);

} // namespace fernhop
