#pragma once

#include "platform/linux/applications/DesktopEntries.h"

#include <map>
#include <string>

namespace fernhop::freedesktop {

/// Desktop entries in memory.
class FakeDesktopEntries : public DesktopEntries {
  public:
    /// Installs a browser, whose Exec line is "/opt/ID %u" unless another is given.
    void install(const std::string &id, const std::string &exec = {}) {
        DesktopEntry entry;
        entry.id = id;
        entry.path = "/usr/share/applications/" + id + ".desktop";
        entry.name = id;
        entry.exec = exec.empty() ? "/opt/" + id + " %u" : exec;
        entry.schemes = {"http", "https"};
        install(entry);
    }
    void install(const DesktopEntry &entry) { byID[entry.id] = entry; }
    void uninstall(const std::string &id) { byID.erase(id); }

    [[nodiscard]] std::optional<DesktopEntry> entry(const std::string &id) const override {
        const auto found = byID.find(id);
        return found == byID.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] std::optional<DesktopEntry> entryAtPath(const std::string &path) const override {
        for (const auto &[id, entry] : byID) {
            if (entry.path == path)
                return entry;
        }
        return std::nullopt;
    }

    [[nodiscard]] std::vector<DesktopEntry> all() const override {
        std::vector<DesktopEntry> list;
        for (const auto &[id, entry] : byID)
            list.push_back(entry);
        return list;
    }

  private:
    std::map<std::string, DesktopEntry> byID;
};

} // namespace fernhop::freedesktop
