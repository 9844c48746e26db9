#pragma once

#include "support/Environment.h"

#include <sys/types.h>

#include <string>

namespace fernhop::support {

/// A home folder and XDG folders of its own for one test, removed when it ends. The machine's
/// own applications and settings are not visible in it.
class TemporaryHome {
  public:
    /// Makes the folders; they belong to `owner`, or to this process's user when that is 0.
    explicit TemporaryHome(uid_t owner = 0);
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome &) = delete;
    TemporaryHome &operator=(const TemporaryHome &) = delete;

    [[nodiscard]] const std::string &root() const { return folder; }
    [[nodiscard]] std::string home() const { return folder + "/home"; }
    [[nodiscard]] std::string config() const { return home() + "/.config"; }
    [[nodiscard]] std::string data() const { return home() + "/.local/share"; }
    [[nodiscard]] std::string applications() const { return data() + "/applications"; }
    [[nodiscard]] std::string systemData() const { return folder + "/share"; }
    [[nodiscard]] std::string runtime() const { return folder + "/run"; }

    /// The variables of this home; an empty value for those that would lead to the machine's own session or
    /// desktop, which removes them.
    [[nodiscard]] Environment environment() const;

    /// Writes a file at an absolute path, and the folders above it.
    void write(const std::string &path, const std::string &contents) const;

    /// Writes an executable file.
    void writeProgram(const std::string &path, const std::string &contents) const;

    /// Writes `contents` as the user's desktop entry `id` (without ".desktop").
    void writeDesktopEntry(const std::string &id, const std::string &contents) const {
        write(applications() + "/" + id + ".desktop", contents);
    }

  private:
    std::string folder;
};

} // namespace fernhop::support
