#include "platform/linux/defaulthandler/XfceBrowser.h"

#include "platform/linux/base/KeyFile.h"

namespace fernhop::freedesktop {

namespace {

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

XfceBrowser::XfceBrowser(const XdgSession &session, const DesktopEntries &desktopEntries)
    : places(session), entries(desktopEntries), settings(parseSettings), helpers(parseHelper) {}

std::optional<std::string> XfceBrowser::setting() const {
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
std::optional<BrowserChoice> XfceBrowser::choice() const {
    const auto id = setting();
    if (!id || id->empty())
        return std::nullopt;
    BrowserChoice choice{*id, std::nullopt};
    const auto file = isFileName(*id) ? helperFile(*id) : std::nullopt;
    if (!file || !file->helper || !file->helper->isUsable())
        return choice;
    if (entries.entry(*id)) {
        choice.id = *id;
        return choice;
    }
    for (const auto &binary : file->helper->binaries) {
        if (!choice.id && entries.entry(binary))
            choice.id = binary;
    }
    return choice;
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
