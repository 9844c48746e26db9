#pragma once

#include "fakes/FakeDesktop.h"

namespace fernhop {

/// The desktop of the scenarios. Another backend replaces it by a header with this name earlier in the
/// include path.
using TestDesktop = fakes::FakeDesktop;

} // namespace fernhop
