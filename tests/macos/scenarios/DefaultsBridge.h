#pragma once

#include "fakes/FakeUserDefaults.h"
#include "platform/macos/StandardDefaults.h"

namespace fernhop::macos {

/// The user defaults, filled from the fake before each use and copied back after each change. The fake must
/// outlive the bridge.
class DefaultsBridge : public UserDefaults {
  public:
    explicit DefaultsBridge(fakes::FakeUserDefaults &inMemory) : memory(inMemory) {}

    std::optional<PropertyDictionary> dictionaryForKey(std::string_view key) const override;
    std::optional<std::string> dataForKey(std::string_view key) const override;
    std::optional<std::string> stringForKey(std::string_view key) const override;
    bool boolForKey(std::string_view key) const override;
    bool setObject(std::optional<PropertyValue> value, std::string_view key) override;
    bool setBool(bool value, std::string_view key) override;
    bool update(const std::function<void()> &change) override;

  private:
    [[nodiscard]] const StandardDefaults &filled() const;
    void readBack(std::string_view key);

    fakes::FakeUserDefaults &memory;
    StandardDefaults system;
};

} // namespace fernhop::macos
