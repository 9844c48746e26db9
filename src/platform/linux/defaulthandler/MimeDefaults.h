#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/defaulthandler/MimeLookup.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Changes the default applications of the "x-scheme-handler/..." types in the user's mimeapps.list files.
/// Main thread only.
class MimeDefaults {
  public:
    /// `mimeLookup` outlives this object.
    MimeDefaults(const XdgSession &session, const MimeLookup &mimeLookup);

    /// Makes `id` what counts for a scheme, in this session's desktop and in those that have no list of their
    /// own, and `next` (empty: none) what counts for GIO when `id` is no longer installed. False when a file
    /// cannot be written.
    bool set(const std::string &scheme, const std::string &id, const std::string &next = {});

    /// Replaces `oldID` by `newID` in the user's lists of all desktops. False when one cannot be written.
    bool replace(const std::string &scheme, const std::string &oldID, const std::string &newID);

    /// The user's lists that this session reads and that exist, or may be made: the most important first.
    [[nodiscard]] std::vector<std::string> decisiveUserLists() const;

    /// Whether one of those lists names `id` for a scheme, in force or not, installed or not.
    [[nodiscard]] bool userListNames(const std::string &scheme, const std::string &id) const;

  private:
    [[nodiscard]] std::string userList() const { return configHome + "/mimeapps.list"; }
    static bool write(const std::string &path, const std::string &scheme, const std::string &id,
                      const std::string &next);
    [[nodiscard]] std::vector<std::string> userListsOfDesktops() const;
    [[nodiscard]] bool isNamedIn(const std::string &path, const std::string &scheme,
                                 const std::string &id) const;

    std::string configHome;
    const MimeLookup &lookup;
};

/// A key file without what makes GLib reject it as a whole: such lines become comments, so that nothing of
/// them is lost. Nothing when the file cannot be saved that way.
[[nodiscard]] std::optional<std::string> withInvalidLinesAsComments(const std::string &bytes);

} // namespace fernhop::freedesktop
