#include "platform/linux/applications/PosixFileManager.h"

#include "platform/Utf8.h"
#include "platform/linux/applications/DirectoryWalk.h"

#include <sys/stat.h>

#include <utility>

namespace fernhop::freedesktop {

namespace {

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

/// `text` with each byte that is no part of a valid character replaced by U+FFFD.
std::string validUtf8(std::string_view text) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string valid;
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        valid += character ? text.substr(0, character->length) : replacement;
        text.remove_prefix(character ? character->length : 1);
    }
    return valid;
}

} // namespace

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
    return validUtf8(path.substr(start, end + 1 - start));
}

} // namespace fernhop::freedesktop
