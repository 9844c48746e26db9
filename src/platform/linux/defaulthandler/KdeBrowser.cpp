#include "platform/linux/defaulthandler/KdeBrowser.h"

#include "platform/linux/base/KeyFile.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <array>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view kdeGroup = "General";
constexpr std::string_view kdeKey = "BrowserApplication";

// KConfig writes options behind a name, in any order: "[$e]", "[$d]" for deleted, "[$i]" for locked.
constexpr std::array<std::string_view, 6> optionsInUse = {"", "[$e]", "[$d]", "[$i]", "[$ie]", "[$ei]"};

bool isDeletion(std::string_view options) {
    return options.find('d') != std::string_view::npos;
}

bool isLock(std::string_view options) {
    return options.find('i') != std::string_view::npos;
}

// A whole file, or the whole group, may be locked.
bool isLockedWhole(std::string_view bytes) {
    const auto hasLine = [bytes](std::string_view line) {
        return bytes.starts_with(line) ||
               bytes.find(std::string("\n").append(line)) != std::string_view::npos;
    };
    return hasLine("[$i]") || hasLine("[General][$i]");
}

} // namespace

KdeBrowser::KdeBrowser(const XdgSession &session, const DesktopEntries &desktopEntries)
    : paths(session.allConfigFolders()), entries(desktopEntries), files(parse) {
    std::reverse(paths.begin(), paths.end());
    for (auto &path : paths)
        path += "/kdeglobals";
}

KdeBrowser::Globals KdeBrowser::parse(const std::optional<std::string> &bytes) {
    Globals globals;
    globals.isLocked = isLockedWhole(bytes.value_or(""));
    const KeyFileText text(bytes.value_or(""));
    for (const std::string_view inGroup : {"General", "General][$i"}) {
        for (const auto options : optionsInUse) {
            auto value = text.value(inGroup, std::string(kdeKey).append(options));
            if (!value)
                continue;
            globals.browser = isDeletion(options) ? "" : std::move(*value);
            globals.isLocked = globals.isLocked || isLock(options);
        }
    }
    return globals;
}

KdeBrowser::Globals KdeBrowser::effective() const {
    Globals result;
    for (const auto &path : paths) {
        const auto &globals = files.at(path);
        if (globals.browser)
            result.browser = globals.browser;
        result.isLocked = globals.isLocked;
        if (result.isLocked)
            break;
    }
    return result;
}

std::optional<DesktopBrowserSetting> KdeBrowser::setting() const {
    const auto text = effective().browser;
    if (!text || text->empty())
        return std::nullopt;
    const std::string id(withoutEnding(*text, desktopEntryExtension));
    if (text->starts_with('!') || !entries.entry(id))
        return DesktopBrowserSetting{*text, std::nullopt};
    return DesktopBrowserSetting{*text, id};
}

bool KdeBrowser::isLocked() const {
    return effective().isLocked;
}

bool KdeBrowser::set(const std::string &id) {
    const auto bytes = readForChange(paths.back());
    if (isLocked() || !bytes)
        return false;
    KeyFileText text(*bytes);
    for (const auto options : optionsInUse) {
        if (!options.empty())
            text.remove(kdeGroup, std::string(kdeKey).append(options));
    }
    text.set(kdeGroup, kdeKey, id + std::string(desktopEntryExtension));
    return text.bytes() == *bytes || bool(replaceConfigurationFile(paths.back(), text.bytes()));
}

} // namespace fernhop::freedesktop
