#include "platform/linux/tray/MenuProperties.h"

#include "TrayHost.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

/// An item that has every property there is, its picture the largest.
class MenuPropertiesTest : public testing::Test {
  protected:
    MenuPropertiesTest() {
        MenuItem item("Label", "a");
        item.image = std::make_shared<const Image>(SystemSymbol{"link.circle"}, 0, true);
        item.state = ControlState::on;
        item.keyEquivalent = "q";
        item.submenu.emplace();
        EXPECT_TRUE(tree.show(std::make_shared<const Menu>(Menu{{item, MenuItem::separator()}})));
    }

    [[nodiscard]] GVariantPointer layout(std::size_t most, const PropertyFilter &filter = {}) {
        const auto ids = tree.ids();
        return menuLayout(tree, MenuTree::root, {ids.begin(), ids.end()}, filter, icons, most);
    }
    [[nodiscard]] GVariantPointer items(std::size_t most, const PropertyFilter &filter = {}) {
        return menuItems(tree, tree.ids(), filter, icons, most);
    }
    static std::size_t sizeOf(const GVariantPointer &value) {
        return value ? g_variant_get_size(value.get()) : 0;
    }

    ListedEntries entries;
    const IconFinder finder{entries, {}};
    MenuIcons icons{finder};
    MenuTree tree;
};

TEST_F(MenuPropertiesTest, WhatIsTooLargeComesWithoutPicturesAndWithAllElse) {
    const auto whole = layout(largestMenuAnswer);
    const LayoutItem before(whole.get());
    ASSERT_EQ(before.children.size(), 2U);
    EXPECT_NE(before.children[0].property("icon-data"), "");
    const auto reduced = layout(sizeOf(whole) - 1);
    ASSERT_TRUE(reduced);
    const LayoutItem told(reduced.get());
    EXPECT_EQ(told.children[0].property("icon-data"), "");
    for (const char *name :
         {"label", "enabled", "children-display", "toggle-type", "toggle-state", "shortcut"}) {
        EXPECT_NE(told.children[0].property(name), "") << name;
        EXPECT_EQ(told.children[0].property(name), before.children[0].property(name)) << name;
    }
    EXPECT_EQ(told.children[1].property("type"), "'separator'");
}

TEST_F(MenuPropertiesTest, WhatIsTooLargeWithoutPicturesIsNothing) {
    const auto reduced = layout(sizeOf(layout(largestMenuAnswer)) - 1);
    EXPECT_EQ(sizeOf(layout(sizeOf(reduced))), sizeOf(reduced));
    EXPECT_FALSE(layout(sizeOf(reduced) - 1));
    const auto bare = layout(sizeOf(layout(largestMenuAnswer, {"icon-data"})) - 1, {"icon-data"});
    ASSERT_TRUE(bare) << "the items are told, the pictures are not";
    EXPECT_EQ(LayoutItem(bare.get()).children.at(0).property("icon-data"), "");
    EXPECT_FALSE(layout(sizeOf(bare) - 1, {"icon-data"}));
    EXPECT_TRUE(layout(sizeOf(reduced), {"icon-data", "label"}));
}

TEST_F(MenuPropertiesTest, ItemsAreHeldToTheSameSize) {
    const auto whole = items(largestMenuAnswer);
    const auto reduced = items(sizeOf(whole) - 1);
    ASSERT_TRUE(reduced);
    EXPECT_LT(sizeOf(reduced) + 100, sizeOf(whole));
    EXPECT_FALSE(items(sizeOf(reduced) - 1));
}

} // namespace
} // namespace fernhop::freedesktop
