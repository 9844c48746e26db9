#pragma once

#include "platform/Url.h"

#include <memory>
#include <optional>
#include <string>

namespace fernhop {

/// A walk through everything beneath a folder, in the platform's order. Hidden items are left out.
class DirectoryEnumerator {
  public:
    virtual ~DirectoryEnumerator() = default;

    /// The next item, as a file URL; nothing at the end. Folders that cannot be read contribute nothing.
    [[nodiscard]] virtual std::optional<Url> next() = 0;

    /// The walk does not descend into the item that `next` returned last.
    virtual void skipDescendants() = 0;
};

/// What the catalogs ask of the file system. Main thread only.
class FileManager {
  public:
    virtual ~FileManager() = default;

    /// The current user's home folder.
    [[nodiscard]] virtual Url homeDirectoryForCurrentUser() const = 0;

    /// Whether anything, file or folder, exists at `path`.
    [[nodiscard]] virtual bool fileExistsAtPath(const std::string &path) const = 0;

    /// A walk through `folder`; null when there can be none (no such folder, no permission). The caller owns
    /// it.
    [[nodiscard]] virtual std::unique_ptr<DirectoryEnumerator> enumeratorAtUrl(const Url &folder) const = 0;

    /// The name that the desktop shows for the file at `path`; never empty for a path that is not.
    [[nodiscard]] virtual std::string displayNameAtPath(const std::string &path) const = 0;
};

} // namespace fernhop
