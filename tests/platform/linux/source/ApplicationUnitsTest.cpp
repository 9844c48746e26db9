#include "platform/linux/source/ApplicationUnits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace fernhop::freedesktop {
namespace {

std::string first(const std::string &path) {
    const auto names = applicationsOfControlGroup(path);
    return names.empty() ? "(none)" : names.front();
}

TEST(ApplicationsOfControlGroup, NamesTheApplicationOfAUnit) {
    const std::string slice = "/user.slice/user-1000.slice/user@1000.service/app.slice/";
    EXPECT_EQ(first(slice + "app-gnome-org.gnome.Nautilus-4711.scope"), "org.gnome.Nautilus");
    EXPECT_EQ(first(slice + "app-org.kde.konsole-0f2a94c5a2b64c0f9d2d.scope"), "org.kde.konsole");
    EXPECT_EQ(first(slice + "app-flatpak-org.mozilla.firefox-4711.scope"), "org.mozilla.firefox");
    EXPECT_EQ(first(slice + "app-gnome-google\\x2dchrome-4711.scope"), "google-chrome");
    EXPECT_EQ(first(slice + "app-org.kde.kate@0f2a94c5.service"), "org.kde.kate");
    EXPECT_EQ(first(slice + "app-fernhop-firefox\\x2desr-a1b2.scope"), "firefox-esr");
    EXPECT_EQ(first(slice + "app-thunderbird.service"), "thunderbird");
    EXPECT_EQ(first(slice + "app-org.gnome.Terminal.slice/vte-spawn-0f2a94c5.scope"), "org.gnome.Terminal");
    EXPECT_EQ(first(slice + "snap.firefox.firefox-0f2a94c5-1111-2222-3333-444455556666.scope"),
              "firefox_firefox");
    EXPECT_EQ(first(slice + "snap.telegram-desktop.telegram-desktop.0f2a.scope"),
              "telegram-desktop_telegram-desktop");
}

TEST(ApplicationsOfControlGroup, IncludesAnIDWithPlainHyphens) {
    for (const std::string unit : {"app-gnome-google-chrome-4711.scope", "app-google-chrome-4711.scope"}) {
        const auto names = applicationsOfControlGroup("/" + unit);
        EXPECT_NE(std::find(names.begin(), names.end(), "google-chrome"), names.end()) << unit;
    }
}

TEST(ApplicationsOfControlGroup, FindsNoneInOtherUnits) {
    for (const std::string path :
         {"", "/", "/init.scope", "/user.slice/session-2.scope", "/system.slice/cron.service", "app-.scope",
          "/app-x.scope", "/app-.service", "/snap.scope", "/snap.x.scope", "/apples-1.scope", "/app--1.slic"})
        EXPECT_TRUE(applicationsOfControlGroup(path).empty()) << path;
}

TEST(ApplicationsOfControlGroup, KeepsBrokenEscapes) {
    EXPECT_EQ(first("/app-a\\xzz-1.scope"), "a\\xzz");
    EXPECT_EQ(first("/app-a\\x2-1.scope"), "a\\x2");
    EXPECT_EQ(first("/app-a\\-1.scope"), "a\\");
}

TEST(ApplicationsOfControlGroup, TakesAnyBytes) {
    std::mt19937 random(1);
    const std::string alphabet = "ap-@.\\x2d/snscopervicle\xff";
    for (int round = 0; round < 20'000; ++round) {
        std::string path = round % 2 == 0 ? "/app-" : "/snap.";
        for (auto length = random() % 40; length > 0; --length)
            path += alphabet[random() % alphabet.size()];
        for (const auto &name : applicationsOfControlGroup(path + ".scope"))
            EXPECT_LE(name.size(), path.size());
    }
}

TEST(LaunchScopeName, EscapesWhatUnitNamesMayNotHold) {
    EXPECT_EQ(launchScopeName("firefox", "12ab"), "app-fernhop-firefox-12ab.scope");
    EXPECT_EQ(launchScopeName("org.kde-web", "1"), "app-fernhop-org.kde\\x2dweb-1.scope");
    EXPECT_EQ(launchScopeName(".a b/c", "1"), "app-fernhop-\\x2ea\\x20b\\x2fc-1.scope");
}

TEST(LaunchScopeName, NamesItsApplication) {
    for (const std::string id : {"firefox", "org.kde-web", ".a b/c", "a@b.service", "\xff\\x2d"})
        EXPECT_EQ(first("/app.slice/" + launchScopeName(id, "12ab")), id);
}

} // namespace
} // namespace fernhop::freedesktop
