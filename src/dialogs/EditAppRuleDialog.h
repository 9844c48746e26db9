#pragma once

#include "dialogs/RuleDialogSources.h"
#include "platform/ui/PopUpButton.h"

#include <memory>
#include <string>

namespace fernhop {

/// The dialog that changes the browser of one application. Main thread only.
class EditAppRuleDialog {
  public:
    /// `sources` must outlive this object.
    explicit EditAppRuleDialog(const RuleDialogSources &sources);

    /// Shows the dialog for a source application, and stores its rule if the user saves it.
    void showEditRuleDialog(const std::string &sourceBundleID) const;

  private:
    [[nodiscard]] std::shared_ptr<ui::PopUpButton> makePopup(const std::string &sourceBundleID) const;

    const RuleDialogSources &sources;
};

} // namespace fernhop
