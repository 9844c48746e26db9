#include "platform/linux/applications/PosixFileManager.h"

#include "platform/Utf8.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <tuple>

namespace fernhop::freedesktop {

namespace {

using Directory = std::unique_ptr<DIR, decltype([](DIR *directory) { closedir(directory); })>;

bool isFolder(int parent, const dirent &item) {
    if (item.d_type != DT_LNK && item.d_type != DT_UNKNOWN)
        return item.d_type == DT_DIR;
    struct stat status {};
    return fstatat(parent, item.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

class PosixEnumerator : public DirectoryEnumerator {
  public:
    explicit PosixEnumerator(std::unique_ptr<DirectoryWalk> directoryWalk) : walk(std::move(directoryWalk)) {}

    std::optional<Url> next() override {
        const auto path = walk->next();
        return path ? std::optional(Url::fileUrl(*path)) : std::nullopt;
    }

    void skipDescendants() override { walk->skipDescendants(); }

  private:
    std::unique_ptr<DirectoryWalk> walk;
};

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

PosixFileManager::PosixFileManager(std::string homeFolder) : home(std::move(homeFolder)) {}

Url PosixFileManager::homeDirectoryForCurrentUser() const {
    return Url::fileUrl(home);
}

bool PosixFileManager::fileExistsAtPath(const std::string &path) const {
    struct stat status {};
    return path.find('\0') == std::string::npos && stat(path.c_str(), &status) == 0;
}

std::unique_ptr<DirectoryEnumerator> PosixFileManager::enumeratorAtUrl(const Url &folder) const {
    const std::string path = folder.isFileUrl() ? folder.path() : std::string();
    auto walk = path.empty() || path.find('\0') != std::string::npos ? nullptr : DirectoryWalk::over(path);
    return walk ? std::make_unique<PosixEnumerator>(std::move(walk)) : nullptr;
}

std::string PosixFileManager::displayNameAtPath(const std::string &path) const {
    const auto end = path.find_last_not_of('/');
    if (end == std::string::npos)
        return path.empty() ? path : "/";
    const auto slash = path.rfind('/', end);
    const auto start = slash == std::string::npos ? 0 : slash + 1;
    return replaceUtf8Characters(path.substr(start, end + 1 - start),
                                 [](const auto &character, std::string_view bytes) {
                                     return character ? bytes : std::string_view("\xEF\xBF\xBD");
                                 });
}

} // namespace fernhop::freedesktop
