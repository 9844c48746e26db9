#include "platform/linux/applications/ApplicationPlaces.h"

#include "platform/linux/base/LocaleNames.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace fernhop::freedesktop {

namespace {

constexpr const char *flatpakSystemFolder = "/var/lib/flatpak/exports/share/applications";
constexpr const char *snapFolder = "/var/lib/snapd/desktop/applications";

std::string nonEmpty(const EnvironmentReader &environment, const char *name, std::string_view otherwise) {
    auto value = environment(name).value_or(std::string());
    return value.empty() ? std::string(otherwise) : value;
}

/// The elements of a list separated by colons that are absolute paths; others are to be ignored.
std::vector<std::string> absolutePaths(std::string_view list) {
    std::vector<std::string> paths;
    while (!list.empty()) {
        const auto end = std::min(list.find(':'), list.size());
        if (list.front() == '/')
            paths.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return paths;
}

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

std::vector<std::string> applicationFolders(const EnvironmentReader &environment, const std::string &home) {
    std::vector<std::string> folders;
    const auto add = [&](const std::string &folder) {
        if (std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(folder);
    };
    std::string dataHome = nonEmpty(environment, "XDG_DATA_HOME", {});
    if (!dataHome.starts_with('/'))
        dataHome = home + "/.local/share";
    dataHome = withoutTrailingSlashes(dataHome);
    add(dataHome + "/applications");
    for (const auto &data :
         absolutePaths(nonEmpty(environment, "XDG_DATA_DIRS", "/usr/local/share:/usr/share")))
        add(withoutTrailingSlashes(data) + "/applications");
    add(dataHome + "/flatpak/exports/share/applications");
    add(flatpakSystemFolder);
    add(snapFolder);
    return folders;
}

std::string homeByUserDatabase() {
    const passwd *user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

} // namespace

ApplicationPlaces applicationPlaces(const EnvironmentReader &environment) {
    ApplicationPlaces places;
    places.home = withoutTrailingSlashes(nonEmpty(environment, "HOME", "/"));
    places.folders = applicationFolders(environment, places.home);
    places.programFolders = absolutePaths(nonEmpty(environment, "PATH", "/usr/local/bin:/usr/bin:/bin"));
    std::string locales;
    for (const auto *name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (locales.empty())
            locales = nonEmpty(environment, name, {});
    }
    places.locales = localeNamesOfList(locales);
    return places;
}

ApplicationPlaces applicationPlacesOfProcess() {
    return applicationPlaces([](const char *name) -> std::optional<std::string> {
        const char *value = std::getenv(name);
        if (std::string_view(name) == "HOME" && (value == nullptr || *value == '\0'))
            return homeByUserDatabase();
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    });
}

ApplicationLayout applicationLayout(const ApplicationPlaces &places) {
    ApplicationLayout layout{{}, "desktop"};
    for (const auto &folder : places.folders)
        layout.directories.push_back(Url::fileUrl(folder));
    return layout;
}

} // namespace fernhop::freedesktop
