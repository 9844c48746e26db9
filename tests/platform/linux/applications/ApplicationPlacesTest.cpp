#include "platform/linux/applications/ApplicationPlaces.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

#include <map>

namespace fernhop::freedesktop {
namespace {

using Texts = std::vector<std::string>;

ApplicationPlaces places(const std::map<std::string, std::string> &variables) {
    return applicationPlaces([&](const char *name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
}

Texts folders(const std::map<std::string, std::string> &variables) {
    return places(variables).folders;
}

TEST(ApplicationPlacesTest, TheUsersFolderComesFirstThenTheSystemsThenTheExports) {
    EXPECT_EQ(folders({{"HOME", "/home/ada"}, {"XDG_DATA_HOME", "/data"}, {"XDG_DATA_DIRS", "/a:/b/c"}}),
              (Texts{"/data/applications", "/a/applications", "/b/c/applications",
                     "/data/flatpak/exports/share/applications",
                     "/var/lib/flatpak/exports/share/applications", "/var/lib/snapd/desktop/applications"}));
}

TEST(ApplicationPlacesTest, WhatIsNotSetHasItsDefault) {
    const Texts expected{"/home/ada/.local/share/applications",
                         "/usr/local/share/applications",
                         "/usr/share/applications",
                         "/home/ada/.local/share/flatpak/exports/share/applications",
                         "/var/lib/flatpak/exports/share/applications",
                         "/var/lib/snapd/desktop/applications"};
    EXPECT_EQ(folders({{"HOME", "/home/ada"}}), expected);
    EXPECT_EQ(folders({{"HOME", "/home/ada/"}, {"XDG_DATA_HOME", ""}, {"XDG_DATA_DIRS", ""}}), expected);
}

TEST(ApplicationPlacesTest, RelativePathsAreIgnored) {
    const auto found = folders({{"HOME", "/h"}, {"XDG_DATA_HOME", "data"}, {"XDG_DATA_DIRS", "x:./y::/z"}});
    EXPECT_EQ(found[0], "/h/.local/share/applications");
    EXPECT_EQ(found[1], "/z/applications");
    EXPECT_EQ(found.size(), 5U);
}

TEST(ApplicationPlacesTest, ExportsThatTheEnvironmentNamesKeepTheirPlaceAndNoFolderStandsTwice) {
    EXPECT_EQ(
        folders({{"HOME", "/h"},
                 {"XDG_DATA_DIRS", "/h/.local/share/flatpak/exports/share/:/var/lib/flatpak/exports/share/:"
                                   "/usr/share/:/usr/share:/var/lib/snapd/desktop"}}),
        (Texts{"/h/.local/share/applications", "/h/.local/share/flatpak/exports/share/applications",
               "/var/lib/flatpak/exports/share/applications", "/usr/share/applications",
               "/var/lib/snapd/desktop/applications"}));
}

TEST(ApplicationPlacesTest, TheLocaleIsFoundAsTheDesktopFindsIt) {
    const auto locales = [](std::map<std::string, std::string> variables) {
        return places(variables).locales;
    };
    EXPECT_EQ(locales({{"LANG", "de_DE.UTF-8"}}), (Texts{"de_DE", "de"}));
    EXPECT_EQ(locales({{"LANG", "de"}, {"LC_MESSAGES", "fr"}}), Texts{"fr"});
    EXPECT_EQ(locales({{"LANG", "de"}, {"LC_MESSAGES", "fr"}, {"LC_ALL", "it"}}), Texts{"it"});
    EXPECT_EQ(locales({{"LANG", "de"}, {"LC_ALL", ""}}), Texts{"de"});
    EXPECT_EQ(locales({{"LC_ALL", "it"}, {"LANGUAGE", "pl:cs"}}), (Texts{"pl", "cs"}));
    EXPECT_EQ(locales({{"LANG", "C.UTF-8"}}), Texts{});
    EXPECT_EQ(locales({}), Texts{});
}

TEST(ApplicationPlacesTest, ProgramsAreLookedForInPath) {
    EXPECT_EQ(places({{"PATH", "/a::bin:/b"}}).programFolders, (Texts{"/a", "/b"}));
    EXPECT_EQ(places({}).programFolders, (Texts{"/usr/local/bin", "/usr/bin", "/bin"}));
}

TEST(ApplicationPlacesTest, ThisProcessHasAHomeEvenWithoutTheVariable) {
    const support::ScopedEnvironment changes({{"HOME", std::nullopt}, {"XDG_DATA_HOME", "/somewhere"}});
    const auto found = applicationPlacesOfProcess();
    EXPECT_TRUE(found.home.starts_with('/'));
    EXPECT_EQ(found.folders.front(), "/somewhere/applications");
}

TEST(ApplicationPlacesTest, TheLayoutHasTheFoldersInOrder) {
    ApplicationPlaces some;
    some.folders = {"/b", "/a b"};
    const auto layout = applicationLayout(some);
    EXPECT_EQ(layout.directories, (std::vector<Url>{Url::fileUrl("/b"), Url::fileUrl("/a b")}));
    EXPECT_EQ(layout.bundleExtension, "desktop");
}

} // namespace
} // namespace fernhop::freedesktop
