#pragma once

#include "platform/linux/applications/DesktopEntries.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::fakes {

/// Desktop entries in memory. `scans` counts the requests for all of them.
class FakeDesktopEntries : public freedesktop::DesktopEntries {
  public:
    std::vector<freedesktop::DesktopEntry> installed;
    std::vector<freedesktop::DesktopEntry> unsafe; ///< what `refused` returns
    mutable int scans = 0;
    mutable int checks = 0; ///< requests for the fingerprint

    freedesktop::DesktopEntry &install(std::string id, std::string exec = {}, std::string windowClass = {}) {
        freedesktop::DesktopEntry entry;
        entry.path = "/usr/share/applications/" + id + ".desktop";
        entry.id = std::move(id);
        entry.exec = std::move(exec);
        entry.startupWMClass = std::move(windowClass);
        installed.push_back(std::move(entry));
        return installed.back();
    }

    /// Installs a browser, or replaces the one with its ID; its default Exec line is "/opt/ID %u".
    void installBrowser(const std::string &id, const std::string &exec = {}) {
        uninstall(id);
        freedesktop::DesktopEntry &entry = install(id, exec.empty() ? "/opt/" + id + " %u" : exec);
        entry.name = id;
        entry.schemes = {"http", "https"};
    }

    void uninstall(const std::string &id) {
        std::erase_if(installed, [&](const auto &entry) { return entry.id == id; });
    }

    std::optional<freedesktop::DesktopEntry> entry(const std::string &id) const override {
        return find([&](const auto &entry) { return entry.id == id; });
    }

    bool hasProgram(const freedesktop::DesktopEntry &) const override { return true; }

    std::optional<freedesktop::DesktopEntry> entryAtPath(const std::string &path) const override {
        return find([&](const auto &entry) { return entry.path == path; });
    }

    std::vector<freedesktop::DesktopEntry> refused() const override { return unsafe; }

    std::vector<freedesktop::DesktopEntry> all() const override {
        ++scans;
        return installed;
    }

    std::size_t fingerprint() const override {
        ++checks;
        std::string texts;
        for (const auto &entry : installed)
            for (const auto &text : {entry.id, entry.path, entry.exec, entry.startupWMClass})
                texts += text + '\n';
        return std::hash<std::string>()(texts);
    }

  private:
    template <typename Condition>
    std::optional<freedesktop::DesktopEntry> find(Condition holds) const {
        for (const auto &entry : installed)
            if (holds(entry))
                return entry;
        return std::nullopt;
    }
};

} // namespace fernhop::fakes
