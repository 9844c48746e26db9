#include "platform/linux/applications/DesktopBundles.h"

#include "DesktopFixture.h"
#include "catalog/BrowserCatalog.h"
#include "fakes/FakeWorkspace.h"
#include "platform/linux/applications/PosixFileManager.h"

namespace fernhop::freedesktop {
namespace {

using Texts = std::vector<std::string>;

constexpr auto web = "MimeType=x-scheme-handler/http;x-scheme-handler/HTTPS;\n";

/// Finds applications as the Linux session does.
class DesktopWorkspace : public fakes::FakeWorkspace {
  public:
    DesktopWorkspace(const DesktopEntries &desktopEntries, const fakes::FakeApplications &disk,
                     fakes::FakeNotificationCenter &center)
        : FakeWorkspace(disk, center), entries(desktopEntries) {}

    std::optional<Url> urlForApplicationWithBundleIdentifier(const std::string &bundleID) const override {
        return applicationUrl(entries, bundleID);
    }

  private:
    const DesktopEntries &entries;
};

class DesktopBundlesTest : public DesktopFixture {
  protected:
    [[nodiscard]] std::unique_ptr<Bundle> open(const std::string &path) const {
        return bundles.bundleWithUrl(Url::fileUrl(path));
    }

    [[nodiscard]] ApplicationCatalog catalog() const {
        return ApplicationCatalog(files, bundles, applicationLayout(places()));
    }

    [[nodiscard]] Texts listed() const {
        Texts identifiers;
        for (const auto &application : catalog().installedApplications({}))
            identifiers.push_back(application.bundleID);
        return identifiers;
    }

    InstalledDesktopEntries installed{places()};
    DesktopBundles bundles{installed};
    PosixFileManager files{home.home()};
    fakes::FakeApplications noDisk;
    fakes::FakeNotificationCenter notifications;
    DesktopWorkspace workspace{installed, noDisk, notifications};
    BrowserCatalog browsers{workspace, files, bundles, catalog()};
};

TEST_F(DesktopBundlesTest, EntriesAreDescribedAsBundles) {
    writeEntry(user("/org/falcon.desktop"), "Falcon", std::string("Name[de]=Falke\n") + web);
    const auto bundle = open(user("/org/falcon.desktop"));
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier(), "org-falcon");
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleDisplayName"), PropertyValue{"Falke"});
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleName"), PropertyValue{"Falcon"});
    const PropertyDictionary type{{"CFBundleURLSchemes", {PropertyArray{{"http"}, {"HTTPS"}}}}};
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleURLTypes"), PropertyValue{PropertyArray{{type}}});
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleVersion"), std::nullopt);
}

TEST_F(DesktopBundlesTest, MissingKeysAreAbsent) {
    home.write(user("/bare.desktop"), "[Desktop Entry]\nType=Application\nExec=a\n");
    const auto bundle = open(user("/bare.desktop"));
    ASSERT_TRUE(bundle);
    for (const auto *key : {"CFBundleDisplayName", "CFBundleName", "CFBundleURLTypes"})
        EXPECT_EQ(bundle->objectForInfoDictionaryKey(key), std::nullopt) << key;
    EXPECT_EQ(browsers.appDisplayName("bare"), "bare.desktop");
}

TEST_F(DesktopBundlesTest, OnlyDesktopEntriesInTheFoldersOpen) {
    home.write(user("/falcon.txt"), "[Desktop Entry]\nType=Application\nExec=a\n");
    writeEntry(home.home() + "/falcon.desktop", "Elsewhere");
    EXPECT_FALSE(open(user("/falcon.txt")));
    EXPECT_FALSE(open(home.home() + "/falcon.desktop"));
    EXPECT_FALSE(open(user()));
    EXPECT_FALSE(open("/"));
    const auto webUrl = Url::parse("http://h" + user("/falcon.desktop"));
    ASSERT_TRUE(webUrl);
    writeEntry(user("/falcon.desktop"), "Falcon");
    EXPECT_TRUE(open(user("/falcon.desktop")));
    EXPECT_FALSE(bundles.bundleWithUrl(*webUrl));
}

TEST_F(DesktopBundlesTest, AnEntryWithoutDisplayIsFoundByNameAndNotListed) {
    writeEntry(user("/falcon.desktop"), "Falcon", std::string("NoDisplay=true\n") + web);
    writeEntry(system("/falcon.desktop"), "System's Falcon", web);
    EXPECT_EQ(open(user("/falcon.desktop"))->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(listed(), Texts{}) << "it masks the later copy";
    EXPECT_EQ(browsers.browser("falcon"),
              (Browser{"Falcon", "falcon", Url::fileUrl(user("/falcon.desktop"))}));
}

TEST_F(DesktopBundlesTest, AMaskedEntryIsNotListed) {
    writeEntry(system("/falcon.desktop"), "Falcon", web);
    writeEntry(system("/a/b.desktop"), "B", web);
    EXPECT_EQ(listed(), (Texts{"a-b", "falcon"}));
    home.write(user("/falcon.desktop"), "[Desktop Entry]\nType=Application\nHidden=true\n");
    home.write(user("/a-b.desktop"), "broken");
    EXPECT_EQ(listed(), Texts{});
    EXPECT_EQ(browsers.browser("falcon"), std::nullopt);
    EXPECT_EQ(browsers.appDisplayName("falcon"), "falcon");
}

TEST_F(DesktopBundlesTest, TheCatalogTakesTheUsersCopyFirst) {
    writeEntry(system("/falcon.desktop"), "System's");
    writeEntry(user("/falcon.desktop"), "User's");
    const auto found = catalog().installedApplications({});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "User's");
    EXPECT_EQ(found[0].appURL, Url::fileUrl(user("/falcon.desktop")));
}

TEST_F(DesktopBundlesTest, TheCatalogAndTheLookupAgree) {
    writeEntry(system("/a.desktop"), "A", web);
    writeEntry(system("/with space/b c.desktop"), "B", web);
    writeEntry(user("/sub/deep/c.desktop"), "C", web);
    const auto listedBrowsers = browsers.installedBrowsers({});
    ASSERT_EQ(listedBrowsers.size(), 3U);
    for (const auto &browser : listedBrowsers)
        EXPECT_EQ(browsers.browser(browser.bundleID), browser);
}

TEST_F(DesktopBundlesTest, BrowsersDeclareAWebScheme) {
    writeEntry(user("/1.desktop"), "Both", web);
    writeEntry(user("/2.desktop"), "Only https", "MimeType=x-scheme-handler/https;\n");
    writeEntry(user("/3.desktop"), "Mail", "MimeType=x-scheme-handler/mailto;text/html;\n");
    Texts names;
    for (const auto &browser : browsers.installedBrowsers({}))
        names.push_back(browser.name);
    EXPECT_EQ(names, (Texts{"Both", "Only https"}));
}

TEST_F(DesktopBundlesTest, GenericOpenersAreNotTargets) {
    home.write(user("/opener.desktop"),
               std::string("[Desktop Entry]\nType=Application\nName=Open\nExec=xdg-open %u\n") + web);
    EXPECT_FALSE(open(user("/opener.desktop")));
    EXPECT_EQ(listed(), Texts{});
    EXPECT_EQ(browsers.browser("opener"), std::nullopt);
    EXPECT_TRUE(installed.entry("opener")) << "the entry itself is there";
}

TEST_F(DesktopBundlesTest, AnEmptyNameIsAName) {
    writeEntry(user("/nameless.desktop"), "", web);
    EXPECT_EQ(browsers.appDisplayName("nameless"), "");
    ASSERT_EQ(listed(), Texts{"nameless"});
    EXPECT_EQ(catalog().installedApplications({})[0].name, "");
}

TEST_F(DesktopBundlesTest, AnEntryForAnotherDesktopIsFoundByNameAndNotListed) {
    writeEntry(user("/falcon.desktop"), "Falcon", std::string("OnlyShowIn=KDE;\n") + web);
    writeEntry(user("/hawk.desktop"), "Hawk", std::string("NotShowIn=GNOME;\n") + web);
    writeEntry(user("/kite.desktop"), "Kite", std::string("OnlyShowIn=KDE;GNOME;\n") + web);
    EXPECT_EQ(listed(), Texts{"kite"});
    EXPECT_EQ(browsers.appDisplayName("falcon"), "Falcon");
}

TEST_F(DesktopBundlesTest, FernhopsOwnEntryHasAName) {
    home.write(user("/org.fernhop.Fernhop.desktop"),
               std::string("[Desktop Entry]\nType=Application\nName=Fernhop\nExec=fernhop-open %U\n") + web);
    home.write(user("/other.desktop"),
               std::string("[Desktop Entry]\nType=Application\nName=Fernhop too\nExec=fernhop-open %U\n") +
                   web);
    EXPECT_EQ(bundles.mainBundleIdentifier(), "org.fernhop.Fernhop");
    EXPECT_EQ(browsers.appDisplayName("org.fernhop.Fernhop"), "Fernhop");
    EXPECT_EQ(listed(), Texts{"org.fernhop.Fernhop"});
    EXPECT_EQ(browsers.installedBrowsers("org.fernhop.Fernhop").size(), 0U);
}

} // namespace
} // namespace fernhop::freedesktop
