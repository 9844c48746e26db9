#pragma once

#include "platform/Url.h"

#include <memory>
#include <optional>
#include <string>

namespace fernhop {

/// Enumerates everything below a folder, except hidden items, in the platform's order.
class DirectoryEnumerator {
  public:
    virtual ~DirectoryEnumerator() = default;

    /// The next item, as a file URL; nothing at the end. Unreadable folders are treated as empty.
    [[nodiscard]] virtual std::optional<Url> next() = 0;

    /// Skips everything below the item that `next` returned last.
    virtual void skipDescendants() = 0;
};

/// The file system operations that the catalogs need. Main thread only.
class FileManager {
  public:
    virtual ~FileManager() = default;

    /// The current user's home folder.
    [[nodiscard]] virtual Url homeDirectoryForCurrentUser() const = 0;

    /// Whether anything, file or folder, exists at `path`.
    [[nodiscard]] virtual bool fileExistsAtPath(const std::string &path) const = 0;

    /// An enumerator for `folder`, which the caller owns; null when the folder does not exist or is
    /// unreadable.
    [[nodiscard]] virtual std::unique_ptr<DirectoryEnumerator> enumeratorAtUrl(const Url &folder) const = 0;

    /// The name that the desktop shows for the file at `path`; not empty unless `path` is.
    [[nodiscard]] virtual std::string displayNameAtPath(const std::string &path) const = 0;
};

} // namespace fernhop
