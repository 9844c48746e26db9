#pragma once

#include "platform/Url.h"

#include <optional>
#include <string>

namespace fernhop::cli {

/// The URL that a text on the command line is delivered as, the same as from any other sender; nothing when
/// it is refused or no URL.
[[nodiscard]] std::optional<Url> linkArgument(const std::string &text);

/// The sentence that says why `linkArgument` returned nothing for this text.
[[nodiscard]] std::string whyNoLink(const std::string &text);

} // namespace fernhop::cli
