#pragma once

#include "rules/URLRule.h"
#include "settings/Preferences.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace fernhop::cli {

/// All rules and settings, as they are carried from one place to another.
struct SettingsDocument {
    std::vector<URLRule> urlRules;
    AppRules appRules;
    std::optional<std::string> routingFallbackBrowserID;
    bool restoresDefaultBrowserOnQuit = false;

    bool operator==(const SettingsDocument &) const = default;
};

/// What is stored now.
[[nodiscard]] SettingsDocument storedSettings(const Preferences &preferences);

/// Replaces what is stored, as one update. False when it could not be stored.
[[nodiscard]] bool storeSettings(const SettingsDocument &document, Preferences &preferences);

/// The document as JSON: one object with the member "version", 1, and the settings' keys.
[[nodiscard]] std::string encodeSettings(const SettingsDocument &document);

/// The document in a JSON text, or in words why it is none. All members must be there, none besides, none
/// twice, each of its type: whatever differs was written by another program or another version, and half of
/// it would be worse than none. Everything that `encodeSettings` writes is accepted. A text with a zero
/// character is not: settings cannot hold it.
[[nodiscard]] std::variant<SettingsDocument, std::string> decodeSettings(std::string_view json);

} // namespace fernhop::cli
