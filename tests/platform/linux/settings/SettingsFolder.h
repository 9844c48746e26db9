#pragma once

#include "platform/linux/settings/PropertyListDefaults.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace fernhop::freedesktop {

/// A settings file of a test's own, in a folder that is not there yet.
class SettingsFolder {
  public:
    [[nodiscard]] std::filesystem::path folder() const { return home.config() + "/fernhop"; }
    [[nodiscard]] std::filesystem::path path() const { return folder() / "org.fernhop.Fernhop.plist"; }
    [[nodiscard]] PropertyListDefaults open() const { return PropertyListDefaults(path()); }

    void write(const std::string &contents) const { home.write(path(), contents); }

    [[nodiscard]] static std::string read(const std::filesystem::path &file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    [[nodiscard]] std::string contents() const { return read(path()); }

    /// The names of everything beside the settings file, the lock file aside.
    [[nodiscard]] std::set<std::string> neighbours() const {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder()))
            names.insert(entry.path().filename().string());
        names.erase(path().filename().string());
        names.erase(path().filename().string() + ".lock");
        return names;
    }

    [[nodiscard]] std::filesystem::path kept(int number = 1) const {
        return path().string() + ".unreadable-" + std::to_string(number);
    }

    /// Lets a user who is not ours reach the folder.
    void letOthersIn() const {
        const std::filesystem::path end = std::filesystem::path(home.root()).parent_path();
        for (auto path = folder(); path != end; path = path.parent_path())
            std::filesystem::permissions(path, std::filesystem::perms(0755));
    }

  private:
    support::TemporaryHome home;
};

/// An XML property list around `body`.
inline std::string xmlList(const std::string &body) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)" + body + "\n</plist>\n";
}

/// Settings with one value.
inline const std::string simpleList =
    xmlList("<dict><key>routingFallbackBrowserID</key><string>firefox</string></dict>");

/// The permissions of a file.
inline mode_t modeOf(const std::filesystem::path &path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// Runs `work` in a process of its own; what it returns is that process's exit status.
template <typename Work>
pid_t inChild(Work work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    return child;
}

/// The exit status of a child, or minus the signal that ended it.
inline int waitFor(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace fernhop::freedesktop
