#pragma once

#include "platform/UserDefaults.h"
#include "platform/linux/base/Files.h"
#include "platform/linux/settings/PropertyList.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// Settings in a property-list file, as other programs and the macOS edition write it too. A file that was
/// not changed is not read again; a change of any program is seen by the next read.
///
/// The file is replaced whole: at any moment, a power cut included, it holds either what it held before or
/// what it holds after. A symbolic link at its path is followed and stays. A file that is no property list
/// reads as empty. It is kept under another name, once, before it is overwritten.
class PropertyListDefaults final : public UserDefaults {
  public:
    /// Says whether the application can read a value that is stored under one of its keys. The file is kept
    /// under another name before a value that it cannot read is overwritten.
    using ReadableCheck = std::function<bool(std::string_view key, const PropertyValue &stored)>;

    /// Much longer than a write takes: a process that holds the settings for so long is stopped or stuck.
    static constexpr std::chrono::seconds longestUsualWait{10};

    /// Nothing need be at `path`, nor its folder be there. Without a check every value of a known type is
    /// readable.
    explicit PropertyListDefaults(const std::filesystem::path &path, ReadableCheck check = {},
                                  std::chrono::milliseconds wait = longestUsualWait);

    [[nodiscard]] std::optional<PropertyDictionary> dictionaryForKey(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> dataForKey(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const override;
    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    bool setObject(std::optional<PropertyValue> value, std::string_view key) override;
    bool setBool(bool value, std::string_view key) override;

    /// What of the file cannot be read now and therefore counts as empty, a sentence; nothing when all can.
    [[nodiscard]] std::optional<std::string> problem() const;

    /// Has `handler` called with each new problem when a read or write comes upon it, once until it changes.
    void onProblem(std::function<void(const std::string &problem)> handler);

    /// The file is replaced once, after `change`, if that wrote anything. When another process holds the
    /// settings for longer than this one waits, `change` runs and what it writes is dropped; the next updates
    /// wait for a tenth of that time.
    bool update(const std::function<void()> &change) override;

  private:
    /// The file as it was last read, or as an update is changing it.
    struct Snapshot {
        PropertyListNode tree; ///< a dictionary; null when there is none to read
        std::optional<FileIdentity> identity;
        bool isCurrent = false; ///< as long as the file has that identity
        bool isUnreadable = false;
        std::string problem; ///< empty: none
    };

    /// The update that is going on.
    struct Update {
        std::optional<FileLock> lock; ///< without it nothing is written
        bool hasChanges = false;
        bool keepsOldFile = false;
        bool hasFailed = false; ///< something that was written was dropped
    };

    void *node(std::string_view key) const;
    [[nodiscard]] std::optional<PropertyValue> valueForKey(std::string_view key) const;
    void refresh() const;
    void load() const;
    [[nodiscard]] std::string unreadableValue() const;
    [[nodiscard]] bool store(const std::optional<PropertyValue> &value, const std::string &key);
    [[nodiscard]] bool isReadableNode(void *node, std::string_view key) const;
    [[nodiscard]] bool commit();

    std::string path;
    ReadableCheck isReadable;
    std::chrono::milliseconds longestWait;
    mutable Snapshot snapshot;
    bool lockWasRefused = false; ///< when it was asked for last
    mutable std::string reportedProblem;
    std::function<void(const std::string &)> reportProblem;
    std::optional<Update> current;
};

} // namespace fernhop::freedesktop
