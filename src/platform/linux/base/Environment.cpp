#include "platform/linux/base/Environment.h"

#include <unistd.h>

namespace fernhop::freedesktop {

Environment::Environment(const std::vector<std::string> &assignments) {
    for (const auto &assignment : assignments) {
        const auto equals = assignment.find('=');
        if (equals != 0 && equals != std::string::npos)
            variables.emplace(assignment.substr(0, equals), assignment.substr(equals + 1));
    }
}

Environment Environment::current() {
    std::vector<std::string> assignments;
    for (char **entry = environ; entry != nullptr && *entry != nullptr; ++entry)
        assignments.emplace_back(*entry);
    return Environment(assignments);
}

std::optional<std::string> Environment::value(std::string_view name) const {
    const auto found = variables.find(name);
    return found == variables.end() ? std::nullopt : std::optional(found->second);
}

void Environment::set(std::string_view name, std::string value) {
    variables.insert_or_assign(std::string(name), std::move(value));
}

void Environment::unset(std::string_view name) {
    if (const auto found = variables.find(name); found != variables.end())
        variables.erase(found);
}

void Environment::unsetPrefixed(std::string_view prefix) {
    std::erase_if(variables, [prefix](const auto &entry) { return entry.first.starts_with(prefix); });
}

std::vector<std::string> Environment::assignments() const {
    std::vector<std::string> result;
    result.reserve(variables.size());
    for (const auto &[name, value] : variables)
        result.push_back(name + '=' + value);
    return result;
}

} // namespace fernhop::freedesktop
