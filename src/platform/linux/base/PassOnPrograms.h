#pragma once

#include <string_view>
#include <vector>

/// The programs that only pass a link on, or run another program: nobody is using them, and a link that is
/// sent to one of the openers comes back to the default application.
namespace fernhop::freedesktop {

/// The desktop-file ID under which Fernhop is installed, also its name on the session bus.
inline constexpr std::string_view fernhopDesktopID = "org.fernhop.Fernhop";

struct PassOnProgram {
    enum class Kind {
        opener,        ///< opens links in the default application; the name means nothing else
        openerWhenRun, ///< the same, but the name is an ordinary word: only counts as the program that is run
        openerWithVerb,  ///< opens links in the default application when called with the subcommand `verb`
        interpreter,     ///< runs a script, which says more than itself
        wrapper,         ///< runs the program that its own command line names
        launcherOrBroker ///< starts programs, or carries calls to them, for any application
    };

    std::string_view name; ///< file name; a version behind it ("python3.11", "kde-open5") means the same
    Kind kind;
    std::string_view verb = {};
};

/// Every such program, in groups of one kind. One with several subcommands stands there several times.
[[nodiscard]] const std::vector<PassOnProgram> &passOnPrograms();

/// Whether a file name is that of `program`, perhaps with a version behind it: "python3.11" is "python".
[[nodiscard]] bool isNameWithVersion(std::string_view fileName, std::string_view program);

/// Whether a program of this file name only passes links on or runs other programs, in whatever way.
[[nodiscard]] bool isPassOnProgram(std::string_view fileName);

/// Whether a program of this file name is one of this kind.
[[nodiscard]] bool isPassOnProgram(std::string_view fileName, PassOnProgram::Kind kind);

/// Whether the program opens links in the default application when `word` is its subcommand.
[[nodiscard]] bool opensLinksWithVerb(std::string_view fileName, std::string_view word);

} // namespace fernhop::freedesktop
