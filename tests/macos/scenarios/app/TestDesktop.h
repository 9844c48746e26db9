#pragma once

#include "macos/scenarios/BridgedDesktop.h"

namespace fernhop {

using TestDesktop = macos::BridgedDesktop;

} // namespace fernhop
