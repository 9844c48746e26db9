#include "platform/linux/applications/GenericOpener.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/FernhopDesktopID.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace fernhop::freedesktop {

namespace {

using Words = std::vector<std::string>;

/// Names that mean nothing else, wherever in a line they stand.
constexpr std::array openers{
    "cinnamon-open", "dde-open",         "enlightenment_open", "exo-open",  "exo-web-browser",
    "fernhop-open",  "gnome-open",       "gnome-www-browser",  "gvfs-open", "kde-open",
    "kde-open5",     "kde-open6",        "kfmclient",          "mate-open", "mimeopen",
    "run-mailcap",   "sensible-browser", "www-browser",        "wslview",   "x-www-browser",
    "xdg-open",
};

/// Names that are ordinary words too, and count only as the program that the line runs.
constexpr std::array openersWhenRun{"open", "see", "browse", "fernhop"};

/// Programs that only run the one after them.
constexpr std::array wrappers{"env", "exec", "sh", "bash", "dash", "nohup", "setsid", "nice", "ionice"};

/// Programs with many subcommands, and the one that opens a link in the default application.
struct Subcommand {
    std::string_view program;
    std::string_view verb;
};
constexpr std::array subcommands{
    Subcommand{"gio", "open"},           Subcommand{"qtxdg-mat", "open"},
    Subcommand{"kioclient", "exec"},     Subcommand{"kioclient5", "exec"},
    Subcommand{"kioclient6", "exec"},    Subcommand{"kioclient", "openURL"},
    Subcommand{"kioclient5", "openURL"}, Subcommand{"kioclient6", "openURL"},
    Subcommand{"python3", "webbrowser"}, Subcommand{"python", "webbrowser"},
};

std::string_view baseName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

template <typename Names>
bool isOneOf(std::string_view name, const Names &names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The words of an Exec line, those of a shell script in one of its arguments each by itself.
Words allWords(const std::vector<ExecWord> &arguments) {
    constexpr std::string_view separators = " \t\r\n;|&()<>{}\"'`$";
    Words words;
    for (const auto &argument : arguments) {
        const std::string_view text = argument.text;
        for (std::size_t start = 0; (start = text.find_first_not_of(separators, start)) != text.npos;) {
            const auto end = std::min(text.find_first_of(separators, start), text.size());
            words.emplace_back(text.substr(start, end - start));
            start = end;
        }
    }
    return words;
}

/// The program that the line runs, behind wrappers, their options and assignments.
std::string_view programOf(const Words &words) {
    for (const auto &word : words) {
        const auto name = baseName(word);
        const bool isPrelude =
            isOneOf(name, wrappers) || word.starts_with('-') || word.find('=') != std::string::npos;
        if (!isPrelude)
            return name;
    }
    return {};
}

bool namesFernhop(std::string_view word) {
    std::string_view name = baseName(word);
    if (name.ends_with(".desktop"))
        name.remove_suffix(std::string_view(".desktop").size());
    return name == fernhopDesktopID || word == "fernhop" || word.ends_with("/bin/fernhop");
}

bool namesPortal(std::string_view word) {
    return word.find("org.freedesktop.portal.OpenURI") != std::string_view::npos;
}

bool isOpenerWord(std::string_view word) {
    return isOneOf(baseName(word), openers) || namesFernhop(word) || namesPortal(word);
}

/// Whether word `at` is a program whose next word that is no option is its opening subcommand.
bool startsOpeningSubcommand(const Words &words, std::size_t at) {
    const auto isOption = [](const std::string &word) { return word.starts_with('-'); };
    const auto verb =
        std::find_if_not(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, words.end(), isOption);
    const auto opens = [&](const Subcommand &candidate) {
        return baseName(words[at]) == candidate.program && *verb == candidate.verb;
    };
    return verb != words.end() && std::any_of(subcommands.begin(), subcommands.end(), opens);
}

} // namespace

bool isFernhop(const DesktopEntry &entry) {
    return entry.id == fernhopDesktopID;
}

bool isGenericOpener(const DesktopEntry &entry) {
    if (isFernhop(entry))
        return true;
    const auto arguments = execWords(entry.exec);
    if (!arguments)
        return false;
    const auto words = allWords(*arguments);
    if (isOneOf(programOf(words), openersWhenRun) || std::any_of(words.begin(), words.end(), isOpenerWord))
        return true;
    for (std::size_t at = 0; at < words.size(); ++at) {
        if (startsOpeningSubcommand(words, at))
            return true;
    }
    return false;
}

} // namespace fernhop::freedesktop
