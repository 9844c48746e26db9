#include "platform/ui/MenuItem.h"

#include <algorithm>

namespace fernhop::ui {

namespace {

bool itemsLookTheSame(const MenuItem &left, const MenuItem &right) {
    if (left.isSeparator != right.isSeparator || left.title != right.title || left.state != right.state ||
        left.enabled != right.enabled || left.keyEquivalent != right.keyEquivalent ||
        !sameImage(left.image, right.image) || left.submenu.has_value() != right.submenu.has_value())
        return false;
    return !left.submenu || looksTheSame(*left.submenu, *right.submenu);
}

} // namespace

const std::string *representedText(const MenuItem *item) {
    return item ? std::get_if<std::string>(&item->representedObject) : nullptr;
}

bool looksTheSame(const Menu &left, const Menu &right) {
    return std::ranges::equal(left.items, right.items, itemsLookTheSame);
}

} // namespace fernhop::ui
