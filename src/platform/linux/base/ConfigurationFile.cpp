#include "platform/linux/base/ConfigurationFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace fernhop::freedesktop {

namespace {

bool isRegularOrMissing(const std::string &path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) != 0 ? errno == ENOENT : S_ISREG(found.st_mode);
}

} // namespace

std::optional<std::string> readForChange(const std::string &path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0 && errno == ENOENT)
        return "";
    return readFile(path);
}

Result<> replaceConfigurationFile(const std::string &path, std::string_view bytes) {
    const auto target = followedLinks(path);
    if (!target)
        return Failure::ofSystem(ELOOP);
    if (!isRegularOrMissing(*target))
        return Failure{*target + " is not a regular file", EINVAL};
    if (auto made = makeFolder(folderOf(*target)); !made)
        return made;
    return replaceFile(*target, bytes, Writers::many);
}

bool canReplaceConfigurationFile(const std::string &path) {
    const auto target = followedLinks(path);
    if (!target || !isRegularOrMissing(*target))
        return false;
    std::string folder = folderOf(*target);
    while (!exists(folder) && folder != "/" && folder != ".")
        folder = folderOf(folder);
    return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

} // namespace fernhop::freedesktop
