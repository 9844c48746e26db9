#pragma once

#include "platform/UserDefaults.h"

namespace fernhop::macos {

/// The application's standard user-defaults domain.
class StandardDefaults : public UserDefaults {
  public:
    [[nodiscard]] std::optional<PropertyDictionary> dictionaryForKey(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> dataForKey(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const override;
    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    bool setObject(std::optional<PropertyValue> value, std::string_view key) override;
    bool setBool(bool value, std::string_view key) override;
    bool update(const std::function<void()> &change) override;
};

} // namespace fernhop::macos
