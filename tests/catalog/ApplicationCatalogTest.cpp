#include "catalog/ApplicationCatalog.h"

#include "fakes/FakeApplications.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using Names = std::vector<std::string>;
using Schemes = std::set<std::string>;

class ApplicationCatalogTest : public testing::Test {
  protected:
    std::vector<InstalledApplication> scan(const std::optional<std::string> &excluding = std::nullopt) {
        return ApplicationCatalog(disk, disk, macApplicationLayout(disk)).installedApplications(excluding);
    }

    Names names(const std::optional<std::string> &excluding = std::nullopt) {
        Names found;
        for (const auto &application : scan(excluding))
            found.push_back(application.name);
        return found;
    }

    /// The scheme set of an application whose CFBundleURLTypes is `types`.
    Schemes schemesOf(PropertyValue types) {
        disk.install("/Applications/A.app", {"org.example.a", {{"CFBundleURLTypes", std::move(types)}}});
        return scan().at(0).urlSchemes;
    }

    static PropertyValue urlType(PropertyValue schemes) {
        return {PropertyDictionary{{"CFBundleURLSchemes", std::move(schemes)}}};
    }

    static PropertyValue texts(const Names &list) {
        PropertyArray array;
        for (const auto &text : list)
            array.push_back({text});
        return {array};
    }

    fakes::FakeApplications disk;
};

TEST_F(ApplicationCatalogTest, TheFourFoldersOfMacOSAreInOrder) {
    const auto layout = macApplicationLayout(disk);
    Names paths;
    for (const auto &directory : layout.directories)
        paths.push_back(directory.path());
    EXPECT_EQ(paths, (Names{"/Applications", "/System/Applications",
                            "/System/Library/CoreServices/Applications", "/Users/ada/Applications"}));
    EXPECT_EQ(layout.bundleExtension, "app");
}

TEST_F(ApplicationCatalogTest, AHomeThatIsTheRootFolderHasItsApplicationsThere) {
    disk.home = "/";
    EXPECT_EQ(macApplicationLayout(disk).directories.back().path(), "/Applications");
}

TEST_F(ApplicationCatalogTest, AnApplicationIsListedWithAllItsProperties) {
    disk.installApplication("/Applications/Falcon.app", "org.Example.Falcon", "Falcon", {"http", "https"});
    const std::vector<InstalledApplication> expected{
        {"Falcon", "org.Example.Falcon", Url::fileUrl("/Applications/Falcon.app"), {"http", "https"}}};
    EXPECT_EQ(scan(), expected);
}

TEST_F(ApplicationCatalogTest, ApplicationsOfAllFourFoldersAreListed) {
    disk.installApplication("/Applications/A.app", "a", "A");
    disk.installApplication("/System/Applications/B.app", "b", "B");
    disk.installApplication("/System/Library/CoreServices/Applications/C.app", "c", "C");
    disk.installApplication("/Users/ada/Applications/D.app", "d", "D");
    disk.installApplication("/opt/E.app", "e", "E");
    EXPECT_EQ(names(), (Names{"A", "B", "C", "D"}));
}

TEST_F(ApplicationCatalogTest, TheCopyInTheEarlierFolderWins) {
    const Names folders{"/Users/ada/Applications", "/System/Library/CoreServices/Applications",
                        "/System/Applications", "/Applications"};
    for (const auto &folder : folders) {
        disk.installApplication(folder + "/Same.app", "org.example.same", "Copy in " + folder);
        const auto found = scan();
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].name, "Copy in " + folder);
        EXPECT_EQ(found[0].appURL, Url::fileUrl(folder + "/Same.app"));
    }
}

TEST_F(ApplicationCatalogTest, TheFirstFoundInOneFolderWins) {
    disk.installApplication("/Applications/Second name.app", "org.example.same", "Found first");
    disk.installApplication("/Applications/First name.app", "org.example.same", "Found second");
    EXPECT_EQ(names(), Names{"Found first"});
}

TEST_F(ApplicationCatalogTest, IdentifiersThatDifferInCaseAreDifferentApplications) {
    disk.installApplication("/Applications/A.app", "org.example.a", "A");
    disk.installApplication("/Applications/B.app", "org.example.A", "B");
    EXPECT_EQ(names(), (Names{"A", "B"}));
}

TEST_F(ApplicationCatalogTest, ApplicationsInsideApplicationsAreNotListed) {
    disk.installApplication("/Applications/Outer.app", "outer", "Outer");
    disk.installApplication("/Applications/Outer.app/Contents/Helpers/Inner.app", "inner", "Inner");
    disk.installApplication("/Applications/Z.app", "z", "Z");
    EXPECT_EQ(names(), (Names{"Outer", "Z"}));
}

TEST_F(ApplicationCatalogTest, AnUnreadableApplicationStillHidesWhatIsInside) {
    disk.addPath("/Applications/Broken.app");
    disk.installApplication("/Applications/Broken.app/Inner.app", "inner", "Inner");
    EXPECT_EQ(names(), Names{});
}

TEST_F(ApplicationCatalogTest, TheExtensionIsComparedExactly) {
    disk.installApplication("/Applications/Tools.APP", "tools", "Tools");
    disk.installApplication("/Applications/Tools.APP/Inside.app", "inside", "Inside");
    disk.installApplication("/Applications/Mixed.App", "mixed", "Mixed");
    disk.installApplication("/Applications/app", "app", "No extension");
    disk.installApplication("/Applications/Other.application", "other", "Other");
    disk.installApplication("/Applications/Old.app.bak", "old", "Old");
    EXPECT_EQ(names(), Names{"Inside"});
}

TEST_F(ApplicationCatalogTest, SubfoldersAreSearchedAtAnyDepthAndHiddenItemsAreNot) {
    disk.installApplication("/Applications/Vendor/Suite/2024/Deep.app", "deep", "Deep");
    disk.installApplication("/Applications/.Hidden.app", "hidden", "Hidden");
    disk.installApplication("/Applications/.cache/Cached.app", "cached", "Cached");
    EXPECT_EQ(names(), Names{"Deep"});
}

TEST_F(ApplicationCatalogTest, MissingFoldersAreOmitted) {
    disk.installApplication("/Applications/A.app", "a", "A");
    disk.installApplication("/System/Applications/B.app", "b", "B");
    EXPECT_EQ(names(), (Names{"A", "B"}));
    EXPECT_EQ(disk.scans, 2) << "only folders that exist are walked";
}

TEST_F(ApplicationCatalogTest, AnUnreadableFolderIsTreatedAsEmpty) {
    disk.installApplication("/Applications/A.app", "a", "A");
    disk.installApplication("/System/Applications/B.app", "b", "B");
    disk.unreadableFolders = {"/Applications"};
    EXPECT_EQ(names(), Names{"B"});
}

TEST_F(ApplicationCatalogTest, AMachineWithoutApplicationsHasAnEmptyList) {
    EXPECT_EQ(scan().size(), 0U);
}

TEST_F(ApplicationCatalogTest, AnApplicationWithoutIdentifierIsNotListed) {
    disk.install("/Applications/Nobody.app", {std::nullopt, {{"CFBundleDisplayName", {"Nobody"}}}});
    EXPECT_EQ(names(), Names{});
}

TEST_F(ApplicationCatalogTest, EveryCopyOfTheExcludedApplicationIsOmitted) {
    disk.installApplication("/Applications/Own.app", "org.fernhop.Fernhop", "Own");
    disk.installApplication("/System/Applications/Own.app", "org.fernhop.Fernhop", "Own, again");
    disk.installApplication("/Applications/A.app", "a", "A");
    EXPECT_EQ(names("org.fernhop.Fernhop"), Names{"A"});
    EXPECT_EQ(names(), (Names{"A", "Own"}));
}

TEST_F(ApplicationCatalogTest, ExclusionIsCaseSensitive) {
    disk.installApplication("/Applications/Own.app", "org.fernhop.Fernhop", "Own");
    EXPECT_EQ(names("org.fernhop.fernhop"), Names{"Own"});
}

TEST_F(ApplicationCatalogTest, TheDisplayNamePrecedesTheNameAndTheFileName) {
    disk.install("/Applications/1.app",
                 {"1", {{"CFBundleDisplayName", {"Display"}}, {"CFBundleName", {"Name"}}}});
    disk.install("/Applications/2.app", {"2", {{"CFBundleName", {"Name"}}}});
    disk.install("/Applications/3.app", {"3", {}});
    EXPECT_EQ(names(), (Names{"3.app", "Display", "Name"}));
}

TEST_F(ApplicationCatalogTest, AnEmptyDisplayNameIsAName) {
    disk.install("/Applications/1.app", {"1", {{"CFBundleDisplayName", {""}}, {"CFBundleName", {"Name"}}}});
    EXPECT_EQ(names(), Names{""});
}

TEST_F(ApplicationCatalogTest, ANameThatIsNotTextIsSkipped) {
    disk.install("/Applications/1.app",
                 {"1", {{"CFBundleDisplayName", {std::int64_t{7}}}, {"CFBundleName", {"Name"}}}});
    disk.install("/Applications/2.app", {"2", {{"CFBundleName", {PropertyArray{{"Name"}}}}}});
    EXPECT_EQ(names(), (Names{"2.app", "Name"}));
}

TEST_F(ApplicationCatalogTest, SchemesAreLowerCasedAndMerged) {
    EXPECT_EQ(schemesOf({PropertyArray{urlType(texts({"HTTP", "http", "Web+Foo"}))}}),
              (Schemes{"http", "web+foo"}));
}

TEST_F(ApplicationCatalogTest, TheSchemesOfAllTypesAreMerged) {
    EXPECT_EQ(schemesOf({PropertyArray{urlType(texts({"http"})), urlType(texts({"https", "ftp"}))}}),
              (Schemes{"ftp", "http", "https"}));
}

TEST_F(ApplicationCatalogTest, ATypeWithoutASchemeListIsIgnored) {
    EXPECT_EQ(schemesOf({PropertyArray{{PropertyDictionary{{"CFBundleURLName", {"Web"}}}},
                                       urlType({"http"}),
                                       urlType({PropertyArray{{"http"}, {std::int64_t{1}}}}),
                                       urlType(texts({"irc"}))}}),
              Schemes{"irc"});
}

TEST_F(ApplicationCatalogTest, MalformedTypesDeclareNothing) {
    EXPECT_EQ(schemesOf({"http"}), Schemes{});
    EXPECT_EQ(schemesOf(urlType(texts({"http"}))), Schemes{});
    EXPECT_EQ(schemesOf({PropertyArray{urlType(texts({"http"})), {"http"}}}), Schemes{});
    EXPECT_EQ(schemesOf({PropertyArray{}}), Schemes{});
}

TEST_F(ApplicationCatalogTest, TheListIsSortedByNameIgnoringCase) {
    disk.installApplication("/Applications/1.app", "1", "banana");
    disk.installApplication("/Applications/2.app", "2", "Apple");
    disk.installApplication("/Applications/3.app", "3", "cherry");
    disk.installApplication("/Applications/4.app", "4", "Blueberry");
    EXPECT_EQ(names(), (Names{"Apple", "banana", "Blueberry", "cherry"}));
}

TEST_F(ApplicationCatalogTest, NamesAreSortedByLocaleNotByBytes) {
    disk.installApplication("/Applications/1.app", "1", "Zebra");
    disk.installApplication("/Applications/2.app", "2", "Äpfel");
    disk.installApplication("/Applications/3.app", "3", "Birne");
    EXPECT_EQ(names(), (Names{"Äpfel", "Birne", "Zebra"}));
}

TEST_F(ApplicationCatalogTest, AFileInPlaceOfAFolderIsTreatedAsEmpty) {
    disk.addPath("/Applications");
    disk.unreadableFolders = {"/Applications"};
    disk.installApplication("/System/Applications/B.app", "b", "B");
    EXPECT_EQ(names(), Names{"B"});
    EXPECT_EQ(disk.scans, 2) << "existence alone decides what is walked";
}

TEST_F(ApplicationCatalogTest, NamesThatCompareEqualKeepTheScanOrder) {
    disk.installApplication("/Users/ada/Applications/0.app", "in the user's folder", "NOTES");
    disk.installApplication("/Applications/2.app", "found first", "notes");
    disk.installApplication("/Applications/1.app", "found second", "Notes");
    EXPECT_EQ(names(), (Names{"notes", "Notes", "NOTES"}));
}

TEST_F(ApplicationCatalogTest, ManyNamesThatCompareEqualKeepTheScanOrder) {
    // So many that an unstable sort would not move them by insertion, and identifiers in no order of their
    // own.
    constexpr int count = 40;
    Names inScanOrder;
    for (int number = 0; number < count; ++number) {
        const std::string identifier = std::to_string(10 + number * 17 % count);
        disk.installApplication("/Applications/" + identifier + ".app", identifier,
                                number % 3 == 0 ? "Notes" : "notes");
        inScanOrder.push_back(identifier);
    }
    Names found;
    for (const auto &application : scan())
        found.push_back(application.bundleID);
    EXPECT_EQ(found, inScanOrder);
}

TEST_F(ApplicationCatalogTest, EachCallScansTheDisk) {
    ApplicationCatalog catalog(disk, disk, macApplicationLayout(disk));
    disk.installApplication("/Applications/A.app", "a", "A");
    EXPECT_EQ(catalog.installedApplications({}).size(), 1U);
    disk.installApplication("/Applications/B.app", "b", "B");
    EXPECT_EQ(catalog.installedApplications({}).size(), 2U);
    disk.remove("/Applications");
    EXPECT_EQ(catalog.installedApplications({}).size(), 0U);
}

} // namespace
} // namespace fernhop
