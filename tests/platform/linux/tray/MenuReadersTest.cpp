#include "platform/linux/tray/MenuTree.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

/// A menu of three levels: "Outer", within it "Inner", within that "Leaf", of a title.
std::shared_ptr<const Menu> nested(const char *leaf) {
    MenuItem inner("Inner", "");
    inner.submenu = Menu{{MenuItem(leaf, "a")}};
    MenuItem outer("Outer", "");
    outer.submenu = Menu{{inner}};
    return std::make_shared<const Menu>(Menu{{outer}});
}

class MenuReadersTest : public testing::Test {
  protected:
    static MenuTree treeOf(std::shared_ptr<const Menu> menu) {
        MenuTree made;
        EXPECT_TRUE(made.show(std::move(menu)));
        return made;
    }
    [[nodiscard]] MenuTree::Id below(MenuTree::Id id) const { return tree.find(id)->children.at(0); }
    [[nodiscard]] bool knows(const char *host, MenuTree::Id id) const {
        return readers.knows(host, *tree.find(id));
    }

    void reads(const std::string &host, MenuTree::Id id, int depth) {
        readers.reads(host, tree, readers.submenusFor(host, tree, id, depth));
    }

    MenuTree tree = treeOf(nested("Leaf"));
    MenuReaders readers;
    MenuTree::Id outer = below(MenuTree::root), inner = below(outer), leaf = below(inner);
};

TEST_F(MenuReadersTest, KnowsTheLevelsThatWereRead) {
    EXPECT_FALSE(knows("a", MenuTree::root));
    reads("a", MenuTree::root, 0);
    EXPECT_FALSE(knows("a", MenuTree::root)) << "an item without what is beneath it";
    reads("a", MenuTree::root, 2);
    EXPECT_TRUE(knows("a", MenuTree::root));
    EXPECT_TRUE(knows("a", outer));
    EXPECT_FALSE(knows("a", inner));
    reads("a", outer, -1);
    EXPECT_TRUE(knows("a", inner));
    EXPECT_TRUE(knows("b", leaf)) << "nothing is beneath it";
    EXPECT_FALSE(knows("b", MenuTree::root));
}

TEST_F(MenuReadersTest, AChangeIsOneOfTheItemRightAboveIt) {
    reads("a", MenuTree::root, -1);
    EXPECT_TRUE(tree.show(nested("Another")));
    EXPECT_TRUE(knows("a", MenuTree::root));
    EXPECT_TRUE(knows("a", outer));
    EXPECT_FALSE(knows("a", inner));
    reads("a", MenuTree::root, -1);
    EXPECT_TRUE(knows("a", inner));
}

TEST_F(MenuReadersTest, WhatHostsOpenedIsToldBeforeTheRest) {
    EXPECT_EQ(readers.submenusFor("a", tree, MenuTree::root, -1, 0).told.size(), 1U) << "the level asked for";
    EXPECT_EQ(readers.submenusFor("a", tree, outer, -1, 2).told.size(), 2U);
    EXPECT_EQ(readers.submenusFor("a", tree, MenuTree::root, -1, 2).omitted, std::vector{inner});
    readers.opens("a", tree, inner);
    const auto opened = readers.submenusFor("a", tree, MenuTree::root, -1, 0);
    EXPECT_EQ(opened.told, (std::unordered_set{MenuTree::root, outer, inner})) << "with the way to it";
    EXPECT_EQ(readers.submenusFor("b", tree, MenuTree::root, -1, 0).told.size(), 1U);
    readers.reads("a", tree, opened);
    EXPECT_TRUE(knows("a", inner));
    readers.reads("a", tree, {{MenuTree::root}, {outer, inner}});
    EXPECT_FALSE(knows("a", inner)) << "it was told the menu without it";
}

TEST_F(MenuReadersTest, WhatIsGoneIsForgotten) {
    reads("a", outer, 1);
    EXPECT_TRUE(knows("a", outer));
    const auto before = *tree.find(outer);
    readers.forgetAllBut(MenuTree());
    EXPECT_FALSE(readers.knows("a", before));
}

TEST_F(MenuReadersTest, ManyHostsDoNotAddUpForEver) {
    reads("first", MenuTree::root, -1);
    for (int number = 0; number < 100; ++number)
        reads("host " + std::to_string(number), MenuTree::root, -1);
    EXPECT_FALSE(knows("first", outer)) << "names that no host has any more are kept";
    EXPECT_TRUE(knows("host 99", outer));
}

} // namespace
} // namespace fernhop::freedesktop
