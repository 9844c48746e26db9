#include "platform/linux/source/ApplicationUnits.h"

#include "platform/Ascii.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <charconv>

namespace fernhop::freedesktop {

namespace {

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

// Hyphens separate the components of a unit's name, so one within a component is escaped; so is a leading
// dot.
std::string escaped(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char character : text) {
        const bool isPlain = ascii::isLetter(character) || ascii::isDigit(character) || character == '_' ||
                             character == ':' || (character == '.' && !result.empty());
        const auto byte = static_cast<unsigned char>(character);
        if (isPlain)
            result.push_back(character);
        else
            result += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
    }
    return result;
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
    // The ID follows the launcher's name. Where one of them holds plain hyphens, the ID may begin at any of
    // them.
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
    const auto words = pieces(unit, '.');
    if (words.size() < 2)
        return;
    const std::string package(words[0]);
    constexpr std::size_t randomLength = 37; // a hyphen and a UUID
    const std::string_view program = words[1];
    if (program.size() > randomLength && program[program.size() - randomLength] == '-')
        names.push_back(package + "_" + std::string(program.substr(0, program.size() - randomLength)));
    names.push_back(package + "_" + std::string(program));
}

} // namespace

std::vector<std::string> applicationsOfControlGroup(std::string_view path) {
    std::vector<std::string> names;
    auto units = pieces(path, '/');
    std::reverse(units.begin(), units.end());
    for (const auto unit : units) {
        addApplications(unit, names);
        addSnap(unit, names);
    }
    return names;
}

std::string launchScopeName(std::string_view desktopID, std::string_view random) {
    return "app-fernhop-" + escaped(desktopID) + "-" + std::string(random) + ".scope";
}

} // namespace fernhop::freedesktop
