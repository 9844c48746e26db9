#pragma once

#include "dialogs/RuleDialogSources.h"
#include "platform/Object.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TextField.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The dialog that chooses one browser for several applications, which the user selects in a searchable list.
/// Applications that a search hides stay selected. Main thread only.
class AddAppRulesDialog {
  public:
    /// `sources` must outlive this object.
    explicit AddAppRulesDialog(const RuleDialogSources &sources);

    /// Shows the dialog, and stores the rules if the user confirms it.
    void showAddRuleDialog();

    /// The installed applications that are not browsers, in catalog order.
    [[nodiscard]] std::vector<InstalledApplication> nonBrowserApplications() const;

    /// Shows the applications whose name or identifier contains the text of the search field `sender`.
    void filterRuleDialogApplications(const Object *sender);
    /// Updates the line that summarises what would be changed.
    void updateRuleDialogHint() const;
    /// The number of rows of the list.
    [[nodiscard]] std::size_t numberOfRows() const { return ruleDialogApplications.size(); }
    /// A new view for a row of the list; null when there is no such row.
    [[nodiscard]] std::shared_ptr<ui::View> viewForRow(std::ptrdiff_t row) const;
    /// Records the selection that the user changed.
    void selectionDidChange();

  private:
    [[nodiscard]] std::shared_ptr<ui::View> makeAccessoryView();
    [[nodiscard]] std::shared_ptr<ui::SearchField> makeSearchField() const;
    [[nodiscard]] std::shared_ptr<ui::TableView> makeTable();
    [[nodiscard]] std::shared_ptr<ui::PopUpButton> makePopup() const;
    [[nodiscard]] std::vector<const InstalledApplication *> chosenApplications() const;
    [[nodiscard]] std::string hintText() const;
    void syncRuleDialogSelectionFromVisibleRows();
    void restoreRuleDialogSelection();
    void commit();

    const RuleDialogSources &sources;
    std::vector<InstalledApplication> ruleDialogAllApplications; ///< all applications that are offered
    std::vector<InstalledApplication> ruleDialogApplications;    ///< the rows of the list
    std::set<std::string> ruleDialogSelectedBundleIDs;
    bool isUpdatingRuleDialogSelection = false; ///< the dialog, not the user, is changing the selection
    std::weak_ptr<ui::TableView> ruleDialogTableView;
    std::weak_ptr<ui::SearchField> ruleDialogSearchField;
    std::weak_ptr<ui::PopUpButton> ruleDialogBrowserPopup;
    std::weak_ptr<ui::TextField> ruleDialogHintLabel;
};

} // namespace fernhop
