#include "platform/linux/base/Processes.h"

#include "platform/linux/base/Files.h"
#include "platform/linux/base/KeyFile.h"
#include "platform/linux/base/Text.h"

#include <charconv>
#include <filesystem>
#include <string_view>

namespace fernhop::freedesktop {

namespace {

/// More than any environment or command line that the kernel lets a program start with.
constexpr std::size_t maximumSize = 8 << 20;

std::optional<std::string> contentsOf(const std::string &path) {
    return readFile(path, maximumSize);
}

std::vector<std::string> zeroSeparated(std::string_view text) {
    const auto found = pieces(text, '\0');
    return {found.begin(), found.end()};
}

} // namespace

Processes::Processes(std::string folder) : root(std::move(folder)) {}

std::string Processes::pathOf(pid_t pid, const char *name) const {
    return root + "/" + std::to_string(pid) + "/" + name;
}

std::optional<pid_t> Processes::parentOf(pid_t pid) const {
    const auto stat = contentsOf(pathOf(pid, "stat"));
    // The name before the state stands in brackets and may hold brackets and blanks itself.
    const auto bracket = stat ? stat->rfind(')') : std::string::npos;
    if (bracket == std::string::npos || bracket + 4 >= stat->size())
        return std::nullopt;
    pid_t parent = 0;
    const char *const number = stat->data() + bracket + 4;
    const auto result = std::from_chars(number, stat->data() + stat->size(), parent);
    return result.ec == std::errc() && parent > 0 ? std::optional(parent) : std::nullopt;
}

std::optional<std::string> Processes::programPathOf(pid_t pid) const {
    std::error_code failure;
    const auto path = std::filesystem::read_symlink(pathOf(pid, "exe"), failure).string();
    if (failure || path.empty())
        return std::nullopt;
    // So the kernel shows a program that was replaced, by an update say.
    return std::string(withoutEnding(path, " (deleted)"));
}

std::optional<std::string> Processes::programOf(pid_t pid) const {
    const auto path = programPathOf(pid);
    return path ? std::optional(std::string(fileNameOf(*path))) : std::nullopt;
}

std::vector<std::string> Processes::argumentsOf(pid_t pid) const {
    return zeroSeparated(contentsOf(pathOf(pid, "cmdline")).value_or(std::string()));
}

std::optional<std::string> Processes::variableOf(pid_t pid, const std::string &name) const {
    const auto environment = contentsOf(pathOf(pid, "environ"));
    for (auto &variable : zeroSeparated(environment.value_or(std::string())))
        if (variable.starts_with(name + "="))
            return variable.substr(name.size() + 1);
    return std::nullopt;
}

std::optional<std::string> Processes::controlGroupOf(pid_t pid) const {
    const auto groups = contentsOf(pathOf(pid, "cgroup")).value_or(std::string());
    constexpr std::string_view unified = "0::";
    for (const auto line : pieces(groups, '\n')) {
        if (line.starts_with(unified))
            return std::string(line.substr(unified.size()));
    }
    return std::nullopt;
}

std::optional<std::string> Processes::flatpakOf(pid_t pid) const {
    const auto information = contentsOf(pathOf(pid, "root/.flatpak-info"));
    if (!information)
        return std::nullopt;
    const auto name = KeyFileText(*information).value("Application", "name");
    return name && !name->empty() ? name : std::nullopt;
}

} // namespace fernhop::freedesktop
