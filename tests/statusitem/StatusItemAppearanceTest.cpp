#include "app/Controller.h"
#include "statusitem/FallbackGlyph.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;

class StatusItemAppearanceTest : public ControllerTest {
  protected:
    static constexpr const char *folder = "/Applications/Fernhop.app/Contents/Resources/";

    StatusItemAppearanceTest() { desktop.statusBar.appearance.name = AppearanceName::darkAqua; }

    void addResource(const std::string &name) { desktop.applications.addPath(folder + name + ".png"); }

    const Image &shown() const {
        if (!desktop.statusBar.image)
            throw std::runtime_error("no image");
        return *desktop.statusBar.image;
    }

    static Image file(const std::string &name) { return Image(ImageFile{folder + name + ".png"}, 18, false); }
    static Image glyph(ColorRole ink) { return Image(makeFallbackGlyph({ink, 1}), 18, false); }
};

TEST_F(StatusItemAppearanceTest, DarkBarShowsTheDarkResource) {
    addResource("MenuBarIconLight");
    addResource("MenuBarIconDark");
    launch();
    EXPECT_EQ(shown(), file("MenuBarIconDark"));
}

TEST_F(StatusItemAppearanceTest, LightBarShowsTheLightResource) {
    addResource("MenuBarIconLight");
    addResource("MenuBarIconDark");
    desktop.statusBar.appearance.name = AppearanceName::aqua;
    launch();
    EXPECT_EQ(shown(), file("MenuBarIconLight"));
}

TEST_F(StatusItemAppearanceTest, BarThatMatchesNoAppearanceCountsAsLight) {
    desktop.statusBar.appearance.name = std::nullopt;
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::black));
    addResource("MenuBarIconLight");
    controller->rebuildMenu();
    EXPECT_EQ(shown(), file("MenuBarIconLight"));
}

TEST_F(StatusItemAppearanceTest, MissingDarkResourceIsDrawnInWhite) {
    addResource("MenuBarIconLight");
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::white));
}

TEST_F(StatusItemAppearanceTest, UnreadableResourceIsDrawn) {
    addResource("MenuBarIconDark");
    desktop.images.unreadableFiles = {std::string(folder) + "MenuBarIconDark.png"};
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::white));
}

TEST_F(StatusItemAppearanceTest, MissingLightResourceIsDrawnInBlack) {
    addResource("MenuBarIconDark");
    desktop.statusBar.appearance.name = AppearanceName::aqua;
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::black));
}

TEST_F(StatusItemAppearanceTest, UnreadableResourceIsDrawnEvenIfTheOtherExists) {
    addResource("MenuBarIconLight");
    addResource("MenuBarIconDark");
    desktop.images.unreadableFiles = {std::string(folder) + "MenuBarIconDark.png"};
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::white));
    desktop.images.unreadableFiles = {std::string(folder) + "MenuBarIconLight.png"};
    desktop.statusBar.appearance.name = AppearanceName::aqua;
    controller->rebuildMenu();
    EXPECT_EQ(shown(), glyph(ColorRole::black));
}

TEST_F(StatusItemAppearanceTest, WithoutResourcesTheLightBarGetsABlackGlyph) {
    desktop.statusBar.appearance.name = AppearanceName::aqua;
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::black));
}

TEST_F(StatusItemAppearanceTest, OnlyTheToolTipShowsTheRoutingState) {
    setHandlers("browser.a");
    launch();
    const Image before = shown();
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop");
    EXPECT_EQ(desktop.statusBar.title, "");
    EXPECT_EQ(desktop.statusBar.imagePosition, ImagePosition::imageOnly);
    setHandlers(own);
    controller->rebuildMenu();
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop - App Routing On");
    EXPECT_EQ(desktop.statusBar.title, "");
    EXPECT_EQ(shown(), before);
}

TEST_F(StatusItemAppearanceTest, OnlyTheExactHandlerOfHttpsCounts) {
    launch();
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop");
    desktop.launchServices.handlers = {{"http", own}, {"https", "org.fernhop.fernhop"}};
    controller->rebuildMenu();
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop");
    desktop.launchServices.handlers = {{"http", "browser.a"}, {"https", own}};
    controller->rebuildMenu();
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop - App Routing On");
}

TEST_F(StatusItemAppearanceTest, ThemeChangeKeepsTheToolTipAndChangesTheImage) {
    setHandlers(own);
    launch();
    EXPECT_EQ(shown(), glyph(ColorRole::white));
    const int menus = desktop.statusBar.menusSet;
    desktop.statusBar.appearance.name = AppearanceName::aqua;
    desktop.distributedCenter.post({std::string(themeChangedNotification), {}});
    EXPECT_EQ(shown(), glyph(ColorRole::black));
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop - App Routing On");
    EXPECT_EQ(desktop.statusBar.menusSet, menus);
}

TEST_F(StatusItemAppearanceTest, ThemeChangeReadsTheRoutingStateAgain) {
    setHandlers("browser.a");
    launch();
    rebuilds();
    setHandlers(own);
    desktop.distributedCenter.post({std::string(themeChangedNotification), {}});
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop - App Routing On");
    setHandlers("browser.a");
    desktop.distributedCenter.post({std::string(themeChangedNotification), {}});
    EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop");
    EXPECT_EQ(rebuilds(), 0);
}

TEST_F(StatusItemAppearanceTest, ItemWithoutButtonIsNotChanged) {
    desktop.statusBar.hasButton = false;
    launch();
    EXPECT_EQ(desktop.statusBar.imagesSet, 0);
    EXPECT_EQ(desktop.statusBar.toolTip, "not set");
    EXPECT_EQ(desktop.statusBar.title, "not set");
}

} // namespace
} // namespace fernhop
