#include "platform/linux/tray/MenuReaders.h"

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

// More than any session has. A name on the bus is never used again, so those of panels that ended add up; who
// is forgotten is only told to read once more.
constexpr std::size_t mostHosts = 16;

bool hasChildren(const MenuTree::Entry &entry) {
    return entry.item == nullptr || entry.item->submenu.has_value();
}

} // namespace

void MenuReaders::reads(const std::string &host, const MenuTree &tree, MenuTree::Id id, int depth) {
    if (hosts.size() >= mostHosts && !hosts.contains(host))
        hosts.clear();
    Knowledge &knowledge = hosts[host];
    if (id == MenuTree::root && depth < 0)
        knowledge = {tree.revision(), {}};
    else
        note(knowledge, tree, id, depth);
}

void MenuReaders::note(Knowledge &knowledge, const MenuTree &tree, MenuTree::Id id, int depth) {
    const MenuTree::Entry &entry = *tree.find(id);
    if (depth == 0 || !hasChildren(entry))
        return;
    knowledge.parts[id] = tree.revision();
    for (const MenuTree::Id child : entry.children)
        note(knowledge, tree, child, depth < 0 ? depth : depth - 1);
}

bool MenuReaders::knows(const std::string &host, const MenuTree::Entry &entry) const {
    if (!hasChildren(entry))
        return true;
    const auto reader = hosts.find(host);
    if (reader == hosts.end())
        return false;
    const auto &[whole, parts] = reader->second;
    const auto part = parts.find(entry.id);
    return entry.changedIn <= std::max(whole, part == parts.end() ? 0 : part->second);
}

void MenuReaders::forgetAllBut(const MenuTree &tree) {
    for (auto &[host, knowledge] : hosts)
        std::erase_if(knowledge.parts, [&](const auto &part) { return tree.find(part.first) == nullptr; });
}

} // namespace fernhop::freedesktop
