#include "platform/linux/source/EntryIndex.h"

#include "platform/Ascii.h"

#include <algorithm>
#include <limits>

namespace fernhop::freedesktop {
namespace {

std::optional<std::string> find(const std::unordered_map<std::string, std::string> &map,
                                const std::string &key) {
    const auto found = map.find(key);
    return found == map.end() || found->second.empty() ? std::nullopt : std::optional(found->second);
}

std::string withHyphens(std::string text) {
    std::ranges::replace(text, ' ', '-');
    return text;
}

/// The lower the better; entries that menus hide come last.
unsigned rankOf(const DesktopEntry &entry) {
    constexpr unsigned hidden = std::numeric_limits<unsigned>::max() / 2;
    const auto blanks = std::ranges::count(entry.exec, ' ');
    const auto codes = std::ranges::count(entry.exec, '%');
    return (entry.noDisplay ? hidden : 0) +
           static_cast<unsigned>(std::max(blanks - codes, decltype(blanks){0}));
}

} // namespace

EntryIndex::EntryIndex(const std::vector<DesktopEntry> &entries) {
    for (const auto &entry : entries)
        add(entry);
    // All exact spellings have been added; lower case only fills the gaps.
    for (const auto &entry : entries) {
        ids.try_emplace(ascii::lowercased(entry.id), entry.id);
        if (!entry.startupWMClass.empty())
            windowClasses.try_emplace(ascii::lowercased(entry.startupWMClass), entry.id);
    }
}

void EntryIndex::add(const DesktopEntry &entry) {
    if (entry.id.empty())
        return;
    ids.try_emplace(entry.id, entry.id);
    paths.try_emplace(entry.path, entry.id);
    if (!entry.startupWMClass.empty())
        windowClasses.try_emplace(entry.startupWMClass, entry.id);
    addProgram(entry);
    addLastWord(entry.id);
}

void EntryIndex::addProgram(const DesktopEntry &entry) {
    const std::string name = programOf(entry);
    if (name.empty())
        return;
    const unsigned rank = rankOf(entry);
    const auto [place, isNew] = programs.try_emplace(name, Program{entry.id, rank});
    if (!isNew && rank < place->second.rank)
        place->second = {entry.id, rank};
}

void EntryIndex::addLastWord(const std::string &id) {
    const auto dot = id.rfind('.');
    if (dot == std::string::npos)
        return;
    const auto [place, isNew] = lastWords.try_emplace(ascii::lowercased(id.substr(dot + 1)), id);
    if (!isNew)
        place->second.clear();
}

std::optional<std::string> EntryIndex::byWindowClass(const std::string &name) const {
    const auto exact = find(windowClasses, name);
    return exact ? exact : find(windowClasses, ascii::lowercased(name));
}

std::optional<std::string> EntryIndex::byID(const std::string &id) const {
    const auto exact = find(ids, id);
    return exact ? exact : find(ids, withHyphens(ascii::lowercased(id)));
}

std::optional<std::string> EntryIndex::byPath(const std::string &path) const {
    return find(paths, path);
}

std::optional<std::string> EntryIndex::byProgram(const std::string &fileName) const {
    const auto found = programs.find(fileName);
    return found == programs.end() ? std::nullopt : std::optional(found->second.id);
}

std::optional<std::string> EntryIndex::byLastWord(const std::string &word) const {
    return find(lastWords, ascii::lowercased(word));
}

} // namespace fernhop::freedesktop
