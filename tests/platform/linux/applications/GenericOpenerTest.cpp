#include "platform/linux/applications/GenericOpener.h"

#include "catalog/OwnBundleID.h"
#include "platform/linux/base/FernhopDesktopID.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

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

TEST(GenericOpenerTest, AWrapperHidesNoOpener) {
    for (const auto *exec :
         {"env BROWSER= xdg-open %u", "env -u DISPLAY FOO=bar gio open %u",
          "sh -c \"xdg-open \\\"\\$1\\\"\" sh %u", "sh -c 'exec xdg-open \"$0\"' %u",
          "bash -c 'true;xdg-open $1' x %u", "bash -c 'x=$(gio open \"$1\")' x %u",
          "nohup setsid xdg-open %u", "xterm -e x-www-browser %u", "flatpak-spawn --host xdg-open %u",
          "nice -n 5 sensible-browser %u", "sh -c 'open \"$1\"' x %u",
          "gdbus call --session --method org.freedesktop.portal.OpenURI.OpenURI x %u"})
        EXPECT_TRUE(isOpener(exec)) << exec;
}

TEST(GenericOpenerTest, FernhopIsAnOpenerByWhateverName) {
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

TEST(GenericOpenerTest, BrowsersAreNone) {
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
