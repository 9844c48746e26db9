#include "platform/linux/tray/MenuTree.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

std::shared_ptr<const Menu> menuOf(std::vector<MenuItem> items) {
    return std::make_shared<const Menu>(Menu{std::move(items)});
}

MenuItem carrying(std::string title, std::string text) {
    MenuItem item(std::move(title), "act:");
    item.representedObject = std::move(text);
    return item;
}

std::vector<MenuTree::Id> top(const MenuTree &tree) {
    return tree.find(MenuTree::root)->children;
}

TEST(MenuTreeTest, StartsEmpty) {
    const MenuTree tree;
    EXPECT_EQ(tree.ids(), std::vector<MenuTree::Id>{MenuTree::root});
    EXPECT_EQ(tree.find(1), nullptr);
}

TEST(MenuTreeTest, ItemsKeepTheirIdsWhenOthersComeAndGo) {
    MenuTree tree;
    EXPECT_TRUE(tree.show(menuOf({MenuItem("A", "a"), MenuItem("B", "b"), MenuItem("C", "c")})));
    const auto before = top(tree);
    EXPECT_TRUE(tree.show(menuOf({MenuItem("A", "a"), MenuItem("New", "n"), MenuItem("C", "c")})));
    const auto after = top(tree);
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[2], before[2]);
    EXPECT_EQ(tree.find(before[1]), nullptr);
    EXPECT_GT(after[1], before[2]) << "an id was used again";
}

TEST(MenuTreeTest, ChildrenAreKnownAgainBeneathTheirParentOnly) {
    const auto parent = [](const char *title) {
        MenuItem item(title, "");
        item.submenu = Menu{{MenuItem("Clear Rule", "clear")}};
        return item;
    };
    MenuTree tree;
    EXPECT_TRUE(tree.show(menuOf({parent("One"), parent("Two")})));
    const auto belowTwo = tree.find(top(tree)[1])->children;
    EXPECT_TRUE(tree.show(menuOf({parent("Two")})));
    EXPECT_EQ(tree.find(top(tree)[0])->children, belowTwo);
}

TEST(MenuTreeTest, AnItemWithAnotherMeaningIsAnother) {
    MenuTree tree;
    EXPECT_TRUE(tree.show(menuOf({carrying("Remove Rule", "1"), carrying("Remove Rule", "2")})));
    const auto before = top(tree);
    EXPECT_TRUE(tree.show(menuOf({carrying("Remove Rule", "2")})));
    EXPECT_EQ(top(tree), std::vector{before[1]});
    EXPECT_EQ(tree.find(before[0]), nullptr);
}

TEST(MenuTreeTest, SubmenusThatLookTheSameAreTakenForTheSameOnlyIfTheyAreAboutTheSame) {
    const auto rule = [](const char *id) {
        MenuItem item("*.example", "");
        item.submenu = Menu{{MenuItem("Browser", "choose"), carrying("Remove Rule", id)}};
        return item;
    };
    MenuTree tree;
    EXPECT_TRUE(tree.show(menuOf({rule("1"), rule("2")})));
    const auto belowFirst = tree.find(top(tree)[0])->children;
    const auto belowSecond = tree.find(top(tree)[1])->children;
    EXPECT_TRUE(tree.show(menuOf({rule("2")})));
    EXPECT_EQ(tree.find(top(tree)[0])->children, belowSecond);
    EXPECT_EQ(tree.find(belowFirst[0]), nullptr) << "a click on the first rule would change the second";
}

TEST(MenuTreeTest, ASubmenuStaysItselfWhenItGetsAnItemThatCarriesText) {
    MenuItem app("Mail", "");
    app.submenu = Menu{{MenuItem("Browser", "choose")}};
    MenuTree tree;
    EXPECT_TRUE(tree.show(menuOf({app})));
    const auto before = top(tree);
    app.submenu->items.push_back(carrying("Clear Rule", "mail"));
    EXPECT_TRUE(tree.show(menuOf({app})));
    EXPECT_EQ(top(tree), before);
}

TEST(MenuTreeTest, WhatLooksTheSameKeepsItsIdsAndGetsTheNewItems) {
    MenuTree tree;
    EXPECT_TRUE(tree.show(menuOf({carrying("Remove Rule", "1")})));
    const auto before = top(tree);
    EXPECT_FALSE(tree.show(menuOf({carrying("Remove Rule", "2")})));
    EXPECT_EQ(top(tree), before);
    EXPECT_EQ(std::get<std::string>(tree.find(before[0])->item->representedObject), "2");
}

TEST(MenuTreeTest, TellsSinceWhenWhatIsBeneathAnItemLooksAsItDoes) {
    const auto icon = [] { return std::make_shared<const Image>(ApplicationIcon{"/a.desktop"}, 16, false); };
    const auto parent = [](const char *below, bool isEnabled, ImageReference image) {
        MenuItem leaf(below, "a");
        leaf.enabled = isEnabled;
        leaf.image = std::move(image);
        MenuItem item("Parent", "");
        item.submenu = Menu{{leaf}};
        return menuOf({item});
    };
    const auto same = icon();
    MenuTree tree;
    EXPECT_EQ(tree.revision(), 0U);
    EXPECT_TRUE(tree.show(parent("One", true, same)));
    const auto id = top(tree)[0];
    EXPECT_EQ(tree.find(id)->changedIn, 1U);
    EXPECT_TRUE(tree.show(parent("Two", true, same)));
    EXPECT_EQ(tree.find(id)->changedIn, 2U);
    EXPECT_TRUE(tree.show(parent("Two", false, same)));
    EXPECT_EQ(tree.find(id)->changedIn, 3U) << "another item beneath is not the only change";
    EXPECT_TRUE(tree.show(parent("Two", false, icon())));
    EXPECT_EQ(tree.find(id)->changedIn, 4U) << "an icon that was made anew may be another";
    EXPECT_EQ(tree.find(MenuTree::root)->changedIn, 1U) << "the parent itself is the same";
    EXPECT_EQ(tree.revision(), 4U);
}

TEST(MenuTreeTest, HoldsLongListsThatChangeWhole) {
    const auto list = [](int first) {
        std::vector<MenuItem> items;
        for (int number = first; number < first + 20000; ++number)
            items.emplace_back(std::to_string(number), "a");
        return menuOf(std::move(items));
    };
    MenuTree tree;
    EXPECT_TRUE(tree.show(list(0)));
    EXPECT_TRUE(tree.show(list(1000000)));
    EXPECT_EQ(tree.ids().size(), 20001U);
    EXPECT_EQ(tree.find(top(tree).back())->item->title, "1019999");
}

} // namespace
} // namespace fernhop::freedesktop
