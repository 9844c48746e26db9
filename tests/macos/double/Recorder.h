#pragma once

namespace fernhop::macos_double {

/// What the double was asked to do, open to tests; everything begins anew with `reset`.
struct Recorder {
    int beeps = 0;
};

/// The one recorder of this process.
[[nodiscard]] Recorder &recorder();

} // namespace fernhop::macos_double
