#include "platform/linux/applications/DirectoryWalk.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>

namespace fernhop::freedesktop {

namespace {

using Directory = std::unique_ptr<DIR, decltype([](DIR *directory) { closedir(directory); })>;

bool isFolder(int parent, const dirent &item) {
    if (item.d_type != DT_LNK && item.d_type != DT_UNKNOWN)
        return item.d_type == DT_DIR;
    struct stat status {};
    return fstatat(parent, item.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::unique_ptr<DirectoryWalk> DirectoryWalk::over(const std::string &folder) {
    auto walk = std::make_unique<DirectoryWalk>();
    return walk->enter(folder) ? std::move(walk) : nullptr;
}

bool DirectoryWalk::enter(const std::string &folder) {
    const Directory directory(opendir(folder.c_str()));
    struct stat status {};
    if (!directory || fstat(dirfd(directory.get()), &status) != 0)
        return false;
    if (!entered.insert({status.st_dev, status.st_ino}).second)
        return false;
    Level level{folder.ends_with('/') ? folder : folder + '/', {}};
    while (const dirent *item = readdir(directory.get())) {
        if (item->d_name[0] != '.')
            level.items.push_back({item->d_name, isFolder(dirfd(directory.get()), *item)});
    }
    std::sort(level.items.begin(), level.items.end(), [](const Item &left, const Item &right) {
        return std::tie(left.isFolder, left.name) < std::tie(right.isFolder, right.name);
    });
    levels.push_back(std::move(level));
    return true;
}

std::optional<std::string> DirectoryWalk::next() {
    if (const auto folder = std::exchange(toEnter, std::nullopt))
        enter(*folder);
    while (!levels.empty()) {
        auto &level = levels.back();
        if (level.position == level.items.size()) {
            levels.pop_back();
            continue;
        }
        const auto &item = level.items[level.position++];
        std::string path = level.folder + item.name;
        if (item.isFolder)
            toEnter = path;
        return path;
    }
    return std::nullopt;
}

} // namespace fernhop::freedesktop
