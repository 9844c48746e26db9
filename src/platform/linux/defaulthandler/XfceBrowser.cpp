#include "platform/linux/defaulthandler/XfceBrowser.h"

#include "platform/linux/applications/ExecLine.h"
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

struct Commands {
    std::string plain;
    std::string withLink;
};

void append(std::string &command, const std::string &argument) {
    if (!command.empty())
        command += ' ';
    command += '"' + argument + '"';
}

std::optional<Commands> commandsOf(DesktopEntry entry) {
    // No file name or text of an entry holds a NUL.
    const std::string link(1, '\0');
    entry.icon.clear(); // "%i" stands for two arguments, and is of no weight here.
    const auto arguments = entry.terminal ? std::nullopt : execArguments(entry, {link});
    if (!arguments)
        return std::nullopt;
    Commands commands;
    for (auto argument : *arguments) {
        const auto place = argument.find(link);
        const bool takesLink = place != std::string::npos;
        if (takesLink)
            argument.erase(place, link.size());
        if (!isExpressible(argument))
            return std::nullopt;
        if (takesLink)
            argument.insert(place, linkPlace);
        if (!argument.empty())
            append(commands.withLink, argument);
        if (!argument.empty() && !takesLink)
            append(commands.plain, argument);
    }
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
    return dataFolder + "/xfce4/helpers/" + id + std::string(desktopEntryExtension);
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
    text.set(group, "Name", entry.name.value_or("").empty() ? entry.id : oneLine(*entry.name));
    if (!entry.icon.empty())
        text.set(group, "Icon", oneLine(entry.icon));
    text.set(group, "X-XFCE-Category", "WebBrowser");
    text.set(group, "X-XFCE-Commands", commands->plain + ';');
    text.set(group, "X-XFCE-CommandsWithParameter", commands->withLink + ';');
    text.set(group, ownMark, "true");
    return text.bytes();
}

XfceBrowser::XfceBrowser(const XdgSession &xdgSession, const DesktopEntries &desktopEntries)
    : session(xdgSession), entries(desktopEntries), settings(parseSettings), helpers(parseHelper) {}

std::optional<std::string> XfceBrowser::settingText() const {
    for (const auto &folder : session.allConfigFolders()) {
        const auto &found = settings.at(folder + std::string(settingsFile));
        if (found)
            return found;
    }
    return std::nullopt;
}

// Xfce takes the first file of that name and looks no further, also when it is of no use.
std::optional<XfceBrowser::HelperFile> XfceBrowser::helperFile(const std::string &id) const {
    for (const auto &folder : session.allDataFolders()) {
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
    const auto path = helperPath(session.dataHome, entry.id);
    if (isForeign && found->path == path)
        return false;
    const auto text = helperFileFor(entry);
    return text && (readFile(path) == text || replaceConfigurationFile(path, *text));
}

bool XfceBrowser::set(const DesktopEntry &entry) {
    const auto path = session.configHome + std::string(settingsFile);
    const auto bytes = readForChange(path);
    if (!bytes || !isFileName(entry.id) || !provideHelper(entry))
        return false;
    KeyFileText text(*bytes);
    text.set(noGroup, webBrowserKey, entry.id);
    text.remove(noGroup, dismissedKey);
    return text.bytes() == *bytes || bool(replaceConfigurationFile(path, text.bytes()));
}

} // namespace fernhop::freedesktop
