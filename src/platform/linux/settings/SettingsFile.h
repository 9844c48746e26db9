#pragma once

#include "platform/linux/base/FileLock.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace fernhop::freedesktop {

/// What tells one state of a file from another without looking into it.
struct FileIdentity {
    dev_t device;
    ino_t inode;
    off_t size;
    std::int64_t modified; ///< nanoseconds since 1970, of the contents
    std::int64_t changed;  ///< nanoseconds since 1970, of anything about the file

    bool operator==(const FileIdentity &) const = default;

    /// Whether a change from now on would be sure to give the file another identity. Not so right after a
    /// change: the times of files move in steps of some milliseconds.
    [[nodiscard]] bool isSettled() const;
};

/// A file that is read whole, and replaced whole: at any moment, a power cut included, it holds either what
/// it held before or what it holds after. A symbolic link at its path is followed and stays.
class SettingsFile {
  public:
    explicit SettingsFile(std::filesystem::path location);

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

    /// Writes `bytes` in place of the file. On an error the file is as it was.
    [[nodiscard]] std::error_code replace(std::string_view bytes) const;

    /// Gives what is there a name of its own beside the file (".unreadable-" and the first free number).
    [[nodiscard]] std::error_code keepAside() const;

  private:
    std::filesystem::path path;
};

} // namespace fernhop::freedesktop
