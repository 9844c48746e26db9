#include "platform/linux/tray/IconFinder.h"

#include "TrayHost.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

class IconFinderTest : public testing::Test {
  protected:
    /// Where the icon of an entry with this `Icon` value comes from.
    [[nodiscard]] IconSource sourceOf(const std::string &icon) {
        entries.icons["/app.desktop"] = icon;
        return IconFinder(entries, iconFolders(places)).iconOfEntry("/app.desktop");
    }
    void putIcon(const std::string &path) const { home.write(home.systemData() + path, "picture"); }

    support::TemporaryHome home;
    ApplicationPlaces places{.folders = {home.data() + "/applications", home.systemData() + "/applications"},
                             .programFolders = {},
                             .locales = {},
                             .home = home.home()};
    ListedEntries entries;
};

TEST_F(IconFinderTest, LooksBesideTheFoldersOfTheEntries) {
    const auto folders = iconFolders(places);
    EXPECT_EQ(folders.themes,
              (std::vector{home.home() + "/.icons", home.data() + "/icons", home.systemData() + "/icons"}));
    EXPECT_EQ(folders.pixmaps,
              (std::vector<std::string>{home.data() + "/pixmaps", home.systemData() + "/pixmaps",
                                        "/usr/share/pixmaps"}));
}

TEST_F(IconFinderTest, NamesGoToTheHostAsTheyAre) {
    EXPECT_EQ(sourceOf("org.example.App"), IconSource(IconName{"org.example.App"}));
    EXPECT_EQ(sourceOf("Größe 1"), IconSource(IconName{"Größe 1"}));
    EXPECT_EQ(sourceOf("old.xpm"), IconSource(IconName{"old"}));
    EXPECT_EQ(sourceOf("old.png"), IconSource(IconName{"old"}));
}

TEST_F(IconFinderTest, PathsAreFiles) {
    EXPECT_EQ(sourceOf("/opt/app/icon.svg"), IconSource(IconFile{"/opt/app/icon.svg"}));
}

TEST_F(IconFinderTest, NamesThatNotEveryThemeHasAreFilesBesideTheThemes) {
    putIcon("/pixmaps/alone.png");
    const IconSource file = IconFile{home.systemData() + "/pixmaps/alone.png"};
    EXPECT_EQ(sourceOf("alone"), file);
    EXPECT_EQ(sourceOf("alone.png"), file);
    putIcon("/icons/hicolor/16x16/apps/another.png");
    putIcon("/icons/hicolor/16x16/mimetypes/alone.png");
    putIcon("/icons/other/16x16/apps/alone.png");
    EXPECT_EQ(sourceOf("alone"), file) << "a theme that the host need not use";
}

TEST_F(IconFinderTest, TheThemeThatEveryHostHasComesBeforeTheFilesBesideIt) {
    putIcon("/pixmaps/a.png");
    putIcon("/icons/hicolor/scalable/apps/a.svg");
    EXPECT_EQ(sourceOf("a"), IconSource(IconName{"a"}));
}

TEST_F(IconFinderTest, WhatCannotBeAnIconIsNone) {
    EXPECT_EQ(IconFinder(entries, {}).iconOfEntry("/missing.desktop"), IconSource());
    for (const std::string icon :
         {"", "\xff", "../../etc/passwd", "a/b", ".", "..", ".png", "a\nb", "/tmp/a\x1b[31m.png", "\x7f"})
        EXPECT_EQ(sourceOf(icon), IconSource()) << icon;
    EXPECT_EQ(sourceOf(std::string("a\0b", 3)), IconSource());
    EXPECT_EQ(sourceOf(std::string(100000, 'a')), IconSource());
}

} // namespace
} // namespace fernhop::freedesktop
