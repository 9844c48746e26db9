#include "platform/linux/tray/MenuTree.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <utility>

namespace fernhop::freedesktop {

namespace {

const std::vector<ui::MenuItem> &itemsBelow(const ui::MenuItem &item) {
    static const std::vector<ui::MenuItem> none;
    return item.submenu ? item.submenu->items : none;
}

/// A refresh of the applications makes their icons anew, as they may have changed where they come from.
bool hasSameIcon(const ui::MenuItem &one, const ui::MenuItem &other) {
    return one.image == other.image || !one.image ||
           !std::holds_alternative<ui::ApplicationIcon>(one.image->source);
}

bool hasSameIcons(const std::vector<ui::MenuItem> &left, const std::vector<ui::MenuItem> &right) {
    return std::ranges::equal(left, right, [](const ui::MenuItem &one, const ui::MenuItem &other) {
        return hasSameIcon(one, other) && hasSameIcons(itemsBelow(one), itemsBelow(other));
    });
}

bool hasSameText(const ui::RepresentedObject &left, const ui::RepresentedObject &right) {
    const auto *text = std::get_if<std::string>(&left);
    const auto *other = std::get_if<std::string>(&right);
    return left.index() == right.index() && (text == nullptr || *text == *other);
}

/// The first text that an item in the submenu carries: it names what the submenu is about. Null: none does.
const std::string *subjectOf(const ui::MenuItem &item) {
    for (const ui::MenuItem &below : itemsBelow(item))
        if (const auto *text = std::get_if<std::string>(&below.representedObject))
            return text;
    return nullptr;
}

/// Two submenus may look the same and be about different rules.
bool canHaveSameSubject(const ui::MenuItem &left, const ui::MenuItem &right) {
    const auto *one = subjectOf(left);
    const auto *other = subjectOf(right);
    return !one || !other || *one == *other;
}

/// Hosts do not expect an item to change its kind, nor whether it can be checked; whether it is enabled may
/// change, as that is always told.
bool isSameItem(const ui::MenuItem &left, const ui::MenuItem &right) {
    return left.isSeparator == right.isSeparator && left.title == right.title &&
           left.action == right.action && left.state == right.state &&
           left.submenu.has_value() == right.submenu.has_value() &&
           left.keyEquivalent == right.keyEquivalent && ui::sameImage(left.image, right.image) &&
           hasSameText(left.representedObject, right.representedObject) && canHaveSameSubject(left, right);
}

/// Finds items again among those that stood beneath the same parent.
class Siblings {
  public:
    Siblings(const MenuTree *treeBefore, MenuTree::Id parent) : tree(treeBefore) {
        if (const auto *entry = tree ? tree->find(parent) : nullptr)
            ids = &entry->children;
    }

    /// The id that `item` had, if it had one.
    std::optional<MenuTree::Id> take(const ui::MenuItem &item) {
        // What moved further is taken for a new item, or two long lists would take forever to compare.
        constexpr std::size_t reach = 64;
        const std::size_t end = ids ? std::min(ids->size(), next + reach) : 0;
        for (std::size_t place = next; place < end; ++place) {
            if (isSameItem(*tree->find((*ids)[place])->item, item)) {
                next = place + 1;
                return (*ids)[place];
            }
        }
        return std::nullopt;
    }

  private:
    const MenuTree *tree;
    const std::vector<MenuTree::Id> *ids = nullptr;
    std::size_t next = 0;
};

} // namespace

MenuTree::MenuTree() : current(std::make_shared<const ui::Menu>()) {
    entries.emplace_back();
    places.emplace(root, 0);
}

bool MenuTree::show(std::shared_ptr<const ui::Menu> menu) {
    if (ui::looksTheSame(*current, *menu) && hasSameIcons(current->items, menu->items)) {
        std::size_t next = 1;
        pointInto(*menu, next);
        current = std::move(menu);
        return false;
    }
    const MenuTree before = std::move(*this);
    current = std::move(menu);
    entries.assign(1, {});
    places.clear();
    auto children = addItems(*current, &before, root);
    entries.front().children = std::move(children);
    for (std::size_t place = 0; place < entries.size(); ++place)
        places.emplace(entries[place].id, place);
    ++lastRevision;
    for (Entry &entry : entries)
        entry.changedIn = looksAsBefore(entry, before) ? before.find(entry.id)->changedIn : lastRevision;
    return true;
}

bool MenuTree::looksAsBefore(const Entry &parent, const MenuTree &before) const {
    const Entry *known = before.find(parent.id);
    return known && std::ranges::equal(parent.children, known->children, [&](Id now, Id then) {
               // An item that kept its id differs in nothing else.
               const ui::MenuItem &item = *find(now)->item;
               return now == then && item.enabled == before.find(then)->item->enabled &&
                      hasSameIcon(item, *before.find(then)->item);
           });
}

const MenuTree::Entry *MenuTree::find(Id id) const {
    const auto place = places.find(id);
    return place == places.end() ? nullptr : &entries[place->second];
}

std::vector<MenuTree::Id> MenuTree::ids() const {
    std::vector<Id> all;
    std::ranges::transform(entries, std::back_inserter(all), &Entry::id);
    return all;
}

void MenuTree::pointInto(const ui::Menu &menu, std::size_t &next) {
    for (const ui::MenuItem &item : menu.items) {
        entries[next++].item = &item;
        if (item.submenu)
            pointInto(*item.submenu, next);
    }
}

std::vector<MenuTree::Id> MenuTree::addItems(const ui::Menu &menu, const MenuTree *before, Id parent) {
    std::vector<Id> ids;
    ids.reserve(menu.items.size());
    Siblings siblings(before, parent); // which had the same id before, if it was there
    for (const ui::MenuItem &item : menu.items) {
        const auto known = siblings.take(item);
        const Id id = known ? *known : ++lastId;
        ids.push_back(id);
        const std::size_t place = entries.size();
        entries.push_back({id, &item, {}, 0, parent});
        if (!item.submenu)
            continue;
        auto children = addItems(*item.submenu, known ? before : nullptr, id);
        entries[place].children = std::move(children);
    }
    return ids;
}

namespace {

// More than any session has. A name on the bus is never used again, so those of panels that ended add up; who
// is forgotten is only told to read once more.
constexpr std::size_t mostHosts = 16;

// More than anyone opens at the same time.
constexpr std::size_t mostOpened = 32;

bool hasChildren(const MenuTree::Entry &entry) {
    return entry.item == nullptr || entry.item->submenu.has_value();
}

bool contains(const std::vector<MenuTree::Id> &ids, MenuTree::Id id) {
    return std::ranges::find(ids, id) != ids.end();
}

} // namespace

ToldSubmenus MenuReaders::submenusFor(const std::string &host, const MenuTree &tree, MenuTree::Id id,
                                      int depth, std::size_t most) const {
    const auto found = hosts.find(host);
    const std::vector<MenuTree::Id> opened =
        found == hosts.end() ? std::vector<MenuTree::Id>() : found->second.opened;
    ToldSubmenus submenus;
    std::size_t items = 0;
    std::deque<std::pair<MenuTree::Id, int>> first{{id, depth}}, rest;
    while (!first.empty() || !rest.empty()) {
        const bool isOptional = first.empty();
        auto &queue = isOptional ? rest : first;
        const auto [next, levels] = queue.front();
        queue.pop_front();
        const MenuTree::Entry &entry = *tree.find(next);
        if (levels == 0 || !hasChildren(entry))
            continue;
        if (isOptional && items + entry.children.size() > most) {
            submenus.omitted.push_back(next);
            continue;
        }
        items += entry.children.size();
        submenus.told.insert(next);
        for (const MenuTree::Id child : entry.children)
            (contains(opened, child) ? first : rest).emplace_back(child, levels < 0 ? levels : levels - 1);
    }
    return submenus;
}

MenuReaders::Reader &MenuReaders::reader(const std::string &host) {
    if (hosts.size() >= mostHosts && !hosts.contains(host))
        hosts.clear();
    return hosts[host];
}

void MenuReaders::reads(const std::string &host, const MenuTree &tree, const ToldSubmenus &submenus) {
    auto &knowledge = reader(host).knowledge;
    for (const MenuTree::Id id : submenus.told)
        knowledge[id] = tree.revision();
    // Whoever asked for all takes an item without anything beneath it at its word.
    for (const MenuTree::Id id : submenus.omitted)
        knowledge.erase(id);
}

void MenuReaders::opens(const std::string &host, const MenuTree &tree, MenuTree::Id id) {
    auto &opened = reader(host).opened;
    for (const auto *entry = tree.find(id); entry->item != nullptr; entry = tree.find(entry->parent)) {
        std::erase(opened, entry->id);
        opened.push_back(entry->id);
    }
    if (opened.size() > mostOpened)
        opened.erase(opened.begin(), opened.end() - mostOpened);
}

bool MenuReaders::knows(const std::string &host, const MenuTree::Entry &entry) const {
    if (!hasChildren(entry))
        return true;
    const auto reader = hosts.find(host);
    if (reader == hosts.end())
        return false;
    const auto &knowledge = reader->second.knowledge;
    const auto read = knowledge.find(entry.id);
    return read != knowledge.end() && entry.changedIn <= read->second;
}

void MenuReaders::forgetAllBut(const MenuTree &tree) {
    for (auto &[host, reader] : hosts) {
        std::erase_if(reader.knowledge, [&](const auto &read) { return tree.find(read.first) == nullptr; });
        std::erase_if(reader.opened, [&](MenuTree::Id id) { return tree.find(id) == nullptr; });
    }
}

} // namespace fernhop::freedesktop
