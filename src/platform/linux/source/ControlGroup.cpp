#include "platform/linux/source/ControlGroup.h"

#include <algorithm>
#include <charconv>

namespace fernhop::freedesktop {

namespace {

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

/// Undoes systemd's escapes: a backslash, "x" and two hexadecimal digits.
std::string unescaped(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned char byte = 0;
        const auto escape = text.substr(0, 4);
        if (escape.size() == 4 && escape.starts_with("\\x") &&
            std::from_chars(escape.data() + 2, escape.data() + 4, byte, 16).ptr == escape.data() + 4) {
            plain.push_back(static_cast<char>(byte));
            text.remove_prefix(4);
        } else {
            plain.push_back(text.front());
            text.remove_prefix(1);
        }
    }
    return plain;
}

bool removePrefix(std::string_view &text, std::string_view prefix) {
    const bool has = text.starts_with(prefix);
    if (has)
        text.remove_prefix(prefix.size());
    return has;
}

bool removeSuffix(std::string_view &text, std::string_view suffix) {
    const bool has = text.ends_with(suffix);
    if (has)
        text.remove_suffix(suffix.size());
    return has;
}

void addNames(std::string_view middle, std::vector<std::string> &names) {
    if (middle.empty())
        return;
    // After the launcher's name comes the ID. If either holds hyphens as they are, the border may be at each.
    const auto last = middle.rfind('-');
    if (last != std::string_view::npos)
        names.push_back(unescaped(middle.substr(last + 1)));
    const auto first = middle.find('-');
    if (first != last)
        names.push_back(unescaped(middle.substr(first + 1)));
    names.push_back(unescaped(middle));
}

/// "app[-launcher]-ID-random.scope", "app[-launcher]-ID[@random].service", "app-ID.slice".
void addApplications(std::string_view unit, std::vector<std::string> &names) {
    if (!removePrefix(unit, "app-"))
        return;
    if (removeSuffix(unit, ".scope")) {
        const auto hyphen = unit.rfind('-');
        if (hyphen != std::string_view::npos)
            addNames(unit.substr(0, hyphen), names);
    } else if (removeSuffix(unit, ".service")) {
        addNames(unit.substr(0, unit.find('@')), names);
    } else if (removeSuffix(unit, ".slice")) {
        addNames(unit, names);
    }
}

/// "snap.PACKAGE.PROGRAM-random.scope", "snap.PACKAGE.PROGRAM.random.scope", "snap.PACKAGE.PROGRAM.service":
/// the entry is called PACKAGE_PROGRAM.
void addSnap(std::string_view unit, std::vector<std::string> &names) {
    if (!removePrefix(unit, "snap.") || !(removeSuffix(unit, ".scope") || removeSuffix(unit, ".service")))
        return;
    const auto pieces = split(unit, '.');
    if (pieces.size() < 2)
        return;
    const std::string package(pieces[0]);
    constexpr std::size_t randomLength = 37; // a hyphen and a UUID
    const std::string_view program = pieces[1];
    if (program.size() > randomLength && program[program.size() - randomLength] == '-')
        names.push_back(package + "_" + std::string(program.substr(0, program.size() - randomLength)));
    names.push_back(package + "_" + std::string(program));
}

} // namespace

std::vector<std::string> applicationsOfControlGroup(std::string_view path) {
    std::vector<std::string> names;
    auto units = split(path, '/');
    std::reverse(units.begin(), units.end());
    for (const auto unit : units) {
        addApplications(unit, names);
        addSnap(unit, names);
    }
    return names;
}

} // namespace fernhop::freedesktop
