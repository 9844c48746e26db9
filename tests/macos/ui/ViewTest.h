#pragma once

#include "macos/ui/ExpectShown.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/ui/ViewTree.h"
#include "platform/ui/PopUpButton.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop::macos {

/// A test that shows views of the core.
class ViewTest : public InterfaceTest {
  protected:
    /// Shows a view, compares it and returns it as `Shown`, its expected class.
    template <typename Shown, typename Model>
    Shown *show(const std::shared_ptr<Model> &view) {
        NSView *shown = tree->show(view);
        expectShown(shown, *view);
        return static_cast<Shown *>(shown);
    }

    /// A pop-up with items of these titles; the represented object of each is "id." and its title.
    static std::shared_ptr<ui::PopUpButton> popUp(std::vector<std::string> titles) {
        auto button = std::make_shared<ui::PopUpButton>();
        std::vector<ui::MenuItem> items;
        for (const std::string &title : titles) {
            items.emplace_back(title, "");
            items.back().representedObject = "id." + title;
        }
        button->setItems(std::move(items));
        button->action = "updateRuleDialogHint";
        return button;
    }

    RecordingTarget target;
    std::unique_ptr<ViewTree> tree = std::make_unique<ViewTree>(target);
};

} // namespace fernhop::macos
