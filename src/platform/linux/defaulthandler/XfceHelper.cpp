#include "platform/linux/defaulthandler/XfceHelper.h"

#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/KeyFile.h"

#include <algorithm>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view group = "Desktop Entry";
constexpr std::string_view ownMark = "X-Fernhop-Generated";
constexpr std::string_view binaryPlace = "%B";
constexpr std::string_view linkPlace = "%s";

std::vector<std::string> items(std::string_view list) {
    std::vector<std::string> found;
    while (!list.empty()) {
        const auto item = list.substr(0, list.find(';'));
        if (!item.empty())
            found.emplace_back(item);
        list.remove_prefix(std::min(list.size(), item.size() + 1));
    }
    return found;
}

// A command is one item of a list, its backslashes are read twice, and these two stand for something else.
bool isExpressible(std::string_view argument) {
    const bool hasBadCharacter = std::any_of(argument.begin(), argument.end(), [](unsigned char letter) {
        return letter < ' ' || letter == ';' || letter == '"' || letter == '\\' || letter == 0x7f;
    });
    return !hasBadCharacter && argument.find(binaryPlace) == std::string_view::npos &&
           argument.find(linkPlace) == std::string_view::npos;
}

/// One argument of an Exec line with its field codes replaced, as Xfce writes it.
struct Argument {
    std::string text;
    bool takesLink = false;
    bool isExpressible = true;
};

// Deprecated and unknown codes stand for nothing. An icon is a matter of two arguments, and of no weight
// here.
Argument expand(std::string_view argument, const DesktopEntry &entry) {
    Argument result;
    std::string literal;
    for (std::size_t index = 0; index < argument.size(); ++index) {
        if (argument[index] != '%' || index + 1 == argument.size()) {
            literal += argument[index];
            result.text += argument[index];
            continue;
        }
        const char code = argument[++index];
        std::string replacement;
        if (std::string_view("uUfF").find(code) != std::string_view::npos) {
            result.takesLink = true;
            result.text += linkPlace;
        } else if (code == 'c') {
            replacement = entry.name;
        } else if (code == 'k') {
            replacement = entry.path;
        } else if (code == '%') {
            replacement = "%";
        }
        literal += replacement;
        result.text += replacement;
    }
    result.isExpressible = isExpressible(literal);
    return result;
}

struct Commands {
    std::string plain;
    std::string withLink;
};

void append(std::string &command, const std::string &argument) {
    if (!command.empty())
        command += ' ';
    command += '"' + argument + '"';
}

std::optional<Commands> commandsOf(const DesktopEntry &entry) {
    char **parsed = nullptr;
    if (entry.terminal || !g_shell_parse_argv(entry.exec.c_str(), nullptr, &parsed, nullptr))
        return std::nullopt;
    const GStringsPointer arguments(parsed);
    Commands commands;
    bool takesLink = false;
    for (char **next = arguments.get(); *next; ++next) {
        const auto argument = expand(*next, entry);
        if (!argument.isExpressible)
            return std::nullopt;
        takesLink = takesLink || argument.takesLink;
        if (!argument.text.empty())
            append(commands.withLink, argument.text);
        if (!argument.text.empty() && !argument.takesLink)
            append(commands.plain, argument.text);
    }
    if (!takesLink)
        append(commands.withLink, std::string(linkPlace));
    return commands;
}

// What needs a terminal, or more quoting than Xfce knows, is left to GIO.
std::optional<Commands> commandsThroughGio(const DesktopEntry &entry) {
    if (!isExpressible(entry.path))
        return std::nullopt;
    Commands commands{"gio launch", "gio launch"};
    append(commands.plain, entry.path);
    append(commands.withLink, entry.path);
    append(commands.withLink, std::string(linkPlace));
    return commands;
}

std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char letter) { return letter < ' ' || letter == '\\'; }, ' ');
    return text;
}

} // namespace

std::optional<XfceHelper> XfceHelper::parse(std::string_view bytes) {
    const KeyFileText text(bytes);
    const auto value = [&](std::string_view key) { return text.value(group, key).value_or(""); };
    const auto command = value("X-XFCE-CommandsWithParameter");
    const auto isBrowser = value("Type") == "X-XFCE-Helper" && value("X-XFCE-Category") == "WebBrowser" &&
                           !value("Name").empty();
    if (!isBrowser || command.empty() || value("X-XFCE-Commands").empty())
        return std::nullopt;
    const bool needsBinary = (command + value("X-XFCE-Commands")).find(binaryPlace) != std::string::npos;
    auto binaries = items(value("X-XFCE-Binaries"));
    if (needsBinary && binaries.empty())
        return std::nullopt;
    return XfceHelper{needsBinary ? std::move(binaries) : std::vector<std::string>(),
                      value(ownMark) == "true"};
}

bool XfceHelper::isUsable() const {
    const auto isInPath = [](const std::string &program) {
        return GCharPointer(g_find_program_in_path(program.c_str())) != nullptr;
    };
    return binaries.empty() || std::any_of(binaries.begin(), binaries.end(), isInPath);
}

std::optional<std::string> helperFileFor(const DesktopEntry &entry) {
    auto commands = commandsOf(entry);
    if (!commands || commands->plain.empty())
        commands = commandsThroughGio(entry);
    if (!commands)
        return std::nullopt;
    KeyFileText text("");
    text.set(group, "NoDisplay", "true");
    text.set(group, "Version", "1.0");
    text.set(group, "Type", "X-XFCE-Helper");
    text.set(group, "Name", entry.name.empty() ? entry.id : oneLine(entry.name));
    if (!entry.icon.empty())
        text.set(group, "Icon", oneLine(entry.icon));
    text.set(group, "X-XFCE-Category", "WebBrowser");
    text.set(group, "X-XFCE-Commands", commands->plain + ';');
    text.set(group, "X-XFCE-CommandsWithParameter", commands->withLink + ';');
    text.set(group, ownMark, "true");
    return text.bytes();
}

} // namespace fernhop::freedesktop
