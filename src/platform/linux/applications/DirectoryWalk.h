#pragma once

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

} // namespace fernhop::freedesktop
