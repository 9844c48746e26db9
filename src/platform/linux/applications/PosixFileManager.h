#pragma once

#include "platform/FileManager.h"

#include <string>

namespace fernhop::freedesktop {

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
