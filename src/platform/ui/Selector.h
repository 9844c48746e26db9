#pragma once

#include <string_view>

namespace fernhop::ui {

/// The name of an action, as text with static lifetime ("clearURLRule:"). Empty: no action.
using Selector = std::string_view;

} // namespace fernhop::ui
