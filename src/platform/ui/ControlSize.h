#pragma once

namespace fernhop::ui {

/// The size of a control; the values are those of AppKit.
enum class ControlSize { regular = 0, large = 3 };

} // namespace fernhop::ui
