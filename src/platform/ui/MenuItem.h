#pragma once

#include "platform/Object.h"
#include "platform/ui/Image.h"
#include "platform/ui/Selector.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace fernhop::ui {

class MenuItem;

/// The data of an item for its action: none, a text, or an object.
using RepresentedObject = std::variant<std::monostate, std::string, std::shared_ptr<const Object>>;

/// Whether a check mark is shown; the values are those of AppKit.
enum class ControlState { off = 0, on = 1 };

/// A list of items, top to bottom. Copying it copies the items.
struct Menu {
    std::vector<MenuItem> items;
};

/// One row of a menu. It is the sender of its action.
class MenuItem : public Object {
  public:
    MenuItem() = default;
    MenuItem(std::string itemTitle, Selector itemAction) : title(std::move(itemTitle)), action(itemAction) {}

    /// A line between items.
    [[nodiscard]] static MenuItem separator() {
        MenuItem item;
        item.isSeparator = true;
        return item;
    }

    std::string title;
    Selector action;
    RepresentedObject representedObject;
    ControlState state = ControlState::off;
    bool enabled = true;
    bool isSeparator = false;
    ImageReference image;
    std::string_view keyEquivalent; ///< with the desktop's command modifier; empty: none
    std::optional<Menu> submenu;
};

/// The text that an item carries; null when the item is null or carries no text.
[[nodiscard]] const std::string *representedText(const MenuItem *item);

/// Whether two menus look the same: represented objects and actions are not compared.
[[nodiscard]] bool looksTheSame(const Menu &left, const Menu &right);

} // namespace fernhop::ui
