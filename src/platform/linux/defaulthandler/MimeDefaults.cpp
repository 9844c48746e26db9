#include "platform/linux/defaulthandler/MimeDefaults.h"

#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/KeyFile.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <filesystem>

namespace fernhop::freedesktop {

namespace {

constexpr const char *defaultsGroup = "Default Applications";
constexpr std::string_view removedGroup = "Removed Associations";
constexpr std::string_view typePrefix = "x-scheme-handler/";
constexpr std::string_view extension = ".desktop";

bool isValidForGLib(const std::string &text) {
    const GKeyFilePointer file(g_key_file_new());
    return g_key_file_load_from_data(file.get(), text.c_str(), text.size(), G_KEY_FILE_NONE, nullptr);
}

std::vector<std::string> idsOf(GKeyFile *file, const char *type) {
    const GStringsPointer values(g_key_file_get_string_list(file, defaultsGroup, type, nullptr, nullptr));
    std::vector<std::string> ids;
    for (char **value = values.get(); value && *value; ++value) {
        const std::string_view name = *value;
        if (name.ends_with(extension))
            ids.emplace_back(name.substr(0, name.size() - extension.size()));
    }
    return ids;
}

std::string without(std::string_view list, std::string_view name) {
    std::string rest;
    for (const auto item : nonEmptyPieces(list, ';')) {
        if (item != name)
            rest.append(item).append(";");
    }
    return rest;
}

// KIO leaves out an application whose association was removed, also when it is the default.
void forgetRemoval(KeyFileText &text, const std::string &type, const std::string &fileName) {
    const auto removed = text.value(removedGroup, type);
    if (!removed)
        return;
    const auto rest = without(*removed, fileName);
    if (rest.empty())
        text.remove(removedGroup, type);
    else if (rest.size() < removed->size())
        text.set(removedGroup, type, rest);
}

} // namespace

MimeDefaults::MimeDefaults(const XdgSession &xdgSession, const DesktopEntries &desktopEntries)
    : session(xdgSession), entries(desktopEntries), order(listsInOrder()), lists(parse) {}

MimeDefaults::List MimeDefaults::parse(const std::optional<std::string> &bytes) {
    List list;
    if (!bytes)
        return list;
    const GKeyFilePointer file(g_key_file_new());
    if (!g_key_file_load_from_data(file.get(), bytes->c_str(), bytes->size(), G_KEY_FILE_NONE, nullptr)) {
        list.isRejected = !bytes->empty();
        return list;
    }
    const GStringsPointer types(g_key_file_get_keys(file.get(), defaultsGroup, nullptr, nullptr));
    for (char **type = types.get(); type && *type; ++type) {
        if (std::string_view(*type).starts_with(typePrefix))
            list.defaults.emplace(*type + typePrefix.size(), idsOf(file.get(), *type));
    }
    return list;
}

std::vector<std::string> MimeDefaults::listsInOrder() const {
    auto folders = session.allConfigFolders();
    for (const auto &folder : session.allDataFolders())
        folders.push_back(folder + "/applications");
    std::vector<std::string> paths;
    for (const auto &folder : folders) {
        for (const auto &desktop : session.desktops)
            paths.push_back(folder + '/' + desktop + "-mimeapps.list");
        paths.push_back(folder + "/mimeapps.list");
    }
    return paths;
}

std::vector<std::string> MimeDefaults::userListsOfDesktops() const {
    std::vector<std::string> paths;
    std::error_code error;
    for (std::filesystem::directory_iterator item(session.configHome, error), end; !error && item != end;
         item.increment(error)) {
        const auto path = item->path().string();
        if (path.ends_with("-mimeapps.list"))
            paths.push_back(path);
    }
    return paths;
}

std::vector<std::string> MimeDefaults::defaultsIn(const std::string &path, const std::string &scheme) const {
    const auto &list = lists.at(path);
    const auto found = list.defaults.find(scheme);
    return found == list.defaults.end() ? std::vector<std::string>() : found->second;
}

bool MimeDefaults::isNamedIn(const std::string &path, const std::string &scheme,
                             const std::string &id) const {
    const auto ids = defaultsIn(path, scheme);
    return std::ranges::find(ids, id) != ids.end();
}

std::vector<std::string> MimeDefaults::decisiveUserLists() const {
    std::vector<std::string> paths;
    for (const auto &path : order) {
        if (path == userList() || exists(path))
            paths.push_back(path);
        if (path == userList())
            break;
    }
    return paths;
}

bool MimeDefaults::userListNames(const std::string &scheme, const std::string &id) const {
    return std::ranges::any_of(decisiveUserLists(),
                               [&](const auto &path) { return isNamedIn(path, scheme, id); });
}

bool MimeDefaults::isRejected(const std::string &path) const {
    return lists.at(path).isRejected;
}

std::optional<MimeDefaults::Setting> MimeDefaults::setting(const std::string &scheme) const {
    for (const auto &path : order) {
        for (const auto &id : defaultsIn(path, scheme)) {
            if (entries.entry(id))
                return Setting{path, id};
        }
    }
    return std::nullopt;
}

std::optional<std::string> withInvalidLinesAsComments(const std::string &bytes) {
    if (isValidForGLib(bytes))
        return bytes;
    std::string valid;
    bool inGroup = false;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string line(rest.substr(0, std::min(rest.find('\n'), rest.size() - 1) + 1));
        rest.remove_prefix(line.size());
        const bool isBlank = KeyFileLine::parse(line).kind == KeyFileLine::Kind::blank;
        const bool isGroup = isValidForGLib(line) && !isBlank;
        inGroup = inGroup || isGroup;
        const bool isValid = isGroup || isBlank || (inGroup && isValidForGLib("[g]\n" + line));
        valid += isValid ? line : "#" + line;
    }
    return isValidForGLib(valid) ? std::optional(valid) : std::nullopt;
}

bool MimeDefaults::write(const std::string &path, const std::string &scheme, const std::string &id) {
    const auto bytes = readForChange(path);
    const auto valid = bytes ? withInvalidLinesAsComments(*bytes) : std::nullopt;
    if (!valid)
        return false;
    KeyFileText text(*valid);
    const auto type = std::string(typePrefix) + scheme;
    const auto fileName = id + std::string(extension);
    text.set(defaultsGroup, type, fileName);
    forgetRemoval(text, type, fileName);
    return text.bytes() == *bytes || bool(replaceConfigurationFile(path, text.bytes()));
}

bool MimeDefaults::set(const std::string &scheme, const std::string &id) {
    bool isWritten = write(userList(), scheme, id);
    for (const auto &path : decisiveUserLists()) {
        if (!defaultsIn(path, scheme).empty())
            isWritten = write(path, scheme, id) && isWritten;
    }
    return isWritten;
}

bool MimeDefaults::replace(const std::string &scheme, const std::string &oldID, const std::string &newID) {
    bool isWritten = true;
    for (const auto &path : userListsOfDesktops()) {
        if (isNamedIn(path, scheme, oldID))
            isWritten = write(path, scheme, newID) && isWritten;
    }
    return isWritten;
}

} // namespace fernhop::freedesktop
