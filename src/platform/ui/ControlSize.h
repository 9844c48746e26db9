#pragma once

namespace fernhop::ui {

/// The values are the desktop's.
enum class ControlSize { regular = 0, large = 3 };

} // namespace fernhop::ui
