#pragma once

#include "macos/double/Services.h"

namespace fernhop::macos_double {

/// What the double was asked to do, open to tests; everything begins anew with `reset`.
struct Recorder {
    int beeps = 0;
    int activations = 0; ///< of the application over the others
    int iconsAsked = 0;  ///< of the workspace
    Services services;
};

/// The one recorder of this process.
[[nodiscard]] Recorder &recorder();

/// Makes the recorder, the user defaults and the notification centres as they were at the start.
void reset();

} // namespace fernhop::macos_double
