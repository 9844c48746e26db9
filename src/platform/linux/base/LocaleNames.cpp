#include "platform/linux/base/LocaleNames.h"

#include <algorithm>

namespace fernhop::freedesktop {

std::vector<std::string> localeNames(std::string_view locale) {
    const auto at = std::min(locale.find('@'), locale.size());
    const std::string modifier(locale.substr(at));
    const auto withoutModifier = locale.substr(0, at);
    const auto withoutEncoding = withoutModifier.substr(0, withoutModifier.find('.'));
    const auto underscore = std::min(withoutEncoding.find('_'), withoutEncoding.size());
    const std::string language(withoutEncoding.substr(0, underscore));
    const std::string country(withoutEncoding.substr(underscore));
    if (language.empty() || language == "C" || language == "POSIX")
        return {};

    std::vector<std::string> names;
    const auto add = [&](const std::string &name) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    };
    add(language + country + modifier);
    add(language + country);
    add(language + modifier);
    add(language);
    return names;
}

std::vector<std::string> localeNamesOfList(std::string_view locales) {
    std::vector<std::string> names;
    while (!locales.empty()) {
        const auto end = std::min(locales.find(':'), locales.size());
        for (auto &name : localeNames(locales.substr(0, end)))
            names.push_back(std::move(name));
        locales.remove_prefix(std::min(end + 1, locales.size()));
    }
    return names;
}

} // namespace fernhop::freedesktop
