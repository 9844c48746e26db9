#include "catalog/AppIcons.h"

#include "catalog/ApplicationLayout.h"
#include "fakes/FakeDesktop.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace fernhop {
namespace {

using Requests = std::vector<std::pair<std::string, double>>;

class AppIconsTest : public testing::Test {
  protected:
    fakes::FakeDesktop desktop;
    std::vector<InstalledApplication> applications;
    std::vector<Browser> browsers;
    ApplicationCatalog applicationCatalog{desktop.applications, desktop.applications,
                                          macApplicationLayout(desktop.applications)};
    BrowserCatalog catalog{desktop.workspace, desktop.applications, desktop.applications, applicationCatalog};
    AppIcons icons{{desktop.workspace, catalog, applications, browsers}};

    const Requests &requests() const { return desktop.workspace.iconRequests; }
    ui::ImageReference named(const std::optional<std::string> &bundleID, double size = 16) {
        return icons.appIcon(bundleID, size);
    }
    static std::string pathOf(const ui::ImageReference &image) {
        return std::get<ui::ApplicationIcon>(image->source).path;
    }
};

TEST_F(AppIconsTest, EachSizeIsFetchedOnce) {
    const Url url = Url::fileUrl("/Applications/A.app");
    const auto small = icons.appIcon(url, 16);
    const auto large = icons.appIcon(url, 18);
    EXPECT_EQ(small->side, 16);
    EXPECT_EQ(large->side, 18);
    EXPECT_EQ(icons.appIcon(url, 16), small);
    EXPECT_EQ(icons.appIcon(url, 18), large);
    EXPECT_EQ(requests(), (Requests{{"/Applications/A.app", 16}, {"/Applications/A.app", 18}}));
}

TEST_F(AppIconsTest, SizesOfTheSameWholePointsShareAnIcon) {
    const Url url = Url::fileUrl("/Applications/A.app");
    EXPECT_EQ(icons.appIcon(url, 16.9), icons.appIcon(url, 16));
    EXPECT_EQ(icons.appIcon(url, -0.5), icons.appIcon(url, 0.5));
    EXPECT_EQ(requests().size(), 2u);
}

TEST_F(AppIconsTest, PathThatEndsInADigitIsNotMistakenForALargerSize) {
    const auto small = icons.appIcon(Url::fileUrl("/Applications/A.app1"), 6);
    const auto large = icons.appIcon(Url::fileUrl("/Applications/A.app"), 16);
    EXPECT_EQ(pathOf(small), "/Applications/A.app1");
    EXPECT_EQ(pathOf(large), "/Applications/A.app");
    EXPECT_EQ(large->side, 16);
}

TEST_F(AppIconsTest, ClearedIconsAreFetchedAgain) {
    const Url url = Url::fileUrl("/Applications/A.app");
    (void)icons.appIcon(url, 16);
    icons.clear();
    (void)icons.appIcon(url, 16);
    EXPECT_EQ(requests().size(), 2u);
}

TEST_F(AppIconsTest, SizeThatIsNotFiniteEndsTheProcess) {
    const Url url = Url::fileUrl("/Applications/A.app");
    for (const double size : {std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(), 9223372036854775808.0, -1e19})
        EXPECT_DEATH((void)icons.appIcon(url, size), "") << size;
}

TEST_F(AppIconsTest, ApplicationsAreSearchedBeforeBrowsersAndTheWorkspace) {
    desktop.installBrowser("both");
    applications.push_back({"Both", "both", Url::fileUrl("/Applications/One.app"), {}});
    browsers.push_back({"Both", "both", Url::fileUrl("/Applications/Two.app")});
    browsers.push_back({"Only", "browser", Url::fileUrl("/Applications/Three.app")});
    EXPECT_EQ(pathOf(named("both")), "/Applications/One.app");
    EXPECT_EQ(pathOf(named("browser")), "/Applications/Three.app");
    applications.clear();
    EXPECT_EQ(pathOf(named("both")), "/Applications/Two.app");
    browsers.clear();
    EXPECT_EQ(pathOf(named("both")), "/Applications/both.app");
}

TEST_F(AppIconsTest, FirstOfTwoWithTheSameIdentifierIsUsed) {
    applications.push_back({"First", "twice", Url::fileUrl("/Applications/1.app"), {}});
    applications.push_back({"Second", "twice", Url::fileUrl("/Applications/2.app"), {}});
    browsers.push_back({"First", "browser", Url::fileUrl("/Applications/3.app")});
    browsers.push_back({"Second", "browser", Url::fileUrl("/Applications/4.app")});
    EXPECT_EQ(pathOf(named("twice")), "/Applications/1.app");
    EXPECT_EQ(pathOf(named("browser")), "/Applications/3.app");
    EXPECT_EQ(icons.appName("twice"), "First");
}

TEST_F(AppIconsTest, UnknownIdentifierHasNoIcon) {
    desktop.installApplication("Known");
    EXPECT_EQ(named(std::nullopt), nullptr);
    EXPECT_EQ(named("unknown"), nullptr);
    EXPECT_EQ(named("known"), nullptr);
    EXPECT_TRUE(requests().empty());
}

TEST_F(AppIconsTest, IconByIdentifierIsAlwaysSmall) {
    desktop.installApplication("known");
    EXPECT_EQ(named("known", 32)->side, 16);
    EXPECT_EQ(requests(), (Requests{{"/Applications/known.app", 16}}));
}

TEST_F(AppIconsTest, NamesComeFromTheListOrElseTheCatalog) {
    applications.push_back({"Listed", "listed", Url::fileUrl("/Applications/Listed.app"), {}});
    desktop.applications.installApplication("/Elsewhere/Other.app", "other", "Other Name");
    EXPECT_EQ(icons.appName("listed"), "Listed");
    EXPECT_EQ(icons.appName("other"), "Other Name");
    EXPECT_EQ(icons.appName("LISTED"), catalog.appDisplayName("LISTED"));
}

} // namespace
} // namespace fernhop
