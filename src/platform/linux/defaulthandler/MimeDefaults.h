#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/base/Environment.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// The default applications of the "x-scheme-handler/..." types in the mimeapps.list files, in the order of
/// the MIME Applications Associations Specification. It is what GIO, the portals, xdg-mime and KIO consult.
/// Main thread only.
class MimeDefaults {
  public:
    /// `desktopEntries` outlives this object.
    MimeDefaults(const XdgSession &session, const DesktopEntries &desktopEntries);

    /// One line of one file.
    struct Setting {
        std::string path; ///< of the file
        std::string id;   ///< desktop-file ID without ".desktop"
    };

    /// The default that counts for a scheme: the first that is installed. A handler that merely declares the
    /// scheme is none.
    [[nodiscard]] std::optional<Setting> setting(const std::string &scheme) const;

    /// Makes `id` what counts for a scheme, in this session's desktop and in those that have no list of their
    /// own. False when a file cannot be written.
    bool set(const std::string &scheme, const std::string &id);

    /// Replaces `oldID` by `newID` in the user's lists of all desktops. False when one cannot be written.
    bool replace(const std::string &scheme, const std::string &oldID, const std::string &newID);

    /// The user's lists that this session reads and that exist, or may be made: the most important first.
    [[nodiscard]] std::vector<std::string> decisiveUserLists() const;

    /// Whether one of those lists names `id` for a scheme, in force or not, installed or not.
    [[nodiscard]] bool userListNames(const std::string &scheme, const std::string &id) const;

    /// Whether GLib rejects a list as a whole; desktops then behave as if it were not there.
    [[nodiscard]] bool isRejected(const std::string &path) const;

  private:
    struct List {
        std::map<std::string, std::vector<std::string>> defaults; ///< IDs by scheme
        bool isRejected = false;
    };

    [[nodiscard]] std::string userList() const { return session.configHome + "/mimeapps.list"; }
    static List parse(const std::optional<std::string> &bytes);
    static bool write(const std::string &path, const std::string &scheme, const std::string &id);
    [[nodiscard]] std::vector<std::string> listsInOrder() const;
    [[nodiscard]] std::vector<std::string> userListsOfDesktops() const;
    [[nodiscard]] std::vector<std::string> defaultsIn(const std::string &path,
                                                      const std::string &scheme) const;
    [[nodiscard]] bool isNamedIn(const std::string &path, const std::string &scheme,
                                 const std::string &id) const;

    XdgSession session;
    const DesktopEntries &entries;
    std::vector<std::string> order;
    mutable ParsedFiles<List> lists;
};

/// A key file without what makes GLib reject it as a whole: such lines become comments, so that nothing of
/// them is lost. Nothing when the file cannot be saved that way.
[[nodiscard]] std::optional<std::string> withInvalidLinesAsComments(const std::string &bytes);

} // namespace fernhop::freedesktop
