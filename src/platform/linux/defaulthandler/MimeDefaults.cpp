#include "platform/linux/defaulthandler/MimeDefaults.h"

#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/KeyFile.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <filesystem>

namespace fernhop::freedesktop {

namespace {

constexpr const char *defaultsGroup = "Default Applications";
constexpr std::string_view removedGroup = "Removed Associations";

bool isValidForGLib(const std::string &text) {
    const GKeyFilePointer file(g_key_file_new());
    return g_key_file_load_from_data(file.get(), text.c_str(), text.size(), G_KEY_FILE_NONE, nullptr);
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

MimeDefaults::MimeDefaults(const XdgSession &session, const MimeLookup &mimeLookup)
    : configHome(session.configHome), lookup(mimeLookup) {}

std::vector<std::string> MimeDefaults::userListsOfDesktops() const {
    std::vector<std::string> paths;
    std::error_code error;
    for (std::filesystem::directory_iterator item(configHome, error), end; !error && item != end;
         item.increment(error)) {
        const auto path = item->path().string();
        if (path.ends_with("-mimeapps.list"))
            paths.push_back(path);
    }
    return paths;
}

bool MimeDefaults::isNamedIn(const std::string &path, const std::string &scheme,
                             const std::string &id) const {
    const auto ids = lookup.defaultsIn(path, scheme);
    return std::ranges::find(ids, id) != ids.end();
}

std::vector<std::string> MimeDefaults::decisiveUserLists() const {
    std::vector<std::string> paths;
    for (const auto &path : lookup.lists()) {
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

bool MimeDefaults::write(const std::string &path, const std::string &scheme, const std::string &id,
                         const std::string &next) {
    const auto bytes = readForChange(path);
    const auto valid = bytes ? withInvalidLinesAsComments(*bytes) : std::nullopt;
    if (!valid)
        return false;
    KeyFileText text(*valid);
    const auto type = std::string(schemeTypePrefix) + scheme;
    const auto fileName = id + std::string(desktopEntryExtension);
    // One name stands without a semicolon, as other programs write it.
    text.set(defaultsGroup, type,
             next.empty() ? fileName : fileName + ';' + next + std::string(desktopEntryExtension) + ';');
    forgetRemoval(text, type, fileName);
    return text.bytes() == *bytes || bool(replaceConfigurationFile(path, text.bytes()));
}

bool MimeDefaults::set(const std::string &scheme, const std::string &id, const std::string &next) {
    bool isWritten = write(userList(), scheme, id, next);
    for (const auto &path : decisiveUserLists()) {
        if (!lookup.defaultsIn(path, scheme).empty())
            isWritten = write(path, scheme, id, next) && isWritten;
    }
    return isWritten;
}

bool MimeDefaults::replace(const std::string &scheme, const std::string &oldID, const std::string &newID) {
    bool isWritten = true;
    for (const auto &path : userListsOfDesktops()) {
        if (isNamedIn(path, scheme, oldID))
            isWritten = write(path, scheme, newID, {}) && isWritten;
    }
    return isWritten;
}

} // namespace fernhop::freedesktop
