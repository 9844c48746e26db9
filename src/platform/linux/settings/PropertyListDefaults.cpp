#include "platform/linux/settings/PropertyListDefaults.h"

#include <fcntl.h>
#include <plist/plist.h>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace fernhop::freedesktop {

namespace {

std::string decimalText(double number) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

bool beginsLikeYes(std::string_view text) {
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

} // namespace

SettingsFile::SettingsFile(std::string location) : path(std::move(location)) {}

std::optional<FileIdentity> SettingsFile::identity() const {
    return FileIdentity::of(path);
}

std::optional<SettingsFile::Contents> SettingsFile::read() const {
    const FileDescriptor file = openForReading(path);
    if (file)
        return Contents{FileIdentity::of(file), readFile(file, propertyListLimit::bytes)};
    return errno == ENOENT ? std::nullopt : std::optional(Contents{identity(), std::nullopt});
}

std::optional<FileLock> SettingsFile::lock(std::chrono::milliseconds atMost) const {
    const auto target = followedLinks(path);
    if (!target || !makeFolder(folderOf(*target)))
        return std::nullopt;
    return FileLock::acquire(*target + ".lock", atMost);
}

Result<> SettingsFile::replace(std::string_view bytes) const {
    return replaceFile(path, bytes, Writers::one);
}

Result<> SettingsFile::keepAside() const {
    const auto target = followedLinks(path);
    if (!target)
        return Failure::ofSystem(ELOOP);
    for (int number = 1;; ++number) {
        const std::string kept = *target + ".unreadable-" + std::to_string(number);
        if (::link(target->c_str(), kept.c_str()) == 0)
            return Success{};
        // A second name is not given to folders, nor on every file system; there the first one is taken away.
        if (errno != EEXIST &&
            ::renameat2(AT_FDCWD, target->c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0)
            return Success{};
        if (errno != EEXIST)
            return Failure::ofSystem(errno);
    }
}

PropertyListDefaults::PropertyListDefaults(std::filesystem::path path, ReadableCheck check,
                                           std::chrono::milliseconds wait)
    : file(std::move(path)), isReadable(std::move(check)), longestWait(wait) {}

std::optional<PropertyDictionary> PropertyListDefaults::dictionaryForKey(std::string_view key) const {
    void *const found = node(key);
    if (!found || plist_get_node_type(found) != PLIST_DICT)
        return std::nullopt;
    auto value = propertyValue(found);
    return value ? std::optional(std::move(std::get<PropertyDictionary>(value->value))) : std::nullopt;
}

std::optional<std::string> PropertyListDefaults::dataForKey(std::string_view key) const {
    void *const found = node(key);
    if (!found || plist_get_node_type(found) != PLIST_DATA)
        return std::nullopt;
    std::uint64_t length = 0;
    const char *bytes = plist_get_data_ptr(found, &length);
    return bytes ? std::string(bytes, length) : std::string();
}

std::optional<std::string> PropertyListDefaults::stringForKey(std::string_view key) const {
    void *const found = node(key);
    const auto value = found ? propertyValue(found) : std::nullopt;
    if (!value)
        return std::nullopt;
    if (const auto *number = value->as<std::int64_t>())
        return std::to_string(*number);
    if (const auto *number = value->as<double>())
        return decimalText(*number);
    if (const auto *truth = value->as<bool>())
        return *truth ? "1" : "0";
    const auto *text = value->as<std::string>();
    return text ? std::optional(*text) : std::nullopt;
}

bool PropertyListDefaults::boolForKey(std::string_view key) const {
    void *const found = node(key);
    const auto value = found ? propertyValue(found) : std::nullopt;
    if (!value)
        return false;
    if (const auto *number = value->as<std::int64_t>())
        return *number != 0;
    if (const auto *number = value->as<double>())
        return *number != 0;
    if (const auto *text = value->as<std::string>())
        return beginsLikeYes(*text);
    const auto *truth = value->as<bool>();
    return truth && *truth;
}

bool PropertyListDefaults::setObject(std::optional<PropertyValue> value, std::string_view key) {
    bool isTaken = false;
    const bool isPartOfUpdate = current.has_value();
    const bool isStored = update([&] {
        isTaken = store(value, std::string(key));
        current->hasFailed = current->hasFailed || !isTaken;
    });
    return isTaken && (isPartOfUpdate || isStored);
}

bool PropertyListDefaults::setBool(bool value, std::string_view key) {
    return setObject(PropertyValue{value}, key);
}

bool PropertyListDefaults::update(const std::function<void()> &change) {
    if (current) {
        change();
        return !current->hasFailed;
    }
    struct Ending {
        PropertyListDefaults &defaults;
        ~Ending() {
            if (defaults.current->hasChanges)
                defaults.snapshot = {};
            defaults.current.reset();
        }
    };
    current.emplace(Update{file.lock(longestWait)});
    const Ending ending{*this};
    refresh();
    change();
    const bool isStored = !current->hasChanges || commit();
    return isStored && !current->hasFailed;
}

/// The node under a key, valid until the next call of anything; null when there is none.
void *PropertyListDefaults::node(std::string_view key) const {
    const bool isBeingChanged = current && current->hasChanges;
    if (!isBeingChanged)
        refresh();
    return snapshot.tree ? plist_dict_get_item(snapshot.tree.get(), std::string(key).c_str()) : nullptr;
}

void PropertyListDefaults::refresh() const {
    if (snapshot.isCurrent && snapshot.identity == file.identity())
        return;
    snapshot = {};
    const auto contents = file.read();
    if (!contents)
        return;
    snapshot.identity = contents->identity;
    snapshot.isCurrent = contents->identity && contents->identity->isSettled();
    const bool isEmpty = contents->bytes && contents->bytes->empty();
    if (isEmpty)
        return;
    if (contents->bytes)
        snapshot.tree = decodePropertyList(*contents->bytes);
    if (snapshot.tree && plist_get_node_type(snapshot.tree.get()) != PLIST_DICT)
        snapshot.tree.reset();
    snapshot.isUnreadable = !snapshot.tree;
}

/// Changes the snapshot; the file follows at the end of the update.
bool PropertyListDefaults::store(const std::optional<PropertyValue> &value, const std::string &key) {
    PropertyListNode item = value ? propertyListNode(*value) : nullptr;
    if (!current->lock || (value && !item))
        return false;
    if (!snapshot.tree)
        snapshot.tree.reset(plist_new_dict());
    plist_t dictionary = snapshot.tree.get();
    if (plist_t old = plist_dict_get_item(dictionary, key.c_str()); old && !isReadableNode(old, key))
        current->keepsOldFile = true;
    if (item)
        plist_dict_set_item(dictionary, key.c_str(), item.release());
    else
        plist_dict_remove_item(dictionary, key.c_str());
    current->hasChanges = true;
    return true;
}

bool PropertyListDefaults::isReadableNode(void *node, std::string_view key) const {
    const auto value = propertyValue(node);
    return value && (!isReadable || isReadable(key, *value));
}

bool PropertyListDefaults::commit() {
    const auto bytes = encodePropertyList(snapshot.tree);
    if (!bytes)
        return false;
    const bool keepsOldFile = snapshot.isUnreadable || current->keepsOldFile;
    return (!keepsOldFile || file.keepAside()) && file.replace(*bytes);
}

} // namespace fernhop::freedesktop
