#include "platform/linux/defaulthandler/MimeLookup.h"

#include "platform/linux/base/GPointer.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view cache = "/mimeinfo.cache";
constexpr std::string_view oldDefaults = "/defaults.list";

std::optional<std::string> idOf(std::string_view name) {
    if (!name.ends_with(desktopEntryExtension))
        return std::nullopt;
    return std::string(name.substr(0, name.size() - desktopEntryExtension.size()));
}

std::map<std::string, std::vector<std::string>> associationsIn(GKeyFile *file, const char *group) {
    std::map<std::string, std::vector<std::string>> found;
    const GStringsPointer types(g_key_file_get_keys(file, group, nullptr, nullptr));
    for (char **type = types.get(); type && *type; ++type) {
        if (!std::string_view(*type).starts_with(schemeTypePrefix))
            continue;
        const GStringsPointer names(g_key_file_get_string_list(file, group, *type, nullptr, nullptr));
        auto &ids = found[*type + schemeTypePrefix.size()];
        for (char **name = names.get(); name && *name; ++name) {
            if (auto id = idOf(*name))
                ids.push_back(std::move(*id));
        }
    }
    return found;
}

const std::vector<std::string> &of(const std::map<std::string, std::vector<std::string>> &associations,
                                   const std::string &scheme) {
    static const std::vector<std::string> none;
    const auto found = associations.find(scheme);
    return found == associations.end() ? none : found->second;
}

/// The first ID of a list that is not `without`; empty when there is none, or when it is no ID.
std::string firstOf(std::string_view names, std::string_view without) {
    for (;;) {
        const auto name = names.substr(0, names.find(';'));
        const auto id = idOf(name).value_or("");
        if (id.empty() || id != without || name.size() == names.size())
            return id == without ? std::string() : id;
        names.remove_prefix(name.size() + 1);
    }
}

bool contains(const std::vector<std::string> &ids, const std::string &id) {
    return std::ranges::find(ids, id) != ids.end();
}

} // namespace

LinkOpener linkOpenerOf(const XdgSession &session) {
    if (session.isDesktop("kde"))
        return LinkOpener::kio;
    constexpr std::array withGio = {"gnome", "mate", "cinnamon", "x-cinnamon", "xfce"};
    const bool usesGio =
        std::ranges::any_of(withGio, [&](const char *name) { return session.isDesktop(name); });
    return usesGio ? LinkOpener::gio : LinkOpener::xdgOpen;
}

MimeLookup::MimeLookup(const XdgSession &session, const DesktopEntries &desktopEntries)
    : desktops(session.desktops), entries(desktopEntries), files(parse) {
    for (const auto &folder : session.allConfigFolders())
        folders.push_back({folder, false});
    for (const auto &folder : session.allDataFolders())
        folders.push_back({folder + "/applications", true});
}

MimeLookup::File MimeLookup::parse(const std::optional<std::string> &bytes) {
    File file;
    bool isDefault = false;
    for (std::string_view rest = bytes ? *bytes : std::string_view(); !rest.empty();) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (line.starts_with('['))
            isDefault = line.starts_with("[Default Applications]");
        const auto type = line.find(schemeTypePrefix);
        const auto end = line.find('=', type);
        if (type == std::string_view::npos || end == std::string_view::npos)
            continue;
        const std::string scheme(
            line.substr(type + schemeTypePrefix.size(), end - type - schemeTypePrefix.size()));
        const auto names = line.substr(end + 1, line.find('=', end + 1) - end - 1);
        if (type == 0 && isDefault)
            file.defaultLines.emplace(scheme, firstOf(names, {}));
        file.lines.emplace(scheme, names);
    }
    const GKeyFilePointer keys(g_key_file_new());
    if (!bytes ||
        !g_key_file_load_from_data(keys.get(), bytes->c_str(), bytes->size(), G_KEY_FILE_NONE, nullptr)) {
        file.isRejected = bytes && !bytes->empty();
        return file;
    }
    file.defaults = associationsIn(keys.get(), "Default Applications");
    file.added = associationsIn(keys.get(), "Added Associations");
    file.removed = associationsIn(keys.get(), "Removed Associations");
    for (auto &[scheme, ids] : associationsIn(keys.get(), "MIME Cache"))
        file.added[scheme].insert(file.added[scheme].end(), ids.begin(), ids.end());
    for (auto *const associations : {&file.defaults, &file.added}) {
        for (auto &[scheme, ids] : *associations) {
            file.isCut = file.isCut || ids.size() > mostApplications;
            ids.resize(std::min(ids.size(), mostApplications));
        }
    }
    return file;
}

std::vector<std::string> MimeLookup::listsIn(const Folder &folder) const {
    std::vector<std::string> paths;
    for (const auto &desktop : desktops)
        paths.push_back(folder.path + '/' + desktop + "-mimeapps.list");
    paths.push_back(folder.path + "/mimeapps.list");
    return paths;
}

std::vector<std::string> MimeLookup::lists() const {
    std::vector<std::string> paths;
    for (const auto &folder : folders)
        std::ranges::copy(listsIn(folder), std::back_inserter(paths));
    return paths;
}

std::vector<std::string> MimeLookup::defaultsIn(const std::string &path, const std::string &scheme) const {
    return of(files.at(path).defaults, scheme);
}

bool MimeLookup::namesTooMany(const std::string &path) const {
    return files.at(path).isCut;
}

bool MimeLookup::isRejected(const std::string &path) const {
    return files.at(path).isRejected;
}

// As g_app_info_get_default_for_type: the defaults of every folder, then the associations of every folder.
// What an important folder removes, the folders behind it do not add, and neither what has its entry there.
void MimeLookup::offerAsGio(const std::string &scheme, const Offer &offer) const {
    for (const auto &folder : folders) {
        auto paths = listsIn(folder);
        if (folder.hasApplications)
            paths.push_back(folder.path + std::string(oldDefaults));
        for (const auto &path : paths) {
            const auto set = defaultsIn(path, scheme);
            if (std::ranges::any_of(set, [&](const auto &id) { return offer(path, id, true); }))
                return;
        }
    }
    std::vector<std::string> removed;
    std::vector<std::string> before; ///< the folders before this one
    for (const auto &folder : folders) {
        const auto isMasked = [&](const std::string &id) {
            const auto entry = entries.entry(id);
            return entry && std::ranges::any_of(
                                before, [&](const auto &path) { return entry->path.starts_with(path); });
        };
        const auto offerAdded = [&](const std::string &path, const std::vector<std::string> &ids) {
            return std::ranges::any_of(ids, [&](const auto &id) {
                return !contains(removed, id) && !isMasked(id) && offer(path, id, false);
            });
        };
        // Lists of a desktop only set defaults.
        const auto list = folder.path + "/mimeapps.list";
        const auto added = of(files.at(list).added, scheme);
        if (offerAdded(list, added))
            return;
        std::ranges::copy_if(of(files.at(list).removed, scheme), std::back_inserter(removed),
                             [&](const auto &id) { return !contains(added, id); });
        const auto cached = folder.path + std::string(cache);
        if (folder.hasApplications && offerAdded(cached, of(files.at(cached).added, scheme)))
            return;
        before.push_back(folder.path + '/');
    }
}

// As KService builds its list: what a folder names outranks what those behind it name, and in a folder a
// default what is only added. Removing takes away what entries declare and what folders behind it name.
void MimeLookup::offerAsKio(const std::string &scheme, const Offer &offer) const {
    std::set<std::string> removed;
    const auto offerAll = [&](const std::string &path, const std::vector<std::string> &ids, bool isSet) {
        return std::ranges::any_of(
            ids, [&](const auto &id) { return !removed.contains(id) && offer(path, id, isSet); });
    };
    for (const auto &path : lists()) {
        if (offerAll(path, defaultsIn(path, scheme), true))
            return;
        if (!path.ends_with("/mimeapps.list"))
            continue;
        if (offerAll(path, std::vector(of(files.at(path).added, scheme)), false))
            return;
        const auto &here = of(files.at(path).removed, scheme);
        removed.insert(here.begin(), here.end());
    }
    for (const auto &entry : declaring(scheme)) {
        if (offerAll(entry.path, {entry.id}, false))
            return;
    }
}

// KDE finds out that a program is missing only when it starts it.
bool MimeLookup::isInstalled(const std::string &id, LinkOpener opener) const {
    const auto entry = entries.entry(id);
    return entry && (opener == LinkOpener::kio || entries.hasProgram(*entry));
}

std::vector<DesktopEntry> MimeLookup::declaring(const std::string &scheme) const {
    auto all = entries.all();
    std::erase_if(all, [&](const auto &entry) { return !contains(entry.schemes, scheme); });
    std::ranges::stable_sort(all, std::ranges::greater(), &DesktopEntry::initialPreference);
    return all;
}

// As the script does it: the first of each list only, then the first that a cache names, whatever it is.
std::optional<MimeLookup::Handler> MimeLookup::handlerOfXdgOpen(const std::string &scheme,
                                                                const std::string &without) const {
    const auto handlerNamed = [&](const std::string &path, const std::string &id, bool isSet) {
        const bool canBeStarted = !id.empty() && id != without && isInstalled(id, LinkOpener::xdgOpen);
        return canBeStarted ? std::optional(Handler{path, id, isSet}) : std::nullopt;
    };
    for (const auto &path : lists()) {
        const auto &lines = files.at(path).defaultLines;
        const auto line = lines.find(scheme);
        if (auto handler = handlerNamed(path, line == lines.end() ? "" : line->second, true))
            return handler;
    }
    for (const auto &folder : folders) {
        for (const auto name : {oldDefaults, cache}) {
            const auto path = folder.path + std::string(name);
            const auto &lines = files.at(path).lines;
            const auto line = lines.find(scheme);
            if (!folder.hasApplications || line == lines.end() || line->second.empty() ||
                line->second[0] == ';')
                continue;
            // Without the application, the caches would be without it too.
            const auto id = firstOf(line->second, without);
            if (id.empty() && !without.empty())
                continue;
            return handlerNamed(path, id, false);
        }
    }
    const auto candidates = declaring(scheme);
    const auto first =
        std::ranges::find_if(candidates, [&](const auto &entry) { return entry.id != without; });
    return first == candidates.end() ? std::nullopt : handlerNamed(first->path, first->id, false);
}

std::optional<MimeLookup::Handler> MimeLookup::handler(const std::string &scheme, LinkOpener opener,
                                                       const std::string &without) const {
    if (opener == LinkOpener::xdgOpen)
        return handlerOfXdgOpen(scheme, without);
    std::optional<Handler> taken;
    const Offer offer = [&](const std::string &path, const std::string &id, bool isSet) {
        if (id != without && isInstalled(id, opener))
            taken = Handler{path, id, isSet};
        return taken.has_value();
    };
    if (opener == LinkOpener::kio)
        offerAsKio(scheme, offer);
    else
        offerAsGio(scheme, offer);
    return taken;
}

} // namespace fernhop::freedesktop
