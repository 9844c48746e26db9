#pragma once

#include "app/AppDelegate.h"
#include "platform/Object.h"
#include "platform/ui/Selector.h"

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// An action that opens a dialog, as texts, for a process that shows dialogs on behalf of another.
struct DialogRequest {
    std::string selector; ///< of the action
    std::string subject;  ///< the rule's or application's identifier that the sender carries; empty: none
};

/// The dialog that performing `selector` for `sender` (null: nobody) opens; nothing for any other action.
[[nodiscard]] std::optional<DialogRequest> dialogRequest(std::string_view selector, const Object *sender);

/// Opens the dialog in this process and returns once it is closed. A selector that opens no dialog does
/// nothing.
void openDialog(AppDelegate &controller, const DialogRequest &request);

} // namespace fernhop
