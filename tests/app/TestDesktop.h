#pragma once

#include "fakes/FakeDesktop.h"

namespace fernhop {

/// What the scenarios run on. Another backend runs them with a header of this name that comes first.
using TestDesktop = fakes::FakeDesktop;

} // namespace fernhop
