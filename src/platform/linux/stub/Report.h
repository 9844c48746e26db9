#pragma once

#include <string>
#include <vector>

namespace fernhop::stub {

/// Says sentences on standard error and in the system's log, a line for each; a long one is shortened.
/// Neither is waited for long when nobody takes the lines.
void report(const std::vector<std::string> &sentences);

} // namespace fernhop::stub
