#pragma once

#include "platform/linux/base/FileLock.h"
#include "platform/linux/base/Files.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// A file that is read whole, and replaced whole: at any moment, a power cut included, it holds either what
/// it held before or what it holds after. A symbolic link at its path is followed and stays.
class SettingsFile {
  public:
    explicit SettingsFile(std::string location);

    /// Nothing when nothing is there.
    [[nodiscard]] std::optional<FileIdentity> identity() const;

    /// What was read, and from which state of the file. `bytes` is nothing when what is there is no regular
    /// file, is larger than a property list may be, or may not be read.
    struct Contents {
        std::optional<FileIdentity> identity;
        std::optional<std::string> bytes;
    };
    /// The contents; nothing when nothing is there. Never waits, whatever stands at the path.
    [[nodiscard]] std::optional<Contents> read() const;

    /// The right to call `replace` and `keepAside`, among processes that ask for it; makes the folder when it
    /// is not there. Nothing when it cannot be had in that time.
    [[nodiscard]] std::optional<FileLock> lock(std::chrono::milliseconds atMost) const;

    /// Writes `bytes` in place of the file. On a failure the file is as it was.
    Result<> replace(std::string_view bytes) const;

    /// Gives what is there a name of its own beside the file (".unreadable-" and the first free number).
    Result<> keepAside() const;

  private:
    std::string path;
};

} // namespace fernhop::freedesktop
