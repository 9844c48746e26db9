#pragma once

#include "platform/PropertyValue.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// The application's own settings by key, which the platform keeps across runs. Main thread only. Reads see
/// what was last written, by this process or another one; nothing is cached by the caller. Unreadable values
/// are absent; each write returns whether it succeeded.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// The dictionary stored under `key`; nothing when absent or of another type.
    [[nodiscard]] virtual std::optional<PropertyDictionary> dictionaryForKey(std::string_view key) const = 0;

    /// The data stored under `key`; nothing when absent or of another type.
    [[nodiscard]] virtual std::optional<std::string> dataForKey(std::string_view key) const = 0;

    /// The string stored under `key`, a number as its decimal text; nothing when absent or of another type.
    [[nodiscard]] virtual std::optional<std::string> stringForKey(std::string_view key) const = 0;

    /// The Boolean stored under `key`. A number counts as true when it is not zero, a string when it begins
    /// like a yes ("YES", "true", a digit 1 to 9); absent, or of another type, is false.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) const = 0;

    /// Stores `value` under `key` at once; no value removes the key. False when it was dropped. Within an
    /// update the value is stored with that one, whose result counts too.
    virtual bool setObject(std::optional<PropertyValue> value, std::string_view key) = 0;

    /// Stores a Boolean under `key`, as `setObject` does.
    virtual bool setBool(bool value, std::string_view key) = 0;

    /// Runs `change`, which reads and then writes, as one update: where other processes can write too, they
    /// wait, so that no update is lost. Updates may nest. False when anything that `change` wrote was
    /// dropped.
    virtual bool update(const std::function<void()> &change) = 0;
};

} // namespace fernhop
