#pragma once

#include <string>

namespace fernhop::support {

/// The top folder of the sources, without a slash at its end.
[[nodiscard]] std::string sourceFolder();

/// The top folder of the build that the test belongs to, without a slash at its end.
[[nodiscard]] std::string buildFolder();

} // namespace fernhop::support
