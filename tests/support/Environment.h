#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace fernhop::support {

/// Environment variables by name; an empty optional removes the variable.
struct Environment : std::map<std::string, std::optional<std::string>> {
    using map::map;
};

/// `base` with everything of `more` put over it.
inline Environment operator+(Environment base, const Environment &more) {
    for (const auto &[name, value] : more)
        base.insert_or_assign(name, value);
    return base;
}

/// Changes this process's environment while it lives.
class ScopedEnvironment {
  public:
    explicit ScopedEnvironment(const Environment &changes) {
        for (const auto &[name, value] : changes) {
            const char *old = std::getenv(name.c_str());
            before[name] = old ? std::optional<std::string>(old) : std::nullopt;
            set(name, value);
        }
    }
    ~ScopedEnvironment() {
        for (const auto &[name, value] : before)
            set(name, value);
    }
    ScopedEnvironment(const ScopedEnvironment &) = delete;
    ScopedEnvironment &operator=(const ScopedEnvironment &) = delete;

  private:
    static void set(const std::string &name, const std::optional<std::string> &value) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }

    Environment before;
};

} // namespace fernhop::support
