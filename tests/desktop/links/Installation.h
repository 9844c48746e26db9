#pragma once

#include "support/Folders.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::desktoptest {

inline std::string wholeFile(const std::string &path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// How an installation puts a file in the place of another.
enum class Replacement {
    rename,  ///< under another name first, as dpkg does
    inPlace, ///< removed, written in steps and then made executable, as `cmake --install` does
};

/// Fernhop in a folder of its own, in versions that differ in nothing else.
class Installation {
  public:
    explicit Installation(std::string folder) : prefix(std::move(folder)) {
        for (const auto &file : programFiles())
            install(file, "1.0.0", Replacement::rename, [] {});
        std::filesystem::create_directories(prefix + "/share");
        std::filesystem::copy(support::buildFolder() + "/share/fernhop", prefix + "/share/fernhop",
                              std::filesystem::copy_options::recursive);
    }

    /// Replaces each program by another version of it, such as "1.0.7"; calls `meanwhile` again and again.
    void upgrade(
        const std::string &version, Replacement replacement,
        const std::function<void()> &meanwhile = [] {}) const {
        for (const auto &file : programFiles())
            install(file, version, replacement, meanwhile);
    }

    [[nodiscard]] std::string bin() const { return prefix + "/bin"; }

  private:
    static std::vector<std::string> programFiles() {
        std::vector<std::string> found;
        for (const char *folder : {"bin", "lib/fernhop"})
            for (const auto &entry :
                 std::filesystem::directory_iterator(support::buildFolder() + "/" + folder))
                if (entry.is_regular_file())
                    found.push_back(std::string(folder) + '/' + entry.path().filename().string());
        return found;
    }

    static std::string inVersion(std::string bytes, const std::string &version) {
        const std::string mark = "Fernhop version ";
        for (auto at = bytes.find(mark); at != std::string::npos; at = bytes.find(mark, at + 1))
            if (bytes.compare(at + mark.size(), 5, "1.0.0") == 0)
                bytes.replace(at + mark.size(), 5, version);
        return bytes;
    }

    void install(const std::string &file, const std::string &version, Replacement replacement,
                 const std::function<void()> &meanwhile) const {
        const auto target = prefix + '/' + file;
        const auto bytes = inVersion(wholeFile(support::buildFolder() + "/" + file), version);
        const auto written = target + (replacement == Replacement::rename ? ".new" : "");
        std::filesystem::create_directories(std::filesystem::path(target).parent_path());
        std::filesystem::remove(written);
        constexpr std::size_t steps = 4;
        for (std::size_t step = 0; step < steps; ++step) {
            meanwhile();
            const auto from = bytes.size() * step / steps;
            std::ofstream(written, std::ios::binary | std::ios::app)
                .write(bytes.data() + from,
                       static_cast<std::streamsize>(bytes.size() * (step + 1) / steps - from));
        }
        std::filesystem::permissions(written, std::filesystem::perms{0755});
        if (written != target)
            std::filesystem::rename(written, target);
        meanwhile();
    }

    std::string prefix;
};

} // namespace fernhop::desktoptest
