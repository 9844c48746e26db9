#include "platform/linux/applications/DesktopEntries.h"

#include "platform/Ascii.h"
#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/KeyFile.h"
#include "platform/linux/base/PassOnPrograms.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace fernhop::freedesktop {

namespace {

bool isSchemeHandlerType(std::string_view mimeType) {
    return mimeType.size() > schemeTypePrefix.size() &&
           ascii::lowercased(mimeType.substr(0, schemeTypePrefix.size())) == schemeTypePrefix;
}

std::vector<std::string> schemesOf(const std::vector<std::string> &mimeTypes) {
    std::vector<std::string> schemes;
    for (const auto &element : mimeTypes) {
        const auto mimeType = trimmed(element);
        if (isSchemeHandlerType(mimeType))
            schemes.emplace_back(mimeType.substr(schemeTypePrefix.size()));
    }
    return schemes;
}

bool canBeLaunched(const DesktopEntry &entry) {
    return entry.exec.empty() ? entry.dbusActivatable : hasValidExec(entry);
}

/// Whether menus of the desktop with these names show the entry. The first name that "OnlyShowIn" or
/// "NotShowIn" has decides.
bool isShownIn(const std::vector<std::string> &desktops, const KeyFileGroup &group) {
    const auto listed = [&](std::string_view key) {
        auto names = group.list(key);
        std::ranges::transform(names, names.begin(),
                               [](const auto &name) { return ascii::lowercased(name); });
        return names;
    };
    const auto only = listed("OnlyShowIn");
    const auto except = listed("NotShowIn");
    for (const auto &desktop : desktops) {
        if (std::ranges::find(only, desktop) != only.end())
            return true;
        if (std::ranges::find(except, desktop) != except.end())
            return false;
    }
    return !group.raw("OnlyShowIn");
}

using Kind = PassOnProgram::Kind;
using Words = std::vector<std::string>;

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

bool isAssignment(std::string_view word) {
    const auto equals = word.find('=');
    return equals != std::string_view::npos && word.substr(0, equals).find('/') == std::string_view::npos;
}

/// Whether the word behind this option of `env` belongs to it.
bool takesNextWord(std::string_view option) {
    return option == "-u" || option == "--unset" || option == "-C" || option == "--chdir";
}

/// The file name of the program behind the words that only prepare its start: the programs that are
/// `isRunner`, their options and assignments. Empty when there is nothing else.
template <typename Predicate>
std::string_view programBehind(const Words &words, Predicate isRunner) {
    bool isForEnv = false;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const auto name = fileNameOf(words[at]);
        if (isForEnv && takesNextWord(words[at]))
            ++at;
        else if (isRunner(name))
            isForEnv = name == "env";
        else if (!words[at].starts_with('-') && !isAssignment(words[at]))
            return name;
    }
    return {};
}

bool isWrapperOrInterpreter(std::string_view name) {
    return isPassOnProgram(name, Kind::wrapper) || isPassOnProgram(name, Kind::interpreter);
}

bool namesFernhop(std::string_view word) {
    return withoutEnding(fileNameOf(word), desktopEntryExtension) == fernhopDesktopID || word == "fernhop" ||
           word.ends_with("/bin/fernhop");
}

bool namesPortal(std::string_view word) {
    return word.find("org.freedesktop.portal.OpenURI") != std::string_view::npos;
}

bool isOpenerWord(std::string_view word) {
    return isPassOnProgram(fileNameOf(word), Kind::opener) || namesFernhop(word) || namesPortal(word);
}

/// Whether word `at` is a program whose next word that is no option is its opening subcommand.
bool startsOpeningSubcommand(const Words &words, std::size_t at) {
    const auto isOption = [](const std::string &word) { return word.starts_with('-'); };
    const auto verb =
        std::find_if_not(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, words.end(), isOption);
    return verb != words.end() && opensLinksWithVerb(fileNameOf(words[at]), *verb);
}

int preferenceOf(const std::string &text) {
    int number = DesktopEntry().initialPreference;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::optional<DesktopEntry> parseApplication(std::string_view contents,
                                             const std::vector<std::string> &locales,
                                             const std::vector<std::string> &desktops) {
    const auto group = KeyFileGroup::read(contents, "Desktop Entry");
    if (!group || group->raw("Type") != "Application" || group->isTrue("Hidden"))
        return std::nullopt;
    DesktopEntry entry;
    entry.name = group->localizedText("Name", locales);
    entry.unlocalizedName = group->localizedText("Name", {});
    entry.exec = group->text("Exec");
    entry.tryExec = group->text("TryExec");
    entry.startupWMClass = group->text("StartupWMClass");
    entry.icon = group->localizedText("Icon", locales).value_or("");
    entry.workingDirectory = group->text("Path");
    entry.schemes = schemesOf(group->list("MimeType"));
    entry.initialPreference = preferenceOf(group->text("InitialPreference"));
    entry.noDisplay = group->isTrue("NoDisplay") || !isShownIn(desktops, *group);
    entry.dbusActivatable = group->isTrue("DBusActivatable");
    entry.startupNotify = group->isTrue("StartupNotify");
    entry.terminal = group->isTrue("Terminal");
    return entry;
}

bool opensWebLinks(const DesktopEntry &entry) {
    return std::any_of(entry.schemes.begin(), entry.schemes.end(), [](const std::string &scheme) {
        return ascii::lowercased(scheme) == "http" || ascii::lowercased(scheme) == "https";
    });
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view contents,
                                              const std::vector<std::string> &locales,
                                              const std::vector<std::string> &desktops) {
    auto entry = parseApplication(contents, locales, desktops);
    return entry && canBeLaunched(*entry) ? std::move(entry) : std::nullopt;
}

std::optional<DesktopEntry> parseRefusedEntry(std::string_view contents,
                                              const std::vector<std::string> &locales,
                                              const std::vector<std::string> &desktops) {
    auto entry = parseApplication(contents, locales, desktops);
    return entry && opensWebLinks(*entry) && interpretsUrls(*entry) ? std::move(entry) : std::nullopt;
}

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
    if (isPassOnProgram(programBehind(words, isWrapperOrInterpreter), Kind::openerWhenRun) ||
        std::any_of(words.begin(), words.end(), isOpenerWord))
        return true;
    for (std::size_t at = 0; at < words.size(); ++at) {
        if (startsOpeningSubcommand(words, at))
            return true;
    }
    return false;
}

std::string programOf(const DesktopEntry &entry) {
    Words words;
    for (auto &word : execWords(entry.exec).value_or(std::vector<ExecWord>()))
        words.push_back(std::move(word.text));
    const auto name = programBehind(words, [](std::string_view runner) { return runner == "env"; });
    return isPassOnProgram(name) ? std::string() : std::string(name);
}

std::string iconName(std::string icon) {
    if (icon.starts_with('/'))
        return icon;
    for (const std::string_view ending : {".png", ".svg", ".xpm"})
        if (icon.size() > ending.size() && icon.ends_with(ending))
            icon.resize(icon.size() - ending.size());
    return icon;
}

} // namespace fernhop::freedesktop
