#include "platform/linux/defaulthandler/XfceBrowser.h"

#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/KeyFile.h"
#include "platform/linux/base/Text.h"

#include <algorithm>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view group = "Desktop Entry";
constexpr std::string_view ownMark = "X-Fernhop-Generated";
constexpr std::string_view binaryPlace = "%B";
constexpr std::string_view linkPlace = "%s";

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

constexpr std::string_view settingsFile = "/xfce4/helpers.rc";
constexpr std::string_view webBrowserKey = "WebBrowser";
constexpr std::string_view dismissedKey = "WebBrowserDismissed";
constexpr std::string_view noGroup;

std::optional<std::string> parseSettings(const std::optional<std::string> &bytes) {
    return KeyFileText(bytes.value_or("")).value(noGroup, webBrowserKey);
}

std::optional<XfceHelper> parseHelper(const std::optional<std::string> &bytes) {
    return XfceHelper::parse(bytes.value_or(""));
}

std::string helperPath(const std::string &dataFolder, const std::string &id) {
    return dataFolder + "/xfce4/helpers/" + id + ".desktop";
}

bool isFileName(const std::string &id) {
    return !id.empty() && id.find('/') == std::string::npos;
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
    const auto list = value("X-XFCE-Binaries");
    const auto names = nonEmptyPieces(list, ';');
    std::vector<std::string> binaries(names.begin(), names.end());
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

XfceBrowser::XfceBrowser(const XdgSession &session, const DesktopEntries &desktopEntries)
    : places(session), entries(desktopEntries), settings(parseSettings), helpers(parseHelper) {}

std::optional<std::string> XfceBrowser::settingText() const {
    for (const auto &folder : places.allConfigFolders()) {
        const auto &found = settings.at(folder + std::string(settingsFile));
        if (found)
            return found;
    }
    return std::nullopt;
}

// Xfce takes the first file of that name and looks no further, also when it is of no use.
std::optional<XfceBrowser::HelperFile> XfceBrowser::helperFile(const std::string &id) const {
    for (const auto &folder : places.allDataFolders()) {
        const auto path = helperPath(folder, id);
        if (exists(path))
            return HelperFile{path, helpers.at(path)};
    }
    return std::nullopt;
}

// A helper is named like its desktop entry, by xdg-settings' rule, or at least like its program.
std::optional<DesktopBrowserSetting> XfceBrowser::setting() const {
    const auto id = settingText();
    if (!id || id->empty())
        return std::nullopt;
    DesktopBrowserSetting found{*id, std::nullopt};
    const auto file = isFileName(*id) ? helperFile(*id) : std::nullopt;
    if (!file || !file->helper || !file->helper->isUsable())
        return found;
    if (entries.entry(*id)) {
        found.id = *id;
        return found;
    }
    for (const auto &binary : file->helper->binaries) {
        if (!found.id && entries.entry(binary))
            found.id = binary;
    }
    return found;
}

bool XfceBrowser::provideHelper(const DesktopEntry &entry) {
    const auto found = helperFile(entry.id);
    const bool isForeign = found && !(found->helper && found->helper->isOurs);
    if (isForeign && found->helper && found->helper->isUsable())
        return true;
    const auto path = helperPath(places.dataHome, entry.id);
    if (isForeign && found->path == path)
        return false;
    const auto text = helperFileFor(entry);
    return text && (readFile(path) == text || replaceConfigurationFile(path, *text));
}

bool XfceBrowser::set(const DesktopEntry &entry) {
    const auto path = places.configHome + std::string(settingsFile);
    const auto bytes = readForChange(path);
    if (!bytes || !isFileName(entry.id) || !provideHelper(entry))
        return false;
    KeyFileText text(*bytes);
    text.set(noGroup, webBrowserKey, entry.id);
    text.remove(noGroup, dismissedKey);
    return text.bytes() == *bytes || bool(replaceConfigurationFile(path, text.bytes()));
}

} // namespace fernhop::freedesktop
