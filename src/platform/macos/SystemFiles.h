#pragma once

#include "platform/FileManager.h"

namespace fernhop::macos {

/// The process-wide file manager.
class SystemFiles : public FileManager {
  public:
    [[nodiscard]] Url homeDirectoryForCurrentUser() const override;
    [[nodiscard]] bool fileExistsAtPath(const std::string &path) const override;
    [[nodiscard]] std::unique_ptr<DirectoryEnumerator> enumeratorAtUrl(const Url &folder) const override;
    [[nodiscard]] std::string displayNameAtPath(const std::string &path) const override;
};

} // namespace fernhop::macos
