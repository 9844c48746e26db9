#include "catalog/BrowserCatalog.h"

#include "catalog/OwnBundleID.h"
#include "fakes/FakeApplications.h"
#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using Names = std::vector<std::string>;

/// A session whose lookup ignores case, as Launch Services does.
class CaselessWorkspace : public fakes::FakeWorkspace {
  public:
    using FakeWorkspace::FakeWorkspace;
    std::optional<Url> caseless;

    std::optional<Url> urlForApplicationWithBundleIdentifier(const std::string &bundleID) const override {
        return caseless ? caseless : FakeWorkspace::urlForApplicationWithBundleIdentifier(bundleID);
    }
};

class BrowserCatalogTest : public testing::Test {
  protected:
    Names browserNames(const std::optional<std::string> &excluding = std::nullopt) {
        Names names;
        for (const auto &browser : catalog.installedBrowsers(excluding))
            names.push_back(browser.name);
        return names;
    }

    fakes::FakeApplications disk;
    fakes::FakeNotificationCenter notifications;
    CaselessWorkspace workspace{disk, notifications};
    BrowserCatalog catalog{workspace, disk, disk, ApplicationCatalog(disk, disk, macApplicationLayout(disk))};
};

TEST_F(BrowserCatalogTest, AnInstalledApplicationIsFoundByItsIdentifier) {
    disk.installApplication("/opt/Falcon.app", "org.example.falcon", "Falcon", {"http"});
    EXPECT_EQ(catalog.browser("org.example.falcon"),
              (Browser{"Falcon", "org.example.falcon", Url::fileUrl("/opt/Falcon.app")}));
    EXPECT_EQ(catalog.appDisplayName("org.example.falcon"), "Falcon");
}

TEST_F(BrowserCatalogTest, AnUninstalledIdentifierIsNotFoundAndIsShownAsItsName) {
    for (const std::string identifier : {"org.example.Gone", "", " ", "g\xF6ne\n"}) {
        EXPECT_EQ(catalog.browser(identifier), std::nullopt);
        EXPECT_EQ(catalog.appDisplayName(identifier), identifier);
    }
}

TEST_F(BrowserCatalogTest, TheIdentifierIsNotTrimmed) {
    disk.installApplication("/opt/Falcon.app", "org.example.falcon", "Falcon");
    EXPECT_EQ(catalog.browser(" org.example.falcon"), std::nullopt);
    EXPECT_EQ(catalog.appDisplayName("org.example.falcon "), "org.example.falcon ");
}

TEST_F(BrowserCatalogTest, TheIdentifierIsReturnedAsGiven) {
    disk.installApplication("/opt/Falcon.app", "org.example.falcon", "Falcon");
    workspace.caseless = Url::fileUrl("/opt/Falcon.app");
    EXPECT_EQ(catalog.browser("ORG.Example.Falcon"),
              (Browser{"Falcon", "ORG.Example.Falcon", Url::fileUrl("/opt/Falcon.app")}));
}

TEST_F(BrowserCatalogTest, AnApplicationThatIsNotABrowserIsFoundToo) {
    disk.installApplication("/opt/Notes.app", "org.example.notes", "Notes");
    ASSERT_TRUE(catalog.browser("org.example.notes"));
    EXPECT_EQ(catalog.browser("org.example.notes")->name, "Notes");
}

TEST_F(BrowserCatalogTest, AnEmptyDisplayNameIsAName) {
    disk.install("/opt/A.app", {"a", {{"CFBundleDisplayName", {""}}, {"CFBundleName", {"Name"}}}});
    EXPECT_EQ(catalog.browser("a")->name, "");
    EXPECT_EQ(catalog.appDisplayName("a"), "");
}

TEST_F(BrowserCatalogTest, ADisplayNameThatIsNotTextIsSkipped) {
    disk.install("/opt/A.app",
                 {"a", {{"CFBundleDisplayName", {std::int64_t{1}}}, {"CFBundleName", {"Name"}}}});
    disk.install("/opt/B.app",
                 {"b", {{"CFBundleDisplayName", {PropertyDictionary{}}}, {"CFBundleName", {true}}}});
    EXPECT_EQ(catalog.browser("a")->name, "Name");
    EXPECT_EQ(catalog.browser("b")->name, "B.app");
}

TEST_F(BrowserCatalogTest, WithoutNamesTheFileManagersNameIsUsed) {
    disk.install("/opt/Bare.app", {"bare", {}});
    EXPECT_EQ(catalog.browser("bare")->name, "Bare.app");
    EXPECT_EQ(catalog.appDisplayName("bare"), "Bare.app");
}

TEST_F(BrowserCatalogTest, AnUnreadableBundleHasTheFileManagersName) {
    workspace.caseless = Url::fileUrl("/opt/With Space.app");
    EXPECT_EQ(catalog.browser("x"), (Browser{"With Space.app", "x", Url::fileUrl("/opt/With Space.app")}));
    EXPECT_EQ(catalog.appDisplayName("x"), "With Space.app");
}

TEST_F(BrowserCatalogTest, LookupsSeeLaterInstallationsAndRemovals) {
    EXPECT_EQ(catalog.browser("late"), std::nullopt);
    disk.installApplication("/Applications/Late.app", "late", "Late", {"http"});
    EXPECT_EQ(catalog.appDisplayName("late"), "Late");
    disk.remove("/Applications/Late.app");
    EXPECT_EQ(catalog.browser("late"), std::nullopt);
    EXPECT_EQ(disk.scans, 0) << "a lookup scans no folder";
}

TEST_F(BrowserCatalogTest, AnApplicationThatDeclaresHttpOrHttpsIsABrowser) {
    disk.installApplication("/Applications/1.app", "1", "Both", {"http", "https"});
    disk.installApplication("/Applications/2.app", "2", "Only http", {"http"});
    disk.installApplication("/Applications/3.app", "3", "Only https", {"https"});
    disk.installApplication("/Applications/4.app", "4", "Upper case", {"HTTP"});
    disk.installApplication("/Applications/5.app", "5", "Mail", {"mailto", "ftp", "file"});
    disk.installApplication("/Applications/6.app", "6", "Nothing");
    disk.installApplication("/Applications/7.app", "7", "Near", {"httpx", "shttp", "http "});
    EXPECT_EQ(browserNames(), (Names{"Both", "Only http", "Only https", "Upper case"}));
}

TEST_F(BrowserCatalogTest, ABrowserKeepsItsNameIdentifierAndUrl) {
    disk.installApplication("/Applications/Falcon.app", "org.example.falcon", "Falcon", {"https"});
    EXPECT_EQ(
        catalog.installedBrowsers({}),
        (std::vector<Browser>{{"Falcon", "org.example.falcon", Url::fileUrl("/Applications/Falcon.app")}}));
}

TEST_F(BrowserCatalogTest, FernhopIsNotListedAsABrowser) {
    disk.installApplication("/Applications/Fernhop.app", ownBundleID(disk), "Fernhop", {"http", "https"});
    disk.installApplication("/Applications/Falcon.app", "falcon", "Falcon", {"http"});
    EXPECT_EQ(browserNames(ownBundleID(disk)), Names{"Falcon"});
    disk.mainIdentifier = std::nullopt;
    EXPECT_EQ(browserNames(ownBundleID(disk)), Names{"Falcon"}) << "the compiled-in identifier";
}

TEST_F(BrowserCatalogTest, BrowsersAreInTheCatalogsOrder) {
    disk.installApplication("/Applications/3.app", "1", "safari", {"http"});
    disk.installApplication("/Applications/2.app", "2", "Safari", {"http"});
    disk.installApplication("/Applications/1.app", "3", "Falcon", {"http"});
    EXPECT_EQ(browserNames(), (Names{"Falcon", "safari", "Safari"}));
}

TEST_F(BrowserCatalogTest, EachListTakesOneScan) {
    disk.installApplication("/Applications/1.app", "1", "A", {"http"});
    EXPECT_EQ(browserNames(), Names{"A"});
    EXPECT_EQ(disk.scans, 1);
    EXPECT_EQ(browserNames(), Names{"A"});
    EXPECT_EQ(disk.scans, 2);
}

TEST_F(BrowserCatalogTest, WithoutBrowsersTheListIsEmpty) {
    EXPECT_EQ(browserNames(), Names{});
}

} // namespace
} // namespace fernhop
