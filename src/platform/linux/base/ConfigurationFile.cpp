#include "platform/linux/base/ConfigurationFile.h"

#include "platform/linux/base/SmallFile.h"
#include "platform/linux/base/GPointer.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace fernhop::freedesktop {

namespace {

namespace files = std::filesystem;

constexpr std::size_t largestFile = std::size_t{16} << 20;
constexpr int newFileMode = 0600;
constexpr int newFolderMode = 0700;

std::string targetOf(const std::string &path) {
    std::error_code error;
    const auto target = files::weakly_canonical(path, error);
    return error ? path : target.string();
}

int modeFor(const std::string &path) {
    struct stat found {};
    return stat(path.c_str(), &found) == 0 ? static_cast<int>(found.st_mode & 07777) : newFileMode;
}

bool isReplaceable(const std::string &path) {
    struct stat found {};
    return stat(path.c_str(), &found) != 0 ? errno == ENOENT : S_ISREG(found.st_mode) != 0;
}

} // namespace

std::optional<std::string> readConfigurationFile(const std::string &path) {
    return readSmallFile(path, largestFile);
}

std::optional<std::string> readForChange(const std::string &path) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0 && errno == ENOENT)
        return "";
    return readConfigurationFile(path);
}

bool replaceConfigurationFile(const std::string &path, const std::string &bytes) {
    const auto target = targetOf(path);
    if (!isReplaceable(target))
        return false;
    const GCharPointer folder(g_path_get_dirname(target.c_str()));
    if (g_mkdir_with_parents(folder.get(), newFolderMode) != 0)
        return false;
    const auto careful =
        static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE);
    return g_file_set_contents_full(target.c_str(), bytes.data(), static_cast<gssize>(bytes.size()), careful,
                                    modeFor(target), nullptr);
}

bool canReplaceConfigurationFile(const std::string &path) {
    const auto target = targetOf(path);
    if (!isReplaceable(target))
        return false;
    auto folder = files::path(target).parent_path();
    std::error_code ignored;
    while (folder.has_relative_path() && !files::exists(folder, ignored))
        folder = folder.parent_path();
    return access(folder.c_str(), W_OK | X_OK) == 0;
}

} // namespace fernhop::freedesktop
