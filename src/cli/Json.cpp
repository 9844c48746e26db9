#include "cli/Json.h"

namespace fernhop::cli {

std::string documentText(const Json &document) {
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json toJson(const URLRule &rule) {
    return {{"id", rule.id}, {"pattern", rule.pattern}, {"browserBundleID", rule.browserBundleID}};
}

Json toJson(const Browser &browser) {
    return {
        {"name", browser.name}, {"bundleID", browser.bundleID}, {"appURL", browser.appURL.absoluteString()}};
}

Json toJson(const InstalledApplication &application) {
    return {{"name", application.name},
            {"bundleID", application.bundleID},
            {"appURL", application.appURL.absoluteString()},
            {"urlSchemes", application.urlSchemes}};
}

Json toJson(const std::optional<std::string> &text) {
    return text ? Json(*text) : Json();
}

} // namespace fernhop::cli
