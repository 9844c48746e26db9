#pragma once

#include "rules/Browser.h"
#include "rules/InstalledApplication.h"
#include "rules/URLRule.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace fernhop::cli {

/// Members keep the order in which they are added.
using Json = nlohmann::ordered_json;

/// The document as indented text that ends with a newline. Bytes that are not valid UTF-8 become replacement
/// characters.
[[nodiscard]] std::string documentText(const Json &document);

/// The members "id", "pattern" and "browserBundleID".
[[nodiscard]] Json toJson(const URLRule &rule);

/// The members "name", "bundleID" and "appURL".
[[nodiscard]] Json toJson(const Browser &browser);

/// The members of a browser, and "urlSchemes", an array.
[[nodiscard]] Json toJson(const InstalledApplication &application);

/// The text, or null.
[[nodiscard]] Json toJson(const std::optional<std::string> &text);

/// The record, or null.
template <typename Record>
[[nodiscard]] Json toJson(const std::optional<Record> &record) {
    return record ? toJson(*record) : Json();
}

} // namespace fernhop::cli
