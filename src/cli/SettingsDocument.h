#pragma once

#include "platform/CommandResult.h"
#include "rules/URLRule.h"
#include "settings/Preferences.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace fernhop::cli {

/// Larger documents, in bytes, are refused before they are parsed: far above any real settings, and low
/// enough that no document keeps Fernhop busy.
inline constexpr std::size_t largestSettingsDocument = std::size_t{16} << 20U;
inline constexpr std::string_view largerThanDocuments = "it is larger than 16 MiB";

/// All rules and settings, as they are exported and imported.
struct SettingsDocument {
    std::vector<URLRule> urlRules;
    AppRules appRules;
    std::optional<std::string> routingFallbackBrowserID;
    bool restoresDefaultBrowserOnQuit = false;

    bool operator==(const SettingsDocument &) const = default;
};

/// The stored settings.
[[nodiscard]] SettingsDocument storedSettings(const Preferences &preferences);

/// Replaces the stored settings in one update. False when that failed.
[[nodiscard]] bool storeSettings(const SettingsDocument &document, Preferences &preferences);

/// The document as JSON: one object with the member "version", 1, and the settings' keys.
[[nodiscard]] std::string encodeSettings(const SettingsDocument &document);

/// The same without any blanks between its parts, and no longer than the JSON that it was decoded from.
[[nodiscard]] std::string encodeForTransfer(const SettingsDocument &document);

/// The document in a JSON text, or a description of why the text is not one. It must have exactly the
/// expected members, each once and of its type: anything else comes from another program or version, and half
/// of its settings would be worse than none. Everything that `encodeSettings` writes is accepted, up to the
/// largest size. A string
/// with a zero character is refused, since settings cannot store it.
[[nodiscard]] std::variant<SettingsDocument, std::string> decodeSettings(std::string_view json);

/// The result of an import whose document has this fault, one of `decodeSettings`.
[[nodiscard]] CommandResult refusedDocument(std::string_view fault);

} // namespace fernhop::cli
