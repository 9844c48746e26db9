#include "platform/linux/applications/DesktopEntryParser.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/KeyFile.h"

#include <algorithm>
#include <cstddef>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view schemeHandlerType = "x-scheme-handler/";

bool isSchemeHandlerType(std::string_view mimeType) {
    const auto equalIgnoringCase = [](char left, char right) {
        return left == right || (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
    };
    return mimeType.size() > schemeHandlerType.size() &&
           std::equal(schemeHandlerType.begin(), schemeHandlerType.end(), mimeType.begin(),
                      [&](char expected, char found) { return equalIgnoringCase(found, expected); });
}

std::string_view withoutBlanks(std::string_view text) {
    const auto first = std::min(text.find_first_not_of(" \t"), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

std::vector<std::string> schemesOf(const std::vector<std::string> &mimeTypes) {
    std::vector<std::string> schemes;
    for (const auto &element : mimeTypes) {
        const auto mimeType = withoutBlanks(element);
        if (isSchemeHandlerType(mimeType))
            schemes.emplace_back(mimeType.substr(schemeHandlerType.size()));
    }
    return schemes;
}

bool canBeLaunched(const DesktopEntry &entry) {
    return entry.exec.empty() ? entry.dbusActivatable : hasValidExec(entry);
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view contents,
                                              const std::vector<std::string> &locales) {
    const auto group = KeyFileGroup::read(contents, "Desktop Entry");
    if (!group || group->raw("Type") != "Application" || group->isTrue("Hidden"))
        return std::nullopt;
    DesktopEntry entry;
    entry.name = group->localizedText("Name", locales);
    entry.unlocalizedName = group->localizedText("Name", {});
    entry.exec = group->text("Exec");
    entry.tryExec = group->text("TryExec");
    entry.startupWMClass = group->text("StartupWMClass");
    entry.icon = group->localizedText("Icon", locales);
    entry.workingDirectory = group->text("Path");
    entry.schemes = schemesOf(group->list("MimeType"));
    entry.noDisplay = group->isTrue("NoDisplay");
    entry.dbusActivatable = group->isTrue("DBusActivatable");
    entry.startupNotify = group->isTrue("StartupNotify");
    entry.terminal = group->isTrue("Terminal");
    return canBeLaunched(entry) ? std::optional(std::move(entry)) : std::nullopt;
}

} // namespace fernhop::freedesktop
