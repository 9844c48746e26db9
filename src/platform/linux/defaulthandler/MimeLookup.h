#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/base/Environment.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// The programs that open links. They read the same files, each in its own way.
enum class LinkOpener {
    gio,     ///< GTK applications, portals, and xdg-open in GNOME, MATE, Cinnamon
    xdgOpen, ///< xdg-open by itself, where it knows of no opener of the desktop
    kio,     ///< KDE applications, and xdg-open in KDE
};

/// The opener that xdg-open uses in a session. Xfce's own, which knows one browser only, is none of them:
/// there it is the one of Xfce's applications.
[[nodiscard]] LinkOpener linkOpenerOf(const XdgSession &session);

/// The applications of the "x-scheme-handler/..." types: those that are set in the mimeapps.list files, in
/// the order of the MIME Applications Associations Specification, and where nothing is set those that are
/// only associated with the type, there, in the caches of desktop entries, or by an entry itself. Main thread
/// only.
class MimeLookup {
  public:
    /// `desktopEntries` outlives this object.
    MimeLookup(const XdgSession &session, const DesktopEntries &desktopEntries);

    struct Handler {
        std::string path; ///< of the file that names it
        std::string id;   ///< desktop-file ID without ".desktop"
        bool isSet;       ///< as the default; else it is only associated
    };

    /// The application that an opener starts for a scheme, as if `without` (a desktop-file ID; empty:
    /// nothing) were not installed. Nothing when it would start none.
    [[nodiscard]] std::optional<Handler> handler(const std::string &scheme, LinkOpener opener,
                                                 const std::string &without = {}) const;

    /// The mimeapps.list files that this session reads, whether or not they exist: the most important first.
    [[nodiscard]] std::vector<std::string> lists() const;

    /// The defaults of a scheme in one file, as they are there.
    [[nodiscard]] std::vector<std::string> defaultsIn(const std::string &path,
                                                      const std::string &scheme) const;

    /// Whether GLib rejects a list as a whole; desktops then behave as if it were not there.
    [[nodiscard]] bool isRejected(const std::string &path) const;

    /// As many applications as are looked for, of those that a file names for one scheme: each takes a search
    /// of all folders.
    static constexpr std::size_t mostApplications = 100;

    /// Whether a file names more than that.
    [[nodiscard]] bool namesTooMany(const std::string &path) const;

  private:
    using Associations = std::map<std::string, std::vector<std::string>>; ///< IDs by scheme

    struct File {
        Associations defaults;
        Associations added; ///< in a cache: all
        Associations removed;
        // xdg-open reads lines, whatever stands around them. Of each scheme the first counts.
        std::map<std::string, std::string> defaultLines; ///< its first ID
        std::map<std::string, std::string> lines;        ///< of any group: its list of names
        bool isRejected = false;
        bool isCut = false;
    };

    /// A folder of such files.
    struct Folder {
        std::string path;
        bool hasApplications; ///< and caches of them
    };

    /// Takes an application that an opener would try, the best first; whether that settles it.
    using Offer = std::function<bool(const std::string &path, const std::string &id, bool isSet)>;

    static File parse(const std::optional<std::string> &bytes);
    [[nodiscard]] std::vector<std::string> listsIn(const Folder &folder) const;
    // Each offers until one is taken: what is only associated is read where nothing is set.
    void offerAsGio(const std::string &scheme, const Offer &offer) const;
    void offerAsKio(const std::string &scheme, const Offer &offer) const;
    [[nodiscard]] std::optional<Handler> handlerOfXdgOpen(const std::string &scheme,
                                                          const std::string &without) const;
    /// Whether an opener can start an application.
    [[nodiscard]] bool isInstalled(const std::string &id, LinkOpener opener) const;
    /// The entries that declare a scheme themselves, those with the greatest InitialPreference first.
    [[nodiscard]] std::vector<DesktopEntry> declaring(const std::string &scheme) const;

    std::vector<std::string> desktops;
    std::vector<Folder> folders; ///< the most important first
    const DesktopEntries &entries;
    mutable ParsedFiles<File> files;
};

} // namespace fernhop::freedesktop
