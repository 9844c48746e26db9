#include "catalog/BrowserCatalog.h"
#include "fakes/FakeWorkspace.h"
#include "platform/linux/applications/PosixFileManager.h"
#include "support/AppBundles.h"
#include "support/Folders.h"

#include <gtest/gtest.h>

#include <map>

namespace fernhop {
namespace {

using Schemes = std::set<std::string>;

/// The catalogs on real `.app` folders, each named after its peculiarity.
class AppBundleTreeTest : public testing::Test {
  protected:
    static Url folder(const std::string &name) {
        return Url::fileUrl(support::sourceFolder() + "/tests/catalog/data/" + name);
    }

    static ApplicationLayout layout() {
        return {{folder("Applications"), folder("UserApplications")}, "app"};
    }

    std::map<std::string, InstalledApplication> scan() {
        std::map<std::string, InstalledApplication> byID;
        for (auto &application : ApplicationCatalog(files, bundles, layout()).installedApplications({}))
            byID.emplace(application.bundleID, application);
        return byID;
    }

    freedesktop::PosixFileManager files{"/nowhere"};
    support::AppBundles bundles;
};

TEST_F(AppBundleTreeTest, OnlyApplicationsAreListed) {
    std::set<std::string> identifiers;
    for (const auto &[identifier, application] : scan())
        identifiers.insert(identifier);
    const std::set<std::string> expected{"org.example.Xml",
                                         "org.example.Binary",
                                         "org.example.TwoTypes",
                                         "org.example.EmptyDisplayName",
                                         "org.example.NumberAsDisplayName",
                                         "org.example.NoNames",
                                         "org.example.Outer",
                                         "org.example.InSubfolder",
                                         "org.example.InsideUpperCase",
                                         "org.example.TextAmongTypes",
                                         "org.example.TypesNoArray",
                                         "org.example.NumberAmongSchemes",
                                         "org.example.Mail",
                                         "org.example.Notes",
                                         "org.example.notes",
                                         "org.example.Both"};
    EXPECT_EQ(identifiers, expected);
}

TEST_F(AppBundleTreeTest, NamesComeFromTheInfoDictionary) {
    const auto found = scan();
    EXPECT_EQ(found.at("org.example.Xml").name, "Xml Browser");
    EXPECT_EQ(found.at("org.example.Binary").name, "Binary Browser");
    EXPECT_EQ(found.at("org.example.EmptyDisplayName").name, "");
    EXPECT_EQ(found.at("org.example.NumberAsDisplayName").name, "Name Behind A Number");
    EXPECT_EQ(found.at("org.example.NoNames").name, "no names.app");
}

TEST_F(AppBundleTreeTest, SchemesComeFromXmlAndBinary) {
    const auto found = scan();
    EXPECT_EQ(found.at("org.example.Xml").urlSchemes, (Schemes{"http", "https"}));
    EXPECT_EQ(found.at("org.example.Binary").urlSchemes, Schemes{"http"});
    EXPECT_EQ(found.at("org.example.TwoTypes").urlSchemes, (Schemes{"feed", "https"}));
    EXPECT_EQ(found.at("org.example.TextAmongTypes").urlSchemes, Schemes{});
    EXPECT_EQ(found.at("org.example.TypesNoArray").urlSchemes, Schemes{});
    EXPECT_EQ(found.at("org.example.NumberAmongSchemes").urlSchemes, Schemes{"irc"});
    EXPECT_EQ(found.at("org.example.Mail").urlSchemes, (Schemes{"ftp", "mailto"}));
}

TEST_F(AppBundleTreeTest, TheCopyInTheFirstFolderIsUsed) {
    const auto both = scan().at("org.example.Both");
    EXPECT_EQ(both.name, "The System Copy");
    EXPECT_EQ(both.appURL.path(), folder("Applications").path() + "/in both folders.app");
}

TEST_F(AppBundleTreeTest, BrowsersAreTheApplicationsThatDeclareAWebScheme) {
    fakes::FakeApplications disk;
    fakes::FakeNotificationCenter notifications;
    const fakes::FakeWorkspace workspace(disk, notifications);
    const BrowserCatalog catalog(workspace, files, bundles, ApplicationCatalog(files, bundles, layout()));
    std::vector<std::string> names;
    for (const auto &browser : catalog.installedBrowsers("org.example.Xml"))
        names.push_back(browser.name);
    EXPECT_EQ(names, (std::vector<std::string>{"Binary Browser", "Two Types"}));
}

TEST_F(AppBundleTreeTest, NamesThatCompareEqualKeepTheScanOrder) {
    std::vector<std::string> names;
    for (const auto &application : ApplicationCatalog(files, bundles, layout()).installedApplications({})) {
        if (application.name == "Notes" || application.name == "notes")
            names.push_back(application.bundleID);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"org.example.Notes", "org.example.notes"}));
}

} // namespace
} // namespace fernhop
