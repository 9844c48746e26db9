#pragma once

#include "platform/ApplicationLayout.h"
#include "platform/linux/base/Environment.h"

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// Where a user's applications are and in which languages they are named: all that finding them takes from
/// the process's surroundings.
struct ApplicationPlaces {
    std::vector<std::string>
        folders; ///< of desktop entries, in order of precedence; absolute, no slash at the end
    std::vector<std::string> programFolders; ///< searched for TryExec: the variable PATH
    std::vector<std::string> locales;        ///< names as in "Name[de]", best first
    std::string home;                        ///< the user's home folder
    std::vector<std::string> desktops;       ///< names of the current desktop, lower case (see `XdgSession`)
};

/// The places by the variables HOME, XDG_DATA_HOME, XDG_DATA_DIRS, PATH, XDG_CURRENT_DESKTOP and the locale's
/// (LANGUAGE, LC_ALL, LC_MESSAGES, LANG), each with the default that the XDG Base Directory Specification
/// gives. The folders to which Flatpak and snap export are added at the end where the variables leave them
/// out, as they do in sessions that were not started through a login shell.
[[nodiscard]] ApplicationPlaces applicationPlaces(const Environment &environment);

/// The layout of a desktop whose applications are desktop entries in these places.
[[nodiscard]] ApplicationLayout applicationLayout(const ApplicationPlaces &places);

/// The names under which texts are looked up for a list of locales separated by colons, as the variable
/// LANGUAGE has it, best first: for "sr_YU.UTF-8@Latn" these are "sr_YU@Latn", "sr_YU", "sr@Latn", "sr"
/// (Desktop Entry Specification, "Localized values for keys"). "C" and "POSIX" have none.
[[nodiscard]] std::vector<std::string> localeNames(std::string_view locales);

} // namespace fernhop::freedesktop
