#pragma once

#include "macos/double/Services.h"

namespace fernhop::macos_double {

/// Records the calls of the double; `reset` clears it.
struct Recorder {
    int beeps = 0;
    int activations = 0; ///< of the application
    int iconsAsked = 0;  ///< of the workspace
    Services services;
};

/// The recorder of this process.
[[nodiscard]] Recorder &recorder();

/// Resets the recorder, the user defaults and the notification centres.
void reset();

} // namespace fernhop::macos_double
