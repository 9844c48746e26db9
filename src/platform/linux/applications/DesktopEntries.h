#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// What the files of desktop entries end in, and their IDs where other files name them.
inline constexpr std::string_view desktopEntryExtension = ".desktop";

/// What the name of the MIME type that stands for a URL scheme begins with.
inline constexpr std::string_view schemeTypePrefix = "x-scheme-handler/";

/// What of a desktop entry matters to Fernhop. All texts are unescaped.
struct DesktopEntry {
    std::string id;                             ///< desktop-file ID without ".desktop"
    std::string path;                           ///< of the file
    std::optional<std::string> name;            ///< in the user's locale; nothing without a `Name`
    std::optional<std::string> unlocalizedName; ///< nothing without a `Name` in no locale
    std::string exec; ///< unescaped by the rules of key files, its own quoting still in place
    std::string tryExec;
    std::string startupWMClass;
    std::string icon;
    std::string workingDirectory;     ///< Path=; empty: none
    std::vector<std::string> schemes; ///< of its x-scheme-handler/* MIME types, as written
    int initialPreference = 1;        ///< InitialPreference=: KDE takes the greatest where nothing is set
    bool noDisplay = false;           ///< for no menu, or for those of other desktops only
    bool dbusActivatable = false;
    bool startupNotify = false;
    bool terminal = false;
};

/// The desktop entry in `contents`, any bytes, with the names for the first fitting of `locales` (see
/// `localeNames`), as the current `desktops` (see `XdgSession`) see it; its `id` and `path` are the caller's
/// to fill. Nothing when this is no application that can
/// be launched: another type, Hidden, or neither a valid Exec line nor activation over D-Bus.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view contents,
                                                            const std::vector<std::string> &locales,
                                                            const std::vector<std::string> &desktops);

/// The same for an entry that is refused: it says that it opens http or https, and could be launched if its
/// Exec line did not have links interpreted (see `interpretsUrls`). Nothing for any other.
[[nodiscard]] std::optional<DesktopEntry> parseRefusedEntry(std::string_view contents,
                                                            const std::vector<std::string> &locales,
                                                            const std::vector<std::string> &desktops);

/// Whether the entry would hand a link back to the desktop instead of showing it: it runs Fernhop itself, or
/// a program that opens a link in whatever is the default (xdg-open, gio open, sensible-browser, ...), also
/// when that stands behind env, a shell script given in the line, or another wrapper. With Fernhop as the
/// default, a link sent there would go round in a circle. Judged by the entry alone: no program is looked at.
[[nodiscard]] bool isGenericOpener(const DesktopEntry &entry);

/// The file name of the program that the entry runs, `env` with its options and assignments left out; empty
/// when the Exec line cannot be parsed, or when the program only runs or opens something else.
[[nodiscard]] std::string programOf(const DesktopEntry &entry);

/// Whether the entry is Fernhop's own.
[[nodiscard]] bool isFernhop(const DesktopEntry &entry);

/// The name to look up in the icon theme for the `Icon` of a desktop entry, or its path. Names with the
/// ending of a file are against the rules of desktop entries, and common.
[[nodiscard]] std::string iconName(std::string icon);

/// The installed desktop entries by ID, found as the desktop finds them: the first folder that has the ID
/// decides. Main thread only. Looks at the disk at each call.
class DesktopEntries {
  public:
    virtual ~DesktopEntries() = default;

    /// The entry that the desktop would launch for an ID, `NoDisplay` ones included; nothing when it is not
    /// installed, hidden, or its program is missing.
    [[nodiscard]] virtual std::optional<DesktopEntry> entry(const std::string &id) const = 0;

    /// Whether the program that an entry names is there. Most openers pass over an entry whose program is
    /// not.
    [[nodiscard]] virtual bool hasProgram(const DesktopEntry &entry) const = 0;

    /// The entry in a file; nothing when it cannot be opened as an application.
    [[nodiscard]] virtual std::optional<DesktopEntry> entryAtPath(const std::string &path) const = 0;

    /// All entries for web links that are neither offered nor launched, because their Exec lines would let a
    /// shell or another interpreter run what stands in a link; in folder order.
    [[nodiscard]] virtual std::vector<DesktopEntry> refused() const = 0;

    /// All entries that can be launched, `NoDisplay` ones included, each ID once, in folder order.
    [[nodiscard]] virtual std::vector<DesktopEntry> all() const = 0;

    /// A number that stays the same as long as no entry was added, removed or changed: much faster than
    /// reading them all.
    [[nodiscard]] virtual std::size_t fingerprint() const = 0;
};

} // namespace fernhop::freedesktop
