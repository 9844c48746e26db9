#pragma once

#include "catalog/AppIcons.h"
#include "platform/ui/PopUpButton.h"
#include "rules/Browser.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Fills `popup` (null: does nothing) with the browsers and selects `selectedBundleID`, else the browser that
/// was selected before, else the first. Without browsers it is empty and disabled.
void updateBrowserPopup(ui::PopUpButton *popup, const std::optional<std::string> &selectedBundleID,
                        const std::vector<Browser> &installedBrowsers, AppIcons &icons);

/// The browser selected in `popup`; nothing when it is null, has no selection, or the item carries no text.
[[nodiscard]] std::optional<std::string> selectedBrowserID(const ui::PopUpButton *popup);

} // namespace fernhop
