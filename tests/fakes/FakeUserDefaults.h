#pragma once

#include "platform/UserDefaults.h"

#include <charconv>
#include <functional>
#include <vector>

namespace fernhop::fakes {

/// Settings in memory, with the conversions of the real ones. Tests can store values of any type in `stored`;
/// `writes` counts the writes.
class FakeUserDefaults : public UserDefaults {
  public:
    PropertyDictionary stored;
    bool refusesWrites = false; ///< every write is dropped
    int writes = 0;
    int updates = 0;
    std::vector<PropertyDictionary> history;           ///< `stored` after each write
    std::function<void(std::string_view key)> atWrite; ///< called after each write

    std::optional<PropertyDictionary> dictionaryForKey(std::string_view key) const override {
        return valueOf<PropertyDictionary>(key);
    }

    std::optional<std::string> dataForKey(std::string_view key) const override {
        const auto data = valueOf<PropertyData>(key);
        return data ? std::optional(data->bytes) : std::nullopt;
    }

    std::optional<std::string> stringForKey(std::string_view key) const override {
        if (const auto number = valueOf<std::int64_t>(key))
            return std::to_string(*number);
        if (const auto truth = valueOf<bool>(key))
            return *truth ? "1" : "0";
        if (const auto real = valueOf<double>(key)) {
            char text[32];
            return std::string(text, std::to_chars(text, text + sizeof text, *real).ptr);
        }
        return valueOf<std::string>(key);
    }

    bool boolForKey(std::string_view key) const override {
        if (const auto number = valueOf<std::int64_t>(key))
            return *number != 0;
        if (const auto real = valueOf<double>(key))
            return *real != 0;
        if (const auto text = valueOf<std::string>(key))
            return !text->empty() &&
                   std::string_view("YyTt123456789").find(text->front()) != std::string_view::npos;
        return valueOf<bool>(key).value_or(false);
    }

    bool setObject(std::optional<PropertyValue> value, std::string_view key) override {
        if (refusesWrites) {
            hasDropped = true;
            return false;
        }
        ++writes;
        if (value)
            stored.insert_or_assign(std::string(key), std::move(*value));
        else
            stored.erase(std::string(key));
        history.push_back(stored);
        if (atWrite)
            atWrite(key);
        return true;
    }

    bool setBool(bool value, std::string_view key) override { return setObject(PropertyValue{value}, key); }

    bool update(const std::function<void()> &change) override {
        ++updates;
        hasDropped = false;
        change();
        return !hasDropped;
    }

  private:
    bool hasDropped = false; ///< in the latest update

    template <typename Type>
    std::optional<Type> valueOf(std::string_view key) const {
        const auto found = stored.find(key);
        const Type *value = found == stored.end() ? nullptr : found->second.as<Type>();
        return value ? std::optional(*value) : std::nullopt;
    }
};

} // namespace fernhop::fakes
