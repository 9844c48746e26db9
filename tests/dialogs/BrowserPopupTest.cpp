#include "dialogs/BrowserPopup.h"

#include "catalog/ApplicationLayout.h"
#include "fakes/FakeDesktop.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

class BrowserPopupTest : public testing::Test {
  protected:
    fakes::FakeDesktop desktop;
    std::vector<InstalledApplication> applications;
    std::vector<Browser> browsers{{"First", "one", Url::fileUrl("/Applications/1.app")},
                                  {"Second", "two", Url::fileUrl("/Applications/2.app")},
                                  {"Third", "three", Url::fileUrl("/Applications/3.app")}};
    ApplicationCatalog applicationCatalog{desktop.applications, desktop.applications,
                                          macApplicationLayout(desktop.applications)};
    BrowserCatalog catalog{desktop.workspace, desktop.applications, desktop.applications, applicationCatalog};
    AppIcons icons{{desktop.workspace, catalog, applications, browsers}};
    ui::PopUpButton popup;

    void update(const std::optional<std::string> &select = std::nullopt) {
        updateBrowserPopup(&popup, select, browsers, icons);
    }
};

TEST_F(BrowserPopupTest, ListsTheBrowsersInOrder) {
    update();
    ASSERT_EQ(popup.items().size(), 3u);
    for (std::size_t index = 0; index < 3; ++index) {
        const ui::MenuItem &item = popup.items()[index];
        EXPECT_EQ(item.title, browsers[index].name);
        EXPECT_EQ(std::get<std::string>(item.representedObject), browsers[index].bundleID);
        EXPECT_EQ(item.image, icons.appIcon(browsers[index].appURL, 18));
        EXPECT_EQ(item.image->side, 18);
        EXPECT_FALSE(item.isSeparator);
    }
    EXPECT_TRUE(popup.enabled);
    EXPECT_EQ(selectedBrowserID(&popup), "one");
}

TEST_F(BrowserPopupTest, SelectsTheGivenBrowser) {
    update("two");
    EXPECT_EQ(selectedBrowserID(&popup), "two");
    update("three");
    EXPECT_EQ(selectedBrowserID(&popup), "three");
}

TEST_F(BrowserPopupTest, FirstOfTwoWithAnIdentifierIsSelected) {
    browsers[2].bundleID = "two";
    update("two");
    EXPECT_EQ(popup.selectedIndex(), 1u);
}

TEST_F(BrowserPopupTest, KeepsTheUsersSelection) {
    update();
    popup.selectItem(2);
    update();
    EXPECT_EQ(selectedBrowserID(&popup), "three");
    std::swap(browsers[0], browsers[2]);
    update();
    EXPECT_EQ(selectedBrowserID(&popup), "three");
    EXPECT_EQ(popup.selectedIndex(), 0u);
}

TEST_F(BrowserPopupTest, UninstalledBrowserSelectsTheFirst) {
    update("gone");
    EXPECT_EQ(selectedBrowserID(&popup), "one");
    update("TWO");
    EXPECT_EQ(selectedBrowserID(&popup), "one");
}

TEST_F(BrowserPopupTest, SelectionThatIsNotTextCountsAsNone) {
    popup.setItems({ui::MenuItem("Other", "")});
    EXPECT_EQ(selectedBrowserID(&popup), std::nullopt);
    update();
    EXPECT_EQ(selectedBrowserID(&popup), "one");
}

TEST_F(BrowserPopupTest, WithoutBrowsersItIsEmptyAndDisabled) {
    update();
    browsers.clear();
    update("one");
    EXPECT_TRUE(popup.items().empty());
    EXPECT_EQ(popup.selectedItem(), nullptr);
    EXPECT_FALSE(popup.enabled);
    browsers.push_back({"First", "one", Url::fileUrl("/Applications/1.app")});
    update();
    EXPECT_TRUE(popup.enabled);
}

TEST_F(BrowserPopupTest, RendererIsNotifiedWhenItIsEnabled) {
    update();
    bool shownEnabled = popup.enabled;
    popup.didChange = [&] { shownEnabled = popup.enabled; };
    browsers.clear();
    update();
    EXPECT_FALSE(shownEnabled);
    browsers.push_back({"First", "one", Url::fileUrl("/Applications/1.app")});
    update();
    EXPECT_TRUE(shownEnabled);
}

TEST_F(BrowserPopupTest, MissingPopupIsIgnored) {
    updateBrowserPopup(nullptr, "one", browsers, icons);
    EXPECT_TRUE(desktop.workspace.iconRequests.empty());
    EXPECT_EQ(selectedBrowserID(nullptr), std::nullopt);
}

} // namespace
} // namespace fernhop
