#pragma once

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// The toolkit's platform plugin that can show windows now; nothing where there is no screen. The toolkit
/// itself ends the process when it finds none, so it is asked only for one that was tried.
[[nodiscard]] std::optional<std::string> usablePlatformPlugin();

} // namespace fernhop::freedesktop
