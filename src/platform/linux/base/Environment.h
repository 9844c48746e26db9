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

    void set(std::string_view name, std::string value);
    void unset(std::string_view name);

    /// Unsets every variable whose name begins so.
    void unsetPrefixed(std::string_view prefix);

    /// "NAME=value" texts, sorted by name.
    [[nodiscard]] std::vector<std::string> assignments() const;

  private:
    std::map<std::string, std::string, std::less<>> variables;
};

} // namespace fernhop::freedesktop
