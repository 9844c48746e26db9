#pragma once

#include "dialogs/AddAppRulesDialog.h"
#include "dialogs/DialogTest.h"

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fernhop {

/// The dialog that adds app rules, with four applications to choose from.
class AddAppRulesTest : public DialogTest {
  protected:
    using Names = std::vector<std::string>;
    using Rows = std::set<std::size_t>;

    static constexpr const char *emptyHint = "选择一个或多个 App，然后指定目标浏览器。";

    /// The open dialog with its parts.
    struct Dialog {
        explicit Dialog(const ui::Alert &alert)
            : container(alert.accessoryView), header(subview<ui::StackView>(*container, 0)),
              search(subview<ui::SearchField>(*container, 1)), scroll(subview<ui::ScrollView>(*container, 2)),
              table(std::dynamic_pointer_cast<ui::TableView>(scroll->documentView)),
              label(subview<ui::TextField>(*container, 3)), popup(subview<ui::PopUpButton>(*container, 4)),
              note(subview<ui::View>(*container, 5)), hint(subview<ui::TextField>(*note, 0)) {}

        std::shared_ptr<ui::View> container;
        std::shared_ptr<ui::StackView> header;
        std::shared_ptr<ui::SearchField> search;
        std::shared_ptr<ui::ScrollView> scroll;
        std::shared_ptr<ui::TableView> table;
        std::shared_ptr<ui::TextField> label;
        std::shared_ptr<ui::PopUpButton> popup;
        std::shared_ptr<ui::View> note;
        std::shared_ptr<ui::TextField> hint;

        std::string text() const { return hint->stringValue(); }
        Rows selected() const { return table->selectedRowIndexes(); }

        /// The names in the list.
        Names names() const {
            Names shown;
            for (std::size_t row = 0; row < table->numberOfRows(); ++row) {
                const auto cell = table->viewForRow(static_cast<std::ptrdiff_t>(row));
                const auto line = subview<ui::StackView>(*cell, 0);
                shown.push_back(subview<ui::TextField>(*subview<ui::StackView>(*line, 1), 0)->stringValue());
            }
            return shown;
        }
    };

    AddAppRulesTest() {
        desktop.installFourApplications();
        launch();
    }

    /// Opens the dialog; `user` operates it and returns the response.
    template <typename User>
    void openDialog(User user) {
        open("showAddRuleDialog", [&](const ui::Alert &alert) {
            const Dialog dialog(alert);
            return user(dialog);
        });
    }

    /// Opens the dialog, operates it and cancels.
    template <typename Work>
    void lookAt(Work work) {
        openDialog([&](const Dialog &dialog) {
            work(dialog);
            return cancel;
        });
    }

    void type(const Dialog &dialog, const std::string &query) {
        dialog.search->setStringValue(query);
        fire(dialog.search->action, *dialog.search);
    }

    void select(const Dialog &dialog, const Rows &rows) {
        dialog.table->selectRowIndexes(rows, false);
        fire(dialog.table->action, *dialog.table);
    }

    AppRules rules() { return controller->settings().appRules(); }
};

} // namespace fernhop
