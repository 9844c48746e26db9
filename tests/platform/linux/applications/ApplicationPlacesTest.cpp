#include "platform/linux/applications/ApplicationPlaces.h"

#include <gtest/gtest.h>

#include <map>

namespace fernhop::freedesktop {
namespace {

using Texts = std::vector<std::string>;

ApplicationPlaces places(const std::map<std::string, std::string> &variables) {
    Environment environment;
    for (const auto &[name, value] : variables)
        environment.set(name, value);
    return applicationPlaces(environment);
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

TEST(ApplicationPlacesTest, UnsetVariablesHaveDefaults) {
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

TEST(ApplicationPlacesTest, TheLayoutHasTheFoldersInOrder) {
    ApplicationPlaces some;
    some.folders = {"/b", "/a b"};
    const auto layout = applicationLayout(some);
    EXPECT_EQ(layout.directories, (std::vector<Url>{Url::fileUrl("/b"), Url::fileUrl("/a b")}));
    EXPECT_EQ(layout.bundleExtension, "desktop");
}

TEST(LocaleNamesTest, TheMostSpecificNameComesFirst) {
    EXPECT_EQ(localeNames("sr_YU.UTF-8@Latn"), (Texts{"sr_YU@Latn", "sr_YU", "sr@Latn", "sr"}));
    EXPECT_EQ(localeNames("sr_YU"), (Texts{"sr_YU", "sr"}));
    EXPECT_EQ(localeNames("sr@Latn"), (Texts{"sr@Latn", "sr"}));
    EXPECT_EQ(localeNames("sr"), Texts{"sr"});
    EXPECT_EQ(localeNames("de_DE.ISO-8859-15@euro"), (Texts{"de_DE@euro", "de_DE", "de@euro", "de"}));
}

TEST(LocaleNamesTest, TheLocaleWithoutLanguageHasNoNames) {
    for (const auto *locale : {"", "C", "C.UTF-8", "POSIX", ".UTF-8", "@x", "_DE"})
        EXPECT_EQ(localeNames(locale), Texts{}) << locale;
}

TEST(LocaleNamesTest, AListGivesTheNamesOfEach) {
    EXPECT_EQ(localeNames("de_AT:fr::C:en_GB"), (Texts{"de_AT", "de", "fr", "en_GB", "en"}));
    EXPECT_EQ(localeNames(""), Texts{});
    EXPECT_EQ(localeNames(":"), Texts{});
}

} // namespace
} // namespace fernhop::freedesktop
