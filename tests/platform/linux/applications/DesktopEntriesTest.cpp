#include "platform/linux/applications/DesktopEntries.h"

#include "catalog/OwnBundleID.h"
#include "platform/linux/base/PassOnPrograms.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

std::optional<DesktopEntry> parse(const std::string &keys, const Texts &locales = {},
                                  const Texts &desktops = {}) {
    return parseDesktopEntry("[Desktop Entry]\n" + keys, locales, desktops);
}

/// An entry that can be launched, with `keys` besides.
DesktopEntry launchable(const std::string &keys, const Texts &locales = {}) {
    const auto entry = parse("Type=Application\nName=A\nExec=a\n" + keys, locales);
    EXPECT_TRUE(entry) << keys;
    return entry.value_or(DesktopEntry());
}

TEST(DesktopEntryParserTest, ReadsEveryKey) {
    const auto entry =
        launchable("Name=Falcon\nExec=falcon --new %u\nTryExec=/opt/falcon\nStartupWMClass=Falcon-bin\n"
                   "Icon=falcon\nPath=/srv/my\\sfiles\nMimeType=text/html;x-scheme-handler/http;\n"
                   "NoDisplay=true\nDBusActivatable=true\nStartupNotify=true\nTerminal=true\n");
    EXPECT_EQ(entry.name, "Falcon");
    EXPECT_EQ(entry.unlocalizedName, "Falcon");
    EXPECT_EQ(entry.exec, "falcon --new %u");
    EXPECT_EQ(entry.tryExec, "/opt/falcon");
    EXPECT_EQ(entry.startupWMClass, "Falcon-bin");
    EXPECT_EQ(entry.icon, "falcon");
    EXPECT_EQ(entry.workingDirectory, "/srv/my files");
    EXPECT_EQ(entry.schemes, Texts{"http"});
    EXPECT_TRUE(entry.noDisplay);
    EXPECT_TRUE(entry.dbusActivatable);
    EXPECT_TRUE(entry.startupNotify);
    EXPECT_TRUE(entry.terminal);
}

TEST(DesktopEntryParserTest, MissingKeysAreEmptyOrFalse) {
    const auto entry = launchable("");
    EXPECT_EQ(entry.tryExec + entry.startupWMClass + entry.icon + entry.workingDirectory, "");
    EXPECT_EQ(entry.schemes, Texts{});
    EXPECT_FALSE(entry.noDisplay || entry.dbusActivatable || entry.startupNotify || entry.terminal);
}

TEST(DesktopEntryParserTest, OtherTypesAreRejected) {
    EXPECT_TRUE(parse("Type=Application\nExec=a\n"));
    EXPECT_FALSE(parse("Exec=a\n"));
    EXPECT_FALSE(parse("Type=Link\nURL=http://x\nExec=a\n"));
    EXPECT_FALSE(parse("Type=Directory\nExec=a\n"));
    EXPECT_FALSE(parse("Type=application\nExec=a\n"));
}

TEST(DesktopEntryParserTest, HiddenEntriesAreRejected) {
    EXPECT_FALSE(parse("Type=Application\nExec=a\nHidden=true\n"));
    EXPECT_TRUE(parse("Type=Application\nExec=a\nHidden=false\n"));
}

TEST(DesktopEntryParserTest, AnApplicationCanBeLaunched) {
    EXPECT_FALSE(parse("Type=Application\n"));
    EXPECT_FALSE(parse("Type=Application\nExec=\n"));
    EXPECT_FALSE(parse("Type=Application\nExec=a \"open quote\n"));
    EXPECT_FALSE(parse("Type=Application\nExec=a %z\n"));
    EXPECT_TRUE(parse("Type=Application\nDBusActivatable=true\n"));
}

TEST(DesktopEntryParserTest, TheNameIsTheOneInTheUsersLanguage) {
    const auto entry = launchable("Name=Web Browser\nName[de]=Netz\n", {"de_AT", "de"});
    EXPECT_EQ(entry.name, "Netz");
    EXPECT_EQ(entry.unlocalizedName, "Web Browser");
    EXPECT_EQ(launchable("Name=Web Browser\nName[de]=Netz\n", {"fr"}).name, "Web Browser");
}

TEST(DesktopEntryParserTest, AnEmptyNameIsAName) {
    EXPECT_EQ(launchable("Name=\n").name, "");
    EXPECT_EQ(launchable("Name=Web Browser\nName[de]=\n", {"de"}).name, "");
    EXPECT_EQ(parse("Type=Application\nExec=a\n")->name, std::nullopt);
    EXPECT_EQ(parse("Type=Application\nExec=a\nName=\xFF\n")->name, std::nullopt);
    const auto german = parse("Type=Application\nExec=a\nName[de]=Netz\n", {"de"});
    EXPECT_EQ(german->name, "Netz");
    EXPECT_EQ(german->unlocalizedName, std::nullopt);
}

TEST(DesktopEntryParserTest, EntriesForOtherDesktopsAreNotDisplayed) {
    const auto isDisplayed = [](const std::string &keys, const Texts &desktops) {
        return !parse("Type=Application\nExec=a\n" + keys, {}, desktops)->noDisplay;
    };
    EXPECT_TRUE(isDisplayed("OnlyShowIn=GNOME;KDE;\n", {"kde"}));
    EXPECT_FALSE(isDisplayed("OnlyShowIn=GNOME;KDE;\n", {"xfce"}));
    EXPECT_FALSE(isDisplayed("OnlyShowIn=GNOME;\n", {})) << "a session without a desktop's name is another";
    EXPECT_FALSE(isDisplayed("OnlyShowIn=\n", {"kde"}));
    EXPECT_FALSE(isDisplayed("NotShowIn=KDE;\n", {"kde"}));
    EXPECT_TRUE(isDisplayed("NotShowIn=KDE;\n", {"xfce"}));
    EXPECT_TRUE(isDisplayed("NotShowIn=KDE;\n", {}));
    EXPECT_FALSE(isDisplayed("OnlyShowIn=KDE;\nNoDisplay=true\n", {"kde"}));
    // Of the names of one desktop, the first that is listed decides.
    EXPECT_TRUE(isDisplayed("OnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n", {"ubuntu", "gnome"}));
    EXPECT_FALSE(isDisplayed("OnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n", {"ubuntu", "gnome"}));
}

TEST(DesktopEntryParserTest, SchemesAreThoseOfSchemeHandlerTypesAsWritten) {
    EXPECT_EQ(launchable("MimeType=x-scheme-handler/HTTP;text/x-scheme-handler/ftp; x-scheme-handler/https ;"
                         "X-Scheme-Handler/irc;x-scheme-handler/;application/http;x-scheme-handlers/gopher")
                  .schemes,
              (Texts{"HTTP", "https", "irc"}));
}

TEST(DesktopEntryParserTest, LinesMayEndAsOnWindows) {
    const auto entry = parseDesktopEntry(
        "[Desktop Entry]\r\nType=Application\r\nName=A\r\nExec=a %u\r\nNoDisplay=true\r\n", {}, {});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->exec, "a %u");
    EXPECT_TRUE(entry->noDisplay);
}

TEST(DesktopEntryParserTest, AProgramWhoseNameIsNoUtf8KeepsItsBytes) {
    EXPECT_EQ(launchable("Exec=/opt/br\xFCh\n").exec, "/opt/br\xFCh");
}

TEST(DesktopEntryParserTest, ExecLinesWithANulAreRejected) {
    EXPECT_FALSE(parse("Type=Application\nExec=a\0b\n"s));
}

bool isOpener(const std::string &exec) {
    DesktopEntry entry;
    entry.id = "falcon";
    entry.exec = exec;
    return isGenericOpener(entry);
}

TEST(GenericOpenerTest, ProgramsThatAskTheDesktopAreOpeners) {
    for (const auto *exec : {"xdg-open %u",
                             "/usr/bin/xdg-open %u",
                             "gio open %u",
                             "/usr/bin/gio open -- %u",
                             "gvfs-open %U",
                             "gnome-open %u",
                             "kde-open %u",
                             "kde-open5 %u",
                             "/usr/lib/kde-open6 %u",
                             "kfmclient openURL %u",
                             "kioclient exec %u",
                             "kioclient5 --noninteractive exec %u",
                             "kioclient6 openURL %u",
                             "mate-open %u",
                             "exo-open %u",
                             "exo-open --launch WebBrowser %u",
                             "sensible-browser %u",
                             "x-www-browser %u",
                             "www-browser %u",
                             "gnome-www-browser %u",
                             "dde-open %u",
                             "qtxdg-mat open %u",
                             "run-mailcap %u",
                             "python3 -m webbrowser %u",
                             "open %u",
                             "/usr/bin/see %u",
                             "wslview %u",
                             "mimeopen -n %u"})
        EXPECT_TRUE(isOpener(exec)) << exec;
}

TEST(GenericOpenerTest, OpenersBehindWrappersAreFound) {
    for (const auto *exec :
         {"env BROWSER= xdg-open %u", "env -u DISPLAY FOO=bar gio open %u",
          "sh -c \"xdg-open \\\"\\$1\\\"\" sh %u", "sh -c 'exec xdg-open \"$0\"' %u",
          "bash -c 'true;xdg-open $1' x %u", "bash -c 'x=$(gio open \"$1\")' x %u",
          "nohup setsid xdg-open %u", "xterm -e x-www-browser %u", "flatpak-spawn --host xdg-open %u",
          "nice -n 5 sensible-browser %u", "sh -c 'open \"$1\"' x %u",
          "gdbus call --session --method org.freedesktop.portal.OpenURI.OpenURI x %u"})
        EXPECT_TRUE(isOpener(exec)) << exec;
}

TEST(GenericOpenerTest, FernhopIsAnOpenerUnderAllItsNames) {
    for (const auto *exec :
         {"fernhop open %u", "/usr/local/bin/fernhop open %u", "/opt/x/fernhop open %u", "fernhop-open %U",
          "/usr/libexec/fernhop-open %U", "env A=b fernhop open %u", "sh -c 'fernhop open $1' x %u",
          "flatpak run org.fernhop.Fernhop %u", "gtk-launch org.fernhop.Fernhop %u",
          "gio launch /usr/share/applications/org.fernhop.Fernhop.desktop %u", "nice fernhop open %u"})
        EXPECT_TRUE(isOpener(exec)) << exec;
    DesktopEntry own;
    own.id = "org.fernhop.Fernhop";
    EXPECT_TRUE(isGenericOpener(own)) << "also without an Exec line";
    EXPECT_TRUE(isFernhop(own));
    own.id = "org.fernhop.fernhop";
    EXPECT_FALSE(isFernhop(own));
}

TEST(GenericOpenerTest, BrowsersAreNotOpeners) {
    for (const auto *exec :
         {"firefox %u", "/usr/lib/firefox-esr/firefox-esr %u", "env MOZ_X=1 /snap/bin/firefox %u",
          "/usr/bin/flatpak run --branch=stable --command=firefox --file-forwarding org.mozilla.firefox @@u "
          "%u @@",
          "gio launch falcon.desktop %u", "gio mime x", "python3 browser.py %u", "firefox open %u",
          "chromium --see %u", "/tmp/fernhop/recorder --log /home/me/fernhop %u",
          "sh -c 'exec firefox \"$@\"' sh %u", "kioclient5 cat %u", "my-xdg-open-like %u", "dillo --open %u",
          "", "\"broken"})
        EXPECT_FALSE(isOpener(exec)) << exec;
}

TEST(GenericOpenerTest, TheNameIsTheOneThatTheCoreKnows) {
    EXPECT_EQ(fernhopDesktopID, compiledInBundleID);
}

} // namespace
} // namespace fernhop::freedesktop
