#pragma once

#include <string_view>

namespace fernhop::ui {

/// The name of an action ("clearURLRule:"), as text with static lifetime. Empty: no action.
using Selector = std::string_view;

} // namespace fernhop::ui
