#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The environment variables of a process, as a value. Bytes as they are; any thread.
class Environment {
  public:
    Environment() = default;

    /// From "NAME=value" texts; the first of a name counts, what has no name is left out.
    explicit Environment(const std::vector<std::string> &assignments);

    /// A copy of this process's environment as it is now.
    [[nodiscard]] static Environment current();

    /// The value of a variable; nothing when it is not set. Set but empty is an empty text.
    [[nodiscard]] std::optional<std::string> value(std::string_view name) const;

    /// The value of a variable, or `otherwise` when it is not set or empty.
    [[nodiscard]] std::string value(std::string_view name, std::string_view otherwise) const;

    /// The absolute paths in a variable that lists folders, separated by colons, without slashes at their
    /// ends; those of `otherwise` when it is not set or empty.
    [[nodiscard]] std::vector<std::string> folders(std::string_view name, std::string_view otherwise) const;

    void set(std::string_view name, std::string value);
    void unset(std::string_view name);

    /// Unsets every variable whose name begins so.
    void unsetPrefixed(std::string_view prefix);

    /// Unsets the variables that a launcher sets for the one process that it starts.
    void unsetLaunchVariables();

    /// "NAME=value" texts, sorted by name.
    [[nodiscard]] std::vector<std::string> assignments() const;

  private:
    std::map<std::string, std::string, std::less<>> variables;
};

/// Where this session keeps configuration and data, and which desktop it is, by the variables of the XDG Base
/// Directory Specification. All folders are absolute and end in no slash. A value.
struct XdgSession {
    std::string home; ///< the user's home folder
    std::string configHome;
    std::vector<std::string> configDirs; ///< the most important first
    std::string dataHome;
    std::vector<std::string> dataDirs; ///< the most important first
    std::vector<std::string> desktops; ///< in lower case, the most important first ("ubuntu", "gnome")

    /// By HOME (else the user database, else "/"), XDG_CONFIG_HOME, XDG_CONFIG_DIRS, XDG_DATA_HOME,
    /// XDG_DATA_DIRS and XDG_CURRENT_DESKTOP, each with its usual default. Relative paths are ignored.
    [[nodiscard]] static XdgSession of(const Environment &environment);

    /// `configHome` and then `configDirs`.
    [[nodiscard]] std::vector<std::string> allConfigFolders() const;

    /// `dataHome` and then `dataDirs`.
    [[nodiscard]] std::vector<std::string> allDataFolders() const;

    /// Whether the session is of this desktop; `name` in lower case.
    [[nodiscard]] bool isDesktop(std::string_view name) const;
};

} // namespace fernhop::freedesktop
