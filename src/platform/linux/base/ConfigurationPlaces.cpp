#include "platform/linux/base/ConfigurationPlaces.h"

#include <algorithm>
#include <cstdlib>

namespace fernhop::freedesktop {

namespace {

std::string variable(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

std::vector<std::string> parts(std::string_view list) {
    std::vector<std::string> found;
    while (!list.empty()) {
        const auto part = list.substr(0, list.find(':'));
        if (!part.empty())
            found.emplace_back(part);
        list.remove_prefix(std::min(list.size(), part.size() + 1));
    }
    return found;
}

// Relative paths in XDG variables are to be ignored.
std::string folder(const char *name, const std::string &standard) {
    const auto value = variable(name);
    return value.starts_with('/') ? value : standard;
}

std::vector<std::string> folders(const char *name, std::string_view standard) {
    const auto value = variable(name);
    auto found = parts(value.empty() ? standard : std::string_view(value));
    std::erase_if(found, [](const auto &path) { return !path.starts_with('/'); });
    return found;
}

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// Names become parts of file names, which a slash would lead elsewhere.
std::vector<std::string> desktopNames(std::string_view currentDesktop) {
    auto names = parts(currentDesktop);
    std::erase_if(names, [](const auto &name) { return name.find('/') != std::string::npos; });
    for (auto &name : names)
        std::transform(name.begin(), name.end(), name.begin(), lowerCase);
    return names;
}

std::vector<std::string> joined(const std::string &first, const std::vector<std::string> &rest) {
    std::vector<std::string> all{first};
    all.insert(all.end(), rest.begin(), rest.end());
    return all;
}

} // namespace

ConfigurationPlaces ConfigurationPlaces::fromEnvironment(std::string_view currentDesktop) {
    const auto home = variable("HOME");
    return {
        folder("XDG_CONFIG_HOME", home + "/.config"),
        folders("XDG_CONFIG_DIRS", "/etc/xdg"),
        folder("XDG_DATA_HOME", home + "/.local/share"),
        folders("XDG_DATA_DIRS", "/usr/local/share:/usr/share"),
        desktopNames(currentDesktop),
    };
}

std::vector<std::string> ConfigurationPlaces::allConfigFolders() const {
    return joined(configHome, configDirs);
}

std::vector<std::string> ConfigurationPlaces::allDataFolders() const {
    return joined(dataHome, dataDirs);
}

bool ConfigurationPlaces::isDesktop(std::string_view name) const {
    return std::find(desktops.begin(), desktops.end(), name) != desktops.end();
}

} // namespace fernhop::freedesktop
