#include "fakes/FakeDesktop.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/NativeImage.h"
#include "platform/macos/ui/SystemImages.h"
#include "platform/macos/ui/SystemStatusBar.h"
#include "statusitem/StatusItemAppearance.h"

#import <AppKit/NSStatusBar.h>

namespace fernhop::macos {
namespace {

using macos_double::originOf;

class StatusBarTest : public InterfaceTest {
  protected:
    StatusBarTest() : item(bar.statusItemWithLength(ui::squareStatusItemLength)) {}

    static NSStatusItem *shown() { return macos_double::statusItems().at(0); }
    static NSStatusBarButton *button() { return [shown() button]; }
    void dress(bool routingEnabled) {
        StatusItemAppearance(desktop.applications, images).updateStatusItemAppearance(*item, routingEnabled);
    }

    fakes::FakeDesktop desktop;
    SystemImages images;
    RecordingTarget target;
    SystemStatusBar bar{target};
    std::unique_ptr<ui::StatusItem> item;
};

TEST_F(StatusBarTest, ItemIsAsWideAsTheBarIsHigh) {
    EXPECT_EQ([shown() length], NSSquareStatusItemLength);
    EXPECT_EQ([shown() length], -2);
    EXPECT_TRUE(item->hasButton());
}

TEST_F(StatusBarTest, ItemIsRemovedWhenDestroyed) {
    item.reset();
    EXPECT_TRUE(macos_double::statusItems().empty());
}

TEST_F(StatusBarTest, ButtonIsConfigured) {
    dress(true);
    EXPECT_EQ(fromNSString([button() toolTip]), "Fernhop - App Routing On");
    EXPECT_EQ(fromNSString([button() title]), "");
    EXPECT_EQ([button() imagePosition], NSImageOnly);
    EXPECT_EQ([[button() image] size].width, 18);
    EXPECT_EQ([[button() image] size].height, 18);
    EXPECT_FALSE([[button() image] isTemplate]);
    dress(false);
    EXPECT_EQ(fromNSString([button() toolTip]), "Fernhop");
    item->setToolTip("");
    EXPECT_FALSE([button() toolTip]);
    item->setImage(nullptr);
    EXPECT_FALSE([button() image]);
}

TEST_F(StatusBarTest, AppearanceIsThatOfTheButtonAtEachCall) {
    using enum ui::AppearanceName;
    const ui::Appearance &appearance = item->effectiveAppearance();
    EXPECT_EQ(appearance.bestMatchFromAppearancesWithNames({darkAqua, aqua}), aqua);
    [button() setAppearance:[NSAppearance appearanceNamed:NSAppearanceNameDarkAqua]];
    EXPECT_EQ(appearance.bestMatchFromAppearancesWithNames({darkAqua, aqua}), darkAqua);
    EXPECT_EQ(appearance.bestMatchFromAppearancesWithNames({aqua}), std::nullopt);
    [button() setAppearance:[NSAppearance appearanceNamed:@"another"]];
    EXPECT_EQ(appearance.bestMatchFromAppearancesWithNames({darkAqua, aqua}), std::nullopt);
}

TEST_F(StatusBarTest, GlyphIsDrawnInTheColourOfTheAppearance) {
    dress(false);
    EXPECT_EQ(originOf([button() image]), "drawing");
    EXPECT_EQ(macos_double::draw([button() image]).steps.at(0), "set black 1");
    macos_double::setSystemAppearance(NSAppearanceNameDarkAqua);
    dress(false);
    EXPECT_EQ(macos_double::draw([button() image]).steps.at(0), "set white 1");
}

TEST_F(StatusBarTest, GlyphIsTwoArrowsAroundADot) {
    dress(false);
    const macos_double::Drawn drawn = macos_double::draw([button() image]);
    EXPECT_TRUE(drawn.answer);
    EXPECT_EQ(drawn.steps, (std::vector<std::string>{
                               "set black 1",
                               "stroke 1.8 cap 1: move 4 9.6, curve 13.6 12.8 4.8 13.2 10.8 14.8",
                               "fill: move 13 11.7, line 15.6 12.1, line 14.1 9.9, close",
                               "stroke 1.8 cap 1: move 14 8.4, curve 4.4 5.2 13.2 4.8 7.2 3.2",
                               "fill: move 5 6.3, line 2.4 5.9, line 3.9 8.1, close",
                               "fill: oval 6.85 6.85 4.3 4.3",
                           }));
}

TEST_F(StatusBarTest, MenuIsReplacedEachTime) {
    const auto menu = std::make_shared<const ui::Menu>(ui::Menu{{ui::MenuItem("Quit", "quit")}});
    item->setMenu(menu);
    NSMenu *former = [[[shown() menu] retain] autorelease];
    EXPECT_EQ([former numberOfItems], 1);
    item->setMenu(menu);
    EXPECT_NE([shown() menu], former);
    item->setMenu(nullptr);
    EXPECT_FALSE([shown() menu]);
}

} // namespace
} // namespace fernhop::macos
