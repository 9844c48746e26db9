#pragma once

#include "platform/FileManager.h"
#include "support/TemporaryHome.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace fernhop::contract {

/// A private folder on the real disk, seen by a file manager with that home folder, and as an ordinary user,
/// since root can read everything.
template <typename Manager>
class RealDisk {
  public:
    RealDisk() {
        if (wasRoot && seteuid(ordinaryUser) != 0)
            throw std::runtime_error("cannot become an ordinary user");
    }
    ~RealDisk() {
        if (wasRoot && seteuid(0) != 0)
            std::abort();
        for (const auto &folder : locked)
            std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    }
    RealDisk(const RealDisk &) = delete;
    RealDisk &operator=(const RealDisk &) = delete;

    [[nodiscard]] const FileManager &files() const { return manager; }
    [[nodiscard]] std::string root() const { return folders.home() + "/tree"; }
    [[nodiscard]] std::string home() const { return folders.home(); }
    void addFile(const std::string &path) { folders.write(path, "contents"); }
    void addFolder(const std::string &path) { std::filesystem::create_directories(path); }
    void makeUnreadable(const std::string &folder) {
        std::filesystem::permissions(folder, std::filesystem::perms::none);
        locked.push_back(folder);
    }

  private:
    static constexpr uid_t ordinaryUser = 65534;
    bool wasRoot = geteuid() == 0;
    support::TemporaryHome folders{wasRoot ? ordinaryUser : 0};
    Manager manager{folders.home()};
    std::vector<std::string> locked;
};

} // namespace fernhop::contract
