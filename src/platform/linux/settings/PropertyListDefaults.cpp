#include "platform/linux/settings/PropertyListDefaults.h"

#include <fcntl.h>
#include <plist/plist.h>
#include <sys/stat.h>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>
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

/// The right to change the file at `path`, whose folder is made when it is not there; nothing when it cannot
/// be had in that time.
std::optional<FileLock> lockFor(const std::string &path, std::chrono::milliseconds atMost) {
    const auto target = followedLinks(path);
    if (!target || !makeFolder(folderOf(*target)))
        return std::nullopt;
    return FileLock::acquire(*target + ".lock", atMost);
}

bool isSameFile(const std::string &one, const std::string &other) {
    const auto left = FileIdentity::of(one);
    const auto right = FileIdentity::of(other);
    return left && right && left->device == right->device && left->inode == right->inode;
}

/// Gives the file a name of its own beside it (".unreadable-" and the first free number), unless it has one
/// since a write that failed.
bool keepAside(const std::string &path) {
    const auto target = followedLinks(path);
    if (!target || !exists(*target))
        return target.has_value();
    for (int number = 1;; ++number) {
        const std::string kept = *target + ".unreadable-" + std::to_string(number);
        if (::link(target->c_str(), kept.c_str()) == 0)
            return true;
        if (errno == EEXIST && isSameFile(*target, kept))
            return true;
        // A second name is not given to folders, nor on every file system; there the first one is taken away.
        if (errno != EEXIST &&
            ::renameat2(AT_FDCWD, target->c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0)
            return true;
        if (errno != EEXIST)
            return false;
    }
}

std::string fileProblem(const std::string &path, const std::string &reason) {
    return "The settings file " + path + " cannot be read (" + reason + "), so no rules and settings apply.";
}

/// Why a file that was opened could not be read as settings.
std::string faultOf(const FileDescriptor &file, bool hasBytes) {
    struct stat status {};
    if (hasBytes)
        return "it is damaged";
    if (::fstat(file.get(), &status) == 0 && !S_ISREG(status.st_mode))
        return "it is not a regular file";
    return "it is larger than 64 MiB, or its disk fails";
}

} // namespace

PropertyListDefaults::PropertyListDefaults(const std::filesystem::path &location, ReadableCheck check,
                                           std::chrono::milliseconds wait)
    : path(location), isReadable(std::move(check)), longestWait(wait) {}

std::optional<PropertyDictionary> PropertyListDefaults::dictionaryForKey(std::string_view key) const {
    auto value = valueForKey(key);
    auto *const dictionary = value ? std::get_if<PropertyDictionary>(&value->value) : nullptr;
    return dictionary ? std::optional(std::move(*dictionary)) : std::nullopt;
}

std::optional<std::string> PropertyListDefaults::dataForKey(std::string_view key) const {
    auto value = valueForKey(key);
    auto *const data = value ? std::get_if<PropertyData>(&value->value) : nullptr;
    return data ? std::optional(std::move(data->bytes)) : std::nullopt;
}

std::optional<std::string> PropertyListDefaults::stringForKey(std::string_view key) const {
    const auto value = valueForKey(key);
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
    const auto value = valueForKey(key);
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
    // Once is enough to notice that whoever holds the settings has stopped.
    current.emplace(Update{lockFor(path, lockWasRefused ? longestWait / 10 : longestWait)});
    lockWasRefused = !current->lock;
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

std::optional<PropertyValue> PropertyListDefaults::valueForKey(std::string_view key) const {
    void *const found = node(key);
    return found ? propertyValue(found) : std::nullopt;
}

std::optional<std::string> PropertyListDefaults::problem() const {
    if (!current || !current->hasChanges)
        refresh();
    return snapshot.problem.empty() ? std::nullopt : std::optional(snapshot.problem);
}

void PropertyListDefaults::onProblem(std::function<void(const std::string &)> handler) {
    reportProblem = std::move(handler);
}

void PropertyListDefaults::refresh() const {
    if (snapshot.isCurrent && snapshot.identity == FileIdentity::of(path))
        return;
    load();
    if (snapshot.problem == reportedProblem)
        return;
    reportedProblem = snapshot.problem;
    if (reportProblem && !reportedProblem.empty())
        reportProblem(reportedProblem);
}

void PropertyListDefaults::load() const {
    snapshot = {};
    const FileDescriptor file = openForReading(path);
    const int openError = errno;
    if (!file && openError == ENOENT) {
        if (std::error_code error; std::filesystem::is_symlink(path, error))
            snapshot.problem = fileProblem(path, "it is a symbolic link to a file that is missing");
        return;
    }
    snapshot.identity = file ? FileIdentity::of(file) : FileIdentity::of(path);
    snapshot.isCurrent = snapshot.identity && snapshot.identity->isSettled();
    // Nothing for what is no regular file, may not be read, or is larger than a property list may be.
    const auto bytes = readFile(file, propertyListLimit::bytes);
    if (bytes && bytes->empty())
        return;
    if (bytes)
        snapshot.tree = decodePropertyList(*bytes);
    if (snapshot.tree && plist_get_node_type(snapshot.tree.get()) != PLIST_DICT)
        snapshot.tree.reset();
    snapshot.isUnreadable = !snapshot.tree;
    if (snapshot.tree)
        snapshot.problem = unreadableValue();
    else
        snapshot.problem =
            fileProblem(path, file ? faultOf(file, bytes.has_value()) : Failure::ofSystem(openError).reason);
}

/// The problem with the first value that the application cannot read; empty when it can read all.
std::string PropertyListDefaults::unreadableValue() const {
    plist_dict_iter started = nullptr;
    plist_dict_new_iter(snapshot.tree.get(), &started);
    const std::unique_ptr<void, decltype(&std::free)> iterator(started, std::free);
    while (true) {
        char *key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(snapshot.tree.get(), iterator.get(), &key, &item);
        const std::unique_ptr<char, decltype(&std::free)> owner(key, std::free);
        if (!item)
            return {};
        // An empty array stands for every type that is no setting's.
        if (isReadable && !isReadable(key, propertyValue(item).value_or(PropertyValue{PropertyArray{}})))
            return "The settings file " + path + " holds " + key +
                   " in a form that cannot be read, so it counts as empty.";
    }
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
    return (!keepsOldFile || keepAside(path)) && replaceFile(path, *bytes, Writers::one);
}

} // namespace fernhop::freedesktop
