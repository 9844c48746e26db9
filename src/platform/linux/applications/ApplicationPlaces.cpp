#include "platform/linux/applications/ApplicationPlaces.h"

#include "platform/linux/base/Text.h"

#include <algorithm>

namespace fernhop::freedesktop {

namespace {

void addOnce(std::vector<std::string> &list, const std::string &text) {
    if (std::find(list.begin(), list.end(), text) == list.end())
        list.push_back(text);
}

std::vector<std::string> applicationFolders(const XdgSession &session) {
    std::vector<std::string> folders;
    for (const auto &data : session.allDataFolders())
        addOnce(folders, data + "/applications");
    addOnce(folders, session.dataHome + "/flatpak/exports/share/applications");
    addOnce(folders, "/var/lib/flatpak/exports/share/applications");
    addOnce(folders, "/var/lib/snapd/desktop/applications");
    return folders;
}

/// The names for one locale.
std::vector<std::string> namesOf(std::string_view locale) {
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
    addOnce(names, language + country + modifier);
    addOnce(names, language + country);
    addOnce(names, language + modifier);
    addOnce(names, language);
    return names;
}

std::string localeList(const Environment &environment) {
    for (const auto *name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (auto locales = environment.value(name, {}); !locales.empty())
            return locales;
    }
    return {};
}

} // namespace

ApplicationPlaces applicationPlaces(const Environment &environment) {
    const auto session = XdgSession::of(environment);
    return {applicationFolders(session), environment.folders("PATH", "/usr/local/bin:/usr/bin:/bin"),
            localeNames(localeList(environment)), session.home, session.desktops};
}

ApplicationLayout applicationLayout(const ApplicationPlaces &places) {
    ApplicationLayout layout{{}, "desktop"};
    for (const auto &folder : places.folders)
        layout.directories.push_back(Url::fileUrl(folder));
    return layout;
}

std::vector<std::string> localeNames(std::string_view locales) {
    std::vector<std::string> names;
    for (const auto locale : pieces(locales, ':')) {
        for (auto &name : namesOf(locale))
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace fernhop::freedesktop
