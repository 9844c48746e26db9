#pragma once

#include "platform/FileManager.h"

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// Goes through everything beneath a folder but hidden items: in each folder first what is no folder, then
/// the folders, each followed by what is in it; all by name. Folders that cannot be read have nothing in
/// them. A symbolic link to a folder counts as one, but no folder is entered twice, so a circle of links
/// ends.
class DirectoryWalk {
  public:
    /// Null when `folder` is none or cannot be read.
    [[nodiscard]] static std::unique_ptr<DirectoryWalk> over(const std::string &folder);

    /// The path of the next item; nothing at the end.
    [[nodiscard]] std::optional<std::string> next();

    /// Does not enter the item that `next` returned last.
    void skipDescendants() { toEnter.reset(); }

  private:
    struct Item {
        std::string name;
        bool isFolder;
    };
    struct Level {
        std::string folder;
        std::vector<Item> items;
        std::size_t position = 0;
    };

    bool enter(const std::string &folder);

    std::vector<Level> levels;
    std::optional<std::string> toEnter; // the folder returned last, until it is entered or skipped
    std::set<std::pair<dev_t, ino_t>> entered;
};

/// The file system as it is. Hidden items are those whose names begin with a dot.
class PosixFileManager : public FileManager {
  public:
    /// `homeFolder`: the current user's, an absolute path.
    explicit PosixFileManager(std::string homeFolder);

    [[nodiscard]] Url homeDirectoryForCurrentUser() const override;
    [[nodiscard]] bool fileExistsAtPath(const std::string &path) const override;
    [[nodiscard]] std::unique_ptr<DirectoryEnumerator> enumeratorAtUrl(const Url &folder) const override;

    /// The last component of the path, bytes that are no UTF-8 replaced by U+FFFD.
    [[nodiscard]] std::string displayNameAtPath(const std::string &path) const override;

  private:
    std::string home;
};

} // namespace fernhop::freedesktop
