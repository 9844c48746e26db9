#pragma once

#include "dialogs/RuleDialogSources.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TextField.h"
#include "rules/URLRule.h"

#include <memory>
#include <optional>
#include <string>

namespace fernhop {

/// The dialog that adds or changes a URL rule. Main thread only.
class URLRuleDialog {
  public:
    /// `sources` must outlive this object.
    explicit URLRuleDialog(const RuleDialogSources &sources);

    /// Shows the dialog, empty or filled from `existingRule`, and stores the rule if the user saves it.
    void showURLRuleDialog(const std::optional<URLRule> &existingRule) const;

  private:
    struct Views {
        std::shared_ptr<ui::TextField> pattern;
        std::shared_ptr<ui::PopUpButton> browser;
        std::shared_ptr<ui::View> container;
    };

    [[nodiscard]] Views makeViews(const std::optional<URLRule> &existingRule) const;
    void commit(const Views &views, const std::optional<URLRule> &existingRule) const;

    const RuleDialogSources &sources;
};

} // namespace fernhop
