#pragma once

#include "platform/linux/applications/DesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace fernhop::freedesktop {

/// Finds desktop entries by the names that windows and processes show. Holds only the words of each entry
/// that this needs; the first of several entries with the same word wins. Every answer is a desktop-file ID,
/// and empty text finds nothing.
class EntryIndex {
  public:
    EntryIndex() = default;
    explicit EntryIndex(const std::vector<DesktopEntry> &entries);

    /// The entry with this StartupWMClass; letter case counts only where two entries differ in nothing else.
    [[nodiscard]] std::optional<std::string> byWindowClass(const std::string &name) const;

    /// The entry with this ID; letter case as above, a blank may stand for a hyphen.
    [[nodiscard]] std::optional<std::string> byID(const std::string &id) const;

    /// The entry in this file.
    [[nodiscard]] std::optional<std::string> byPath(const std::string &path) const;

    /// The entry whose Exec runs a program of this file name; of several the plainest: shown in menus, and
    /// with the fewest arguments of its own. Shells, link openers and other programs that run something else
    /// belong to no entry.
    [[nodiscard]] std::optional<std::string> byProgram(const std::string &fileName) const;

    /// The only entry whose ID ends in this after a dot, letter case ignored ("konsole" finds
    /// "org.kde.konsole").
    [[nodiscard]] std::optional<std::string> byLastWord(const std::string &word) const;

  private:
    using Map = std::unordered_map<std::string, std::string>;

    void add(const DesktopEntry &entry);
    void addProgram(const DesktopEntry &entry);
    void addLastWord(const std::string &id);

    Map windowClasses;
    Map ids;
    Map paths;
    Map lastWords; ///< an empty ID: several
    struct Program {
        std::string id;
        unsigned rank;
    };
    std::unordered_map<std::string, Program> programs;
};

} // namespace fernhop::freedesktop
