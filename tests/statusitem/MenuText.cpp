#include "statusitem/MenuText.h"

#include "rules/RuleSelection.h"

#include <memory>

namespace fernhop {

namespace {

std::string imageText(const ui::ImageReference &image) {
    if (!image)
        return "";
    std::string name;
    if (const auto *icon = std::get_if<ui::ApplicationIcon>(&image->source))
        name = icon->path.substr(icon->path.rfind('/') + 1);
    else if (const auto *symbol = std::get_if<ui::SystemSymbol>(&image->source))
        name = symbol->name;
    return " <" + name + " " + std::to_string(static_cast<int>(image->side)) + ">";
}

std::string carriedText(const ui::RepresentedObject &carried) {
    if (const auto *text = std::get_if<std::string>(&carried))
        return " with " + *text;
    const auto *object = std::get_if<std::shared_ptr<const Object>>(&carried);
    if (!object)
        return "";
    if (const auto *app = dynamic_cast<const RuleSelection *>(object->get()))
        return " with app " + app->sourceBundleID + " browser " + app->browserBundleID;
    const auto &rule = dynamic_cast<const URLRuleSelection &>(**object);
    return " with rule " + rule.ruleID + " browser " + rule.browserBundleID;
}

std::string itemText(const ui::MenuItem &item) {
    if (item.isSeparator)
        return "---";
    std::string text = item.enabled ? item.title : "(" + item.title + ")";
    if (item.state == ui::ControlState::on)
        text = "[x] " + text;
    text += imageText(item.image);
    if (!item.action.empty())
        text += " => " + std::string(item.action);
    text += carriedText(item.representedObject);
    if (!item.keyEquivalent.empty())
        text += " key " + std::string(item.keyEquivalent);
    return text;
}

} // namespace

std::string asText(const ui::Menu &menu, const std::string &indentation) {
    std::string text;
    for (const ui::MenuItem &item : menu.items) {
        text += indentation + itemText(item) + "\n";
        if (item.submenu)
            text += asText(*item.submenu, indentation + "    ");
    }
    return text;
}

} // namespace fernhop
