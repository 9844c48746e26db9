#include "TrayMenu.h"

#include "ShownIcon.h"
#include "support/Waiting.h"

#include <algorithm>

namespace fernhop::desktoptest {
namespace {

using freedesktop::LayoutItem;

/// Well inside the row of a menu in any theme.
constexpr int insideRow = 14;

/// A label as it shows: a host takes one underscore for the mark of an access key.
std::string shown(const LayoutItem &item) {
    std::string text = item.label();
    for (auto place = text.find("__"); place != std::string::npos; place = text.find("__", place + 1))
        text.erase(place, 1);
    return text;
}

bool canBeChosen(const LayoutItem &item) {
    return item.property("enabled") == "true";
}

const LayoutItem *find(const LayoutItem &menu, const std::string &title) {
    const auto found = std::find_if(menu.children.begin(), menu.children.end(), [&](const auto &item) {
        return canBeChosen(item) && shown(item) == title;
    });
    return found == menu.children.end() ? nullptr : &*found;
}

} // namespace

TrayMenu::TrayMenu(PanelSession &panelSession)
    : session(panelSession), host(session.bus->address(), "org.fernhop.Fernhop"),
      traffic(session.bus->address(), host.name()), menus(session.display->name()) {}

bool TrayMenu::choose(const Titles &titles) {
    if (titles.empty() || !open())
        return false;
    const LayoutItem root(host.layout().first.get());
    const LayoutItem *menu = &root;
    for (std::size_t level = 0; level + 1 < titles.size(); ++level) {
        if (!enter(*menu, titles[level], level + 2))
            return false;
        menu = find(*menu, titles[level]);
    }
    return turnTo(*menu, titles.back()) && session.input({"key", "Return"}) == 0 && showsMenus(0);
}

bool TrayMenu::clickFirstIn(const std::string &title) {
    if (!open())
        return false;
    // The keys show where its submenu opens, which is beside it; the pointer goes there by itself then.
    const LayoutItem root(host.layout().first.get());
    if (!enter(root, title, 2))
        return false;
    const auto places = menus.places();
    const auto &menu = places.front(), &submenu = places.back();
    if (!close() || !open())
        return false;
    const int row = submenu.top + insideRow;
    const auto middle = std::to_string(menu.left + menu.width / 2);
    if (session.input({"mousemove", middle, std::to_string(row)}) != 0 || !showsMenus(2))
        return false;
    return session.click(submenu.left + submenu.width / 2, row) == 0 && showsMenus(0);
}

TrayMenu::Titles TrayMenu::seen(const Titles &path) {
    const LayoutItem root(host.layout().first.get());
    const LayoutItem *menu = &root;
    for (const auto &title : path)
        menu = menu ? find(*menu, title) : nullptr;
    Titles titles;
    if (!menu)
        return titles;
    for (const auto &item : menu->children) {
        if (item.property("type") == "'separator'")
            titles.emplace_back("---");
        else
            titles.push_back(canBeChosen(item) ? shown(item) : "(" + shown(item) + ")");
    }
    return titles;
}

bool TrayMenu::open() {
    if (!support::waitUntil([this] { return traffic.knows(host.layout().second); }))
        return false;
    return openMenuAt(session, menus, firstIcon);
}

bool TrayMenu::close() {
    for (auto count = menus.count(); count > 0; count = menus.count())
        if (session.input({"key", "Escape"}) != 0 ||
            !support::waitUntil([&] { return menus.count() < count; }))
            return false;
    return true;
}

bool TrayMenu::turnTo(const LayoutItem &menu, const std::string &title) {
    const LayoutItem *item = find(menu, title);
    if (!item)
        return false;
    std::vector<std::string> keys = {"key", "Home"};
    for (const auto &other : menu.children)
        if (&other < item && canBeChosen(other))
            keys.emplace_back("Down");
    return session.input(keys) == 0;
}

bool TrayMenu::enter(const LayoutItem &menu, const std::string &title, std::size_t openMenus) {
    return turnTo(menu, title) && session.input({"key", "Right"}) == 0 && showsMenus(openMenus);
}

bool TrayMenu::showsMenus(std::size_t count) {
    return support::waitUntil([&] { return menus.count() == count; });
}

} // namespace fernhop::desktoptest
